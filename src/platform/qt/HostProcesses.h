#pragma once

#include <QTimer>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Processes.h"
#include "platform/qt/FocusKeeper.h"

namespace platform::qt {

// A command line with everything in host form.
struct CommandLine {
    std::string Program;
    std::vector<std::string> Arguments;
};

// Splits a command line. The program is the shortest head (up to a blank, or what stands in quotes) that
// names a file, itself or with ".EXE" behind it; failing that, a first word without folder is looked for
// where the host keeps its commands. Arguments are split at blanks outside quotes; those that begin with a
// drive are mapped. Errors: 5 nothing there or more than 32,767 bytes, 53 no such program.
CommandLine ReadCommandLine(std::string_view line, const FileSystem& files);

// Ids are those of the host. Started programs live on when this program ends. One that is waited for and goes
// on and on is asked about (ToolWatch).
class HostProcesses : public Processes {
  public:
    HostProcesses(const FileSystem& files, const Clock& clock);

    Id Start(const std::string& commandLine) override;
    Id StartBehind(const std::string& commandLine) override;
    // Of the verbs "open" alone is known. Parameters and folder are of no use to who opens a file.
    void ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                      const std::string& directory) override;
    void Wait(Id process) override;
    bool IsRunning(Id process) const override;

  private:
    void Reap();
    void Stop(Id process);

    const FileSystem& files_;
    const Clock& clock_;
    mutable std::set<Id> running_;  // not yet seen to have ended
    QTimer reaper_;
    FocusKeeper focus_;
};

}  // namespace platform::qt
