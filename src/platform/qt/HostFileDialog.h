#pragma once

#include <QFileDialog>
#include <string>
#include <vector>

#include "platform/Dialogs.h"
#include "platform/FileSystem.h"

namespace platform::qt {

// The name filters of "Caption|pattern;pattern|Caption|pattern". A caption without pattern, such as an odd
// last entry, matches every file.
QStringList NameFilters(const std::string& filter);

// The open or save dialog of a request. Shows host paths; a logic path may be typed as well. A name that does
// not exist is taken as typed unless the flags forbid it; "does not exist" is told without regard to case.
class HostFileDialog : public QFileDialog {
  public:
    HostFileDialog(QWidget* parent, AcceptMode mode, const FileDialogRequest& request,
                   const FileSystem& files, Dialogs& boxes);

    std::string Chosen() const { return files_.FromHostPath(chosen_); }  // a logic path
    void accept() override;

  private:
    void Place(const FileDialogRequest& request);
    void KeepWhatIsTyped();
    void TakeChoice();
    std::string WholePath(const QString& typed) const;
    bool MayTake(const std::string& hostPath);
    bool Refuse(const std::string& hostPath, const char* reason);

    const FileSystem& files_;
    Dialogs& boxes_;
    int flags_;
    std::string extension_;
    std::string chosen_;  // host path
};

}  // namespace platform::qt
