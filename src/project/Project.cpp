#include "project/Project.h"

#include <cstdint>
#include <vector>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "session/Opening.h"

namespace project {
namespace {

session::Document* DocumentOf(const session::Documents& documents, std::int16_t id) {
    for (session::Document* document : documents.All()) {
        if (document->ID == id) return document;
    }
    return nullptr;
}

// To the tool that runs, else to a new one. What fails stays without a word.
void SendToTool(const ProjectDesk& desk, const std::string& tool, const std::string& file) {
    try {
        platform::Converse(desk.App.Host.Link, tool + "|frmMain", "Open " + file);
    } catch (const base::RunTimeError& error) {
        if (error.Number() != base::errNoForeignApplication) return;
        try {
            desk.App.Host.Programs.Start(desk.App.State.InstallRoot + "\\" + tool + "\\" + tool + " " +
                                         platform::Argument(file) + "  /NoSplash");
        } catch (const base::RunTimeError&) {
            // A tool that is not installed.
        }
    }
}

// True if the file's kind belongs to a tool and the user wants it there.
bool OpenInTool(const ProjectDesk& desk, const std::string& file, const std::string& extension) {
    if (extension == "SI" || extension == "SIM") {
        const auto answer =
            desk.App.Host.Boxes.MessageBox({.Text = "Open the Simulator Input file with Wavrik?",
                                            .Title = "Open With Wavrik ...",
                                            .Choice = platform::Buttons::YesNo,
                                            .Picture = platform::Icon::Question});
        if (answer != platform::Answer::Yes) return false;
        SendToTool(desk, "Wavrik", base::StripExtension(file) + ".SI");
    } else if (extension == "SCH") {
        SendToTool(desk, "Schematic", file);
    } else if (extension == "SMC") {
        SendToTool(desk, "Stavrik", file);
    } else {
        return false;
    }
    return true;
}

// False if the user refused: then the project stays as it is.
bool LeaveProject(const ProjectDesk& desk) {
    if (desk.Windows.IsOpen() && !desk.Windows.UnloadProject()) return false;
    desk.App.State.sProject.clear();
    return true;
}

}  // namespace

void ProjectLoaded(session::App& app) {
    for (session::Document* document : app.State.Documents.All()) document->MarkProject(true);
}

bool QueryUnloadProject(session::App& app, const std::string& shownProject) {
    const std::string name = shownProject.substr(shownProject.rfind('\\') + 1);
    std::vector<std::int16_t> ids;
    for (const session::Document* document : app.State.Documents.All()) ids.push_back(document->ID);
    for (const std::int16_t id : ids) {
        // A question on the way may have closed others.
        session::Document* document = DocumentOf(app.State.Documents, id);
        // Kept: the name may stand anywhere in the caption. An empty project has no documents.
        if (document == nullptr || name.empty() || !base::Contains(document->Caption(), name)) continue;
        document->Unload();
        if (DocumentOf(app.State.Documents, id) != nullptr) return false;
    }
    return true;
}

void OpenProjectFile(const ProjectDesk& desk, const std::string& projectFile) {
    if (projectFile.empty()) return;
    const std::string extension = base::FileExtension(projectFile);
    bool isHandled = OpenInTool(desk, projectFile, extension);
    if (!isHandled) {
        for (session::Document* document : desk.App.State.Documents.All()) {
            if (document->Caption() != projectFile) continue;
            document->BringToFront();
            isHandled = true;
        }
    }
    if (!isHandled && extension != "ABS") desk.App.Hall.Editor->OpenDocument(projectFile);
}

void mnuNewProject_Click(const ProjectDesk& desk) {
    if (!LeaveProject(desk) || !desk.Windows.ShowNewDesign()) return;
    session::Document* document =
        desk.App.Hall.Main->ActiveDocument();  // soon it is the project's window that is active
    desk.App.Hall.Project->ShowProject();
    if (document != nullptr) {
        document->MarkProject(true);
        document->BringToFront();
    }
}

// The project is left only when a file has been chosen: a cancelled dialog changes nothing.
void mnuProjectOpen_Click(const ProjectDesk& desk) {
    session::EnterWorkDir(desk.App);
    const auto file = desk.App.Host.Boxes.OpenFile(
        {.Filter = "PLD Files (*.pld)|*.pld", .InitialFolder = desk.App.State.WorkDir});
    if (!file || file->empty() || !LeaveProject(desk)) return;
    if (base::FileExtension(*file) != "PLD") {
        desk.App.Host.Boxes.Say(
            "Only design files with .PLD as the file extension can be opened as a project.");
        return;
    }
    session::OpenUnlessOpen(desk.App, *file);
}

void mnuProject_Click(const ProjectDesk& desk, session::Document& document) {
    if (!desk.Windows.IsOpen()) return desk.App.Hall.Project->ShowProject();
    const bool show = !document.ShowsProject();
    if (show) {
        desk.App.Hall.Project->ShowProject();
    } else {
        desk.Windows.HideProject();
    }
    document.MarkProject(show);
}

}  // namespace project
