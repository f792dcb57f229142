#include "shell/CompanionTools.h"

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "shell/ToolbarModel.h"

namespace shell {

void LaunchTool(session::App& app, const std::string& tool, const std::string& file) {
    const std::string& root = app.State.InstallRoot;
    app.Hall.SetPanel(1, "Loading Program " + tool + " ...");
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
    app.Hall.SetPanel(1, "");
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
