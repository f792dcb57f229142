// The commands mnuRun… of the document window, and the runs of external programs.
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "session/Saving.h"
#include "toolchain/Compiler.h"

namespace toolchain {

void Compiler::OfferSave(session::Document& document) {
    if (!document.Dirty()) return;
    const auto answer = app_.Host.Boxes.MessageBox({.Text = "File is not saved. Do you want to save now?",
                                                    .Title = "Save editor file",
                                                    .Choice = platform::Buttons::YesNo});
    if (answer != platform::Answer::Yes) return;  // the run takes the file as it stands on disk
    session::WriteText(app_, document, document.FileName());
}

bool Compiler::OfferSaveTrapped(session::Document& document) {
    try {
        OfferSave(document);
        return true;
    } catch (const base::RunTimeError& error) {
        app_.Host.Boxes.MessageBox({.Text = error.Number() == base::errPathFileAccess
                                                ? "Cannot save file, it is in use by another application"
                                                : error.Description(),
                                    .Title = "Save File Error",
                                    .Picture = platform::Icon::Information});
        return false;
    }
}

bool Compiler::CheckProject(const session::Document& document) {
    const std::string design = base::StripExtension(document.Caption());
    if (design == app_.State.sProject) return true;
    const auto answer =
        app_.Host.Boxes.MessageBox({.Text = "The current PLD file is not part of the current project.  Do "
                                            "you wish to compile the current file and set it as the current "
                                            "project?",
                                    .Title = "Project",
                                    .Choice = platform::Buttons::YesNo});
    if (answer != platform::Answer::Yes) return false;
    app_.State.sProject = design;
    return true;
}

void Compiler::RefreshProjectList(const session::Document& document) {
    if (document.ShowsProject()) app_.Hall.Project->UpdateTreeView();
}

void Compiler::RunDepCompile(session::Document& document) {
    if (!OfferSaveTrapped(document) || !CheckProject(document)) return;
    DepCompile();
    RefreshProjectList(document);
}

// Kept: these three neither trap a failed save nor compare document and project; they run on sProject,
// whichever document is active.
void Compiler::RunIndepCompile(session::Document& document) {
    OfferSave(document);
    IndepCompile();
    RefreshProjectList(document);
}

void Compiler::RunDepSimulate(session::Document& document) {
    OfferSave(document);
    DepSimulate();
    RefreshProjectList(document);
}

void Compiler::RunIndepSimulate(session::Document& document) {
    OfferSave(document);
    IndepSimulate();
    RefreshProjectList(document);
}

void Compiler::RunVhdlCompile(session::Document& document) {
    EnterVerilog(document);
    RunVhdl(app_.State.ProgramDir);
}
void Compiler::RunVhdlAnalysis(session::Document& document) {
    EnterVerilog(document);
    RunVhdl(app_.State.UtilityDir);
}

// Opened, a Verilog source is a text like any other. Without a project its first run makes it one.
void Compiler::EnterVerilog(session::Document& document) {
    if (!app_.State.sProject.empty() || base::FileExtension(document.Caption()) != "V") return;
    app_.State.sProject = base::StripExtension(document.Caption());
    app_.Hall.Project->ShowProject();
    document.MarkProject(true);
    document.BringToFront();
}

// Kept to the blank: the front end splits the line itself, its flags follow ".VHD" with none. What it leaves
// is not looked at, but for a list that is new.
void Compiler::RunVhdl(const std::string& directory) {
    const session::Session& state = app_.State;
    const std::string list = base::StripExtension(state.sProject) + ".VLS";
    const auto before = app_.Host.Files.Stamp(list);
    outputs_.Begin(state.sProject);
    RunAndWait(app_.Host, directory + "VHDLTesk " + state.WorkDir + " " + state.LibraryName + " " +
                              state.DeviceName + " " + base::StripExtension(state.sProject) + ".VHD" +
                              state.VhdlFlags);
    outputs_.End(state.sProject);
    ShowListOf(list, before);
}

void Compiler::ShowListOf(const std::string& path, const std::optional<platform::FileStamp>& before) {
    constexpr std::uint64_t most = 4u << 20;  // bytes; the front end's lists are short
    try {
        const auto now = app_.Host.Files.Stamp(path);
        if (!now || now == before || now->Size > most) return;
        windows_.AddMessages(base::Lines(app_.Host.Files.ReadFile(path)));
    } catch (const base::RunTimeError&) {
        // It stands on the disk; the run has no message of its own.
    }
}

std::int16_t RunAndWait(platform::Host& host, const std::string& commandLine) {
    try {
        host.Programs.Wait(host.Programs.Start(commandLine));
        return 0;
    } catch (const base::RunTimeError& error) {
        std::string text = "Error " + std::to_string(error.Number()) + " Occured";
        if (error.Number() == base::errFileNotFound) text = "Unable to execute  " + commandLine;
        if (error.Number() == platform::errToolEnded) {
            text = "The tool ended unexpectedly: " + std::string(error.Description()) + ".";
        }
        host.Boxes.Say(text);
        return static_cast<std::int16_t>(error.Number());
    }
}

void PatchFitterPif(platform::FileSystem& files, const session::Session& state) {
    constexpr std::size_t nameOffset = 36;  // of the program-name field in a shortcut file
    constexpr std::size_t nameSize = 64;    // bytes
    const std::string path = state.InstallRoot + "\\fitr.pif";
    try {
        const bool exists = files.FileExists(path);
        const std::string before = exists ? files.ReadFile(path) : "";
        std::string after = before;
        if (after.size() >= nameOffset) {
            std::string field = base::Left(state.SharedDir + "cfitr.exe", nameSize);
            field.resize(nameSize, ' ');
            after.replace(nameOffset, nameSize, field);
        }
        if (!exists || after != before) files.WriteFile(path, after);
    } catch (const base::RunTimeError&) {
        // Told in the header.
    }
}

}  // namespace toolchain
