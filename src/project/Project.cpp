#include "project/Project.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace project {
namespace {

session::Document* DocumentOf(const session::Documents& documents, std::int16_t id) {
    for (session::Document* document : documents.All()) {
        if (document->ID == id) return document;
    }
    return nullptr;
}

void MarkProject(session::Document& document, bool shows) {
    document.ShowsProject = shows;
    document.UpdateMenus();
}

// To the tool that runs, else to a new one. What fails stays without a word.
void SendToTool(const ProjectDesk& desk, const std::string& tool, const std::string& file) {
    try {
        desk.Doors.Execute(tool + "|frmMain", "Open " + file);
    } catch (const base::RunTimeError& error) {
        if (error.Number() != base::errNoForeignApplication) return;
        try {
            desk.Host.Programs.Start(desk.State.InstallRoot + "\\" + tool + "\\" + tool + " " + file +
                                     "  /NoSplash");
        } catch (const base::RunTimeError&) {
            // A tool that is not installed.
        }
    }
}

// True if the file's kind belongs to a tool and the user wants it there.
bool OpenInTool(const ProjectDesk& desk, const std::string& file, const std::string& extension) {
    if (extension == "SI" || extension == "SIM") {
        const auto answer = desk.Host.Boxes.MessageBox({.Text = "Open the Simulator Input file with Wavrik?",
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
    if (desk.Doors.IsOpen() && !desk.Doors.UnloadProject()) return false;
    desk.State.sProject.clear();
    return true;
}

void EnterWorkDir(const ProjectDesk& desk) {
    platform::FileSystem& files = desk.Host.Files;
    const std::string& folder = desk.State.WorkDir;
    if (!folder.empty() && files.DirectoryExists(folder)) files.SetCurrentDirectory(folder);
}

}  // namespace

void ProjectLoaded(const ProjectDesk& desk) {
    desk.Doors.SetOpen(true);
    for (session::Document* document : desk.State.Documents.All()) {
        MarkProject(*document, true);
    }
}

bool QueryUnloadProject(const ProjectDesk& desk, const std::string& shownProject) {
    const std::string name = shownProject.substr(shownProject.rfind('\\') + 1);
    std::vector<std::int16_t> ids;
    for (const session::Document* document : desk.State.Documents.All()) ids.push_back(document->ID);
    for (const std::int16_t id : ids) {
        // A question on the way may have closed others.
        session::Document* document = DocumentOf(desk.State.Documents, id);
        // Kept: the name may stand anywhere in the caption. An empty project has no documents.
        if (document == nullptr || name.empty() || !base::Contains(document->Caption(), name)) continue;
        document->Unload();
        if (DocumentOf(desk.State.Documents, id) != nullptr) return false;
    }
    desk.Doors.SetOpen(false);
    return true;
}

void OpenProjectFile(const ProjectDesk& desk, const std::string& projectFile) {
    if (projectFile.empty()) return;
    const std::string extension = base::FileExtension(projectFile);
    bool isHandled = OpenInTool(desk, projectFile, extension);
    if (!isHandled) {
        for (session::Document* document : desk.State.Documents.All()) {
            if (document->Caption() != projectFile) continue;
            document->BringToFront();
            isHandled = true;
        }
    }
    if (!isHandled && extension != "ABS") desk.Doors.OpenDocument(projectFile);
}

void mnuNewProject_Click(const ProjectDesk& desk) {
    if (!LeaveProject(desk) || !desk.Doors.ShowNewDesign()) return;
    session::Document* document =
        desk.Doors.ActiveDocument();  // soon it is the project's window that is active
    desk.Doors.ShowProject();
    if (document != nullptr) {
        MarkProject(*document, true);
        document->BringToFront();
    }
}

// The project is left only when a file has been chosen: a cancelled dialog changes nothing.
void mnuProjectOpen_Click(const ProjectDesk& desk) {
    EnterWorkDir(desk);
    const auto file =
        desk.Host.Boxes.OpenFile({.Filter = "PLD Files (*.pld)|*.pld", .InitialFolder = desk.State.WorkDir});
    if (!file || file->empty() || !LeaveProject(desk)) return;
    if (base::FileExtension(*file) != "PLD") {
        desk.Host.Boxes.Say("Only design files with .PLD as the file extension can be opened as a project.");
        return;
    }
    const auto open = desk.State.Documents.All();
    const bool isOpen = std::any_of(open.begin(), open.end(), [&](const session::Document* document) {
        return document->Caption() == *file;  // kept: case counts
    });
    if (isOpen) {
        desk.Host.Boxes.Say("File already open in editor. ");
    } else {
        desk.Doors.OpenDocument(*file);
    }
}

void mnuProject_Click(const ProjectDesk& desk, session::Document& document) {
    if (!desk.Doors.IsOpen()) return desk.Doors.ShowProject();
    const bool show = !document.ShowsProject;
    if (show) {
        desk.Doors.ShowProject();
    } else {
        desk.Doors.HideProject();
    }
    MarkProject(document, show);
}

}  // namespace project
