#include "shell/CompanionTools.h"

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "shell/ToolbarModel.h"

namespace shell {
namespace {

constexpr std::size_t firstCompanion = 3;  // of StdUtils: Stavrik, Schematic, Wavrik
constexpr std::size_t lastCompanion = 5;

// The window of a tool that this program started, 0 if there is none: one of its process, if possible under
// its name; else one under its name whose process nobody knows. Never one that the user started himself.
std::uint32_t WindowOf(const session::CustomUtility& tool,
                       const std::vector<platform::TopLevelWindow>& windows) {
    const std::pair<std::uint32_t, bool> choices[] = {
        {tool.TaskId, true}, {tool.TaskId, false}, {0, true}};  // process, under its name
    for (const auto& [process, named] : choices) {
        for (const platform::TopLevelWindow& window : windows) {
            const bool fits = window.Owner == 0 && window.Process == process;
            if (fits && (!named || window.Title == tool.Name)) return window.Handle;
        }
    }
    return 0;
}

}  // namespace

void CloseTools(session::App& app) {
    const std::vector<platform::TopLevelWindow> windows = app.Host.Screen.TopLevel();
    for (std::size_t i = 0; i < app.State.StdUtils.size(); ++i) {
        session::CustomUtility& tool = app.State.StdUtils[i];
        // Kept: nothing notes the windows of companions.
        if (tool.TaskId == 0 || (i >= firstCompanion && i <= lastCompanion)) continue;
        // Looked for only now: right after its start a tool has no window yet.
        tool.Hwnd = WindowOf(tool, windows);
        if (tool.Hwnd != 0) app.Host.Screen.Close(tool.Hwnd);
    }
}

void LaunchTool(session::App& app, const std::string& tool, const std::string& file) {
    const std::string& root = app.State.InstallRoot;
    app.Hall.Main->SetPanel(1, "Loading Program " + tool + " ...");
    try {
        if (!app.Host.Files.FileExists(root + "\\" + tool + "\\" + tool + ".exe")) {
            // The message leaves out the tool's folder: kept.
            app.Host.Boxes.Say("Unable To Launch " + root + "\\" + tool + ".exe");
        } else {
            app.Host.Programs.Start(root + "\\" + tool + "\\" + tool + " " + file + " /NoSplash");
        }
    } catch (const base::RunTimeError& error) {
        app.Host.Boxes.Say(error.Description());
    }
    app.Hall.Main->SetPanel(1, "");
}

void ActivateTool(session::App& app, int index) {
    session::CustomUtility& tool = app.State.StdUtils.at(static_cast<std::size_t>(index));
    if (!app.Host.Files.FileExists(tool.Program)) return;
    try {
        tool.TaskId = app.Host.Programs.Start(tool.Program);
    } catch (const base::RunTimeError&) {
        // A tool that can't be started is passed over without a word.
    }
}

void RunUtility(session::App& app, const std::string& caption) {
    const auto start = [&](const std::string& program) {
        try {
            app.Host.Programs.Start(program);
        } catch (const base::RunTimeError&) {
            app.Host.Boxes.Say(CannotBeFoundText(program));
        }
    };
    for (const session::CustomUtility& tool : app.State.StdUtils) {
        if (tool.Name == caption) return start(tool.Program);
    }
    for (const session::CustomUtility& tool : app.State.CustUtils) {
        if (tool.Name != caption) continue;
        if (tool.Program == "MACRO*") return app.Host.Boxes.Say(UndefinedMacroText);
        if (!base::StartsWith(tool.Program, "MACRO")) start(tool.Program);
        return;
    }
    app.Host.Boxes.Say(CannotBeFoundText(app.State.StdUtils[6].Program));
}

}  // namespace shell
