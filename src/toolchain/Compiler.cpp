#include "toolchain/Compiler.h"

#include <vector>

#include "base/ScopeExit.h"
#include "platform/ToolCall.h"
#include "toolchain/StaleOutputs.h"

namespace toolchain {
namespace {

// The order of loading and of freeing, and what runs.
struct Chain {
    std::vector<Compiler::Library> LoadOrder;
    std::vector<Compiler::Library> FreeOrder;
    Compiler::Library Kernel;
    const char* Entry;
};

constexpr std::array libraryNames = {"teskx.dll", "teska.dll", "teskb.dll", "teskm.dll", "teskc.dll",
                                     "vorna.dll", "vsima.dll", "teskk.dll", "vornk.dll"};

const Chain* ChainOf(std::int16_t stage) {
    using L = Compiler;
    static const Chain compile{
        {L::teskx, L::teska, L::teskb, L::teskm, L::teskc, L::vorna, L::vsima, L::teskk},
        {L::teskk, L::teskx, L::teska, L::teskb, L::teskm, L::teskc, L::vorna, L::vsima},
        L::teskk,
        "TeskkVB"};
    static const Chain simulate{
        {L::vorna, L::vsima, L::vornk}, {L::vornk, L::vorna, L::vsima}, L::vornk, "VornkVB"};
    if (stage < 1 || stage > 4) return nullptr;
    return stage <= 2 ? &compile : &simulate;
}

void RemoveFirst(std::string& text, char c) {
    const auto at = text.find(c);
    if (at != text.npos) text.erase(at, 1);
}

std::string WithoutFinalBackslash(std::string text) {
    if (text.ends_with('\\')) text.pop_back();
    return text;
}

const std::string virtualDevice = "virtual";

}  // namespace

void Compiler::DepCompile() { Execute({1, app_.State.CompilerFlags, app_.State.DeviceName, 'w'}); }
void Compiler::IndepCompile() { Execute({2, app_.State.CompilerFlags, virtualDevice, 'w'}); }
void Compiler::DepSimulate() { Execute({3, app_.State.SimulatorFlags, app_.State.DeviceName, 'd'}); }
void Compiler::IndepSimulate() { Execute({4, app_.State.SimulatorFlags, virtualDevice, 'd'}); }

bool Compiler::CheckRunSettings() {
    const auto refuse = [&](const char* text) {
        app_.Host.Boxes.Say(text);
        return false;
    };
    if (app_.State.LibraryName.empty()) {
        return refuse(
            "No library specified.  You must select a library with the Library tab from the Options, "
            "Compiler menu.");
    }
    if (app_.State.DeviceCatalog.empty()) {
        return refuse(
            "No device catalog specified.  You must select a device catalog with the compiler Options.");
    }
    if (app_.State.sProject.empty()) return refuse("No Design File Specified.");
    return true;
}

bool Compiler::LoadToolLibraries(std::int16_t& stage) {
    const Chain* chain = ChainOf(stage);
    if (chain == nullptr) return true;
    for (const Library library : chain->LoadOrder) {
        const std::string name = libraryNames.at(library);
        modules_.at(library) = app_.Host.Libraries.Load(app_.State.SharedDir + name);
        if (modules_.at(library) == 0) {
            app_.Host.Boxes.Say("Unable to load " + name + ".  Make sure the file " + name + " is in the " +
                                app_.State.SharedDir + " directory.");
            return false;
        }
    }
    return true;
}

void Compiler::FreeToolLibraries(std::int16_t& stage) {
    const Chain* chain = ChainOf(stage);
    if (chain == nullptr) return;
    for (const Library library : chain->FreeOrder) {
        app_.Host.Libraries.Free(modules_.at(library));  // not tested: freeing 0 does nothing
        modules_.at(library) = 0;
    }
}

void Compiler::DeleteStaleOutputs() {
    toolchain::DeleteStaleOutputs(app_.Host.Files, app_.State.sProject, outputs_);
}

void Compiler::Execute(Run run) {
    if (running_) return;
    running_ = true;
    const base::ScopeExit done([this] { running_ = false; });
    if (CheckRunSettings()) RunLibrary(run);
}

void Compiler::RunLibrary(Run& run) {
    if (run.Stage == 1) run.Options = CompileOptionsForDesign();
    windows_.CreateStatus();
    base::ScopeExit unloadStatus([this] { windows_.UnloadStatus(); });
    base::RunRecord record = FillRecord(run);
    if (run.Stage == 4 && app_.State.sProject.empty()) {
        unloadStatus.Cancel();
        windows_.SetInfo("No Design File Specified");
        windows_.EnableOk(true);
        return;
    }
    if (!RunLoaded(run, record.Bytes())) return;
    unloadStatus.Cancel();  // OK has done it
    HandOff(run);
}

bool Compiler::RunLoaded(Run& run, std::span<std::uint8_t> record) {
    const base::ScopeExit freeLibraries([this, &run] { FreeToolLibraries(run.Stage); });
    if (!LoadToolLibraries(run.Stage)) return false;
    DeleteStaleOutputs();
    RunOk = true;
    windows_.EnableOk(false);
    windows_.ShowStatusModeless();
    outputs_.Begin(app_.State.sProject);
    CallKernel(run.Stage, record);
    outputs_.End(app_.State.sProject);
    windows_.EnableOk(true);
    windows_.ShowStatusModal();
    return true;
}

// Kept: without vectors beside the design the first "s" and the first "w" go, be they part of a two-letter
// option ("ks") or not; stored option strings were written with that in mind.
std::string Compiler::CompileOptionsForDesign() const {
    std::string options = app_.State.CompilerFlags;
    if (!app_.Host.Files.FileExists(app_.State.sProject + ".si")) {
        RemoveFirst(options, 's');
        RemoveFirst(options, 'w');
    }
    return options;
}

base::RunRecord Compiler::FillRecord(const Run& run) {
    base::RunRecord record = base::EmptyRecord();
    record.hWndStatus = windows_.StatusHandle();
    record.hWndMessages = windows_.MessagesHandle();
    record.hWndNotify = record.hWndStatus;
    base::SetText(record.szProgramDir, app_.State.ProgramDir);
    base::SetText(record.szOptions, run.Options);
    base::SetText(record.szLibrary, app_.State.LibraryName);
    base::SetText(record.szDevice, run.Device);
    base::SetText(record.szDesign, app_.State.sProject);
    base::SetText(record.szProgramPath, WithoutFinalBackslash(app_.State.ProgramDir));
    return record;
}

// The result and what the library wrote into the record are not looked at: a run tells its outcome by
// messages and files. What goes wrong is reported, and the run ends as after any return.
void Compiler::CallKernel(std::int16_t stage, std::span<std::uint8_t> record) {
    const Chain& chain = *ChainOf(stage);
    platform::CallTool(app_.Host, modules_.at(chain.Kernel), libraryNames.at(chain.Kernel), chain.Entry,
                       record);
}

// Kept: the letter alone decides, a compile with errors launches the wave tool too.
void Compiler::HandOff(const Run& run) {
    if (!RunOk) {
        app_.Hall.ToolChain->BringMessagesToFront();
    } else if (run.Options.find(run.HandOffLetter) != run.Options.npos) {
        app_.Hall.Utilities->LaunchTool("Wavrik", app_.State.sProject + ".SI");
    }
}

}  // namespace toolchain
