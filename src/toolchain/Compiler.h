#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/ToolInterface.h"
#include "platform/ToolLibraries.h"
#include "session/App.h"
#include "session/Document.h"
#include "toolchain/RunOutputs.h"
#include "toolchain/RunWindows.h"

namespace toolchain {

// The run driver: runs of the closed compiler and simulator on the design sProject, one at a time. A run
// returns when the user has closed the result window; a run that is asked for during a run is ignored.
class Compiler {
  public:
    // The handles of the closed libraries, in this order.
    enum Library { teskx, teska, teskb, teskm, teskc, vorna, vsima, teskk, vornk, LibraryCount };

    // `outputsFile`: where RunOutputs keeps its record.
    Compiler(session::App& app, RunWindows& windows, std::string outputsFile = {})
        : app_(app), windows_(windows), outputs_(app.Host.Files, std::move(outputsFile)) {}

    bool RunOk = false;  // set before each call of a library; nothing clears it

    // The commands mnuRun…: save prompt, run, refresh of the project list. A save that fails ends
    // RunDepCompile with a box; from the other three the error comes out.
    void RunDepCompile(session::Document& document);
    void RunIndepCompile(session::Document& document);
    void RunDepSimulate(session::Document& document);
    void RunIndepSimulate(session::Document& document);
    void RunVhdlCompile(session::Document& document);
    void RunVhdlAnalysis(session::Document& document);

    void DepCompile();
    void IndepCompile();
    void DepSimulate();
    void IndepSimulate();

    bool CheckRunSettings();
    // Stages 1 and 2 compile, 3 and 4 simulate; for any other nothing is loaded (true) or freed.
    bool LoadToolLibraries(std::int16_t& stage);
    void FreeToolLibraries(std::int16_t& stage);
    void DeleteStaleOutputs();

  private:
    struct Run {
        std::int16_t Stage;
        std::string Options;
        std::string Device;
        char HandOffLetter;  // in Options: the simulation file goes to Wavrik
    };

    void Execute(Run run);
    void RunLibrary(Run& run);
    bool RunLoaded(Run& run, std::span<std::uint8_t> record);  // false: a library is missing
    void CallKernel(std::int16_t stage, std::span<std::uint8_t> record);
    void HandOff(const Run& run);
    base::RunRecord FillRecord(const Run& run);
    std::string CompileOptionsForDesign() const;
    void OfferSave(session::Document& document);
    bool OfferSaveTrapped(session::Document& document);
    void RefreshProjectList(const session::Document& document);
    bool CheckProject(const session::Document& document);
    void EnterVerilog(session::Document& document);
    void RunVhdl(const std::string& directory);
    void ShowListOf(const std::string& path, const std::optional<platform::FileStamp>& before);

    session::App& app_;
    RunWindows& windows_;
    RunOutputs outputs_;
    std::array<platform::ToolLibraries::Module, LibraryCount> modules_{};
    bool running_ = false;
};

// Starts a command line and waits for its end. Gives 0, or the number of the error that a box has shown.
std::int16_t RunAndWait(platform::Host& host, const std::string& commandLine);

// Points the fitter's shortcut InstallRoot\fitr.pif at the cfitr.exe of this installation. Errors are
// ignored: an installation that this user can't write to must start all the same.
void PatchFitterPif(platform::FileSystem& files, const session::Session& state);

}  // namespace toolchain
