#include "shell/CompanionTools.h"

#include <algorithm>
#include <functional>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "base/Text.h"
#include "shell/Settings.h"
#include "shell/ToolbarModel.h"

namespace shell {
namespace {

using platform::LinkMode;
using platform::TopLevelWindow;
using session::CustomUtility;

constexpr std::size_t maxTitle = 15;  // bytes: longer ones never match a tool's name

// A companion: its quarter of the screen, and what it opens of a project.
struct Companion {
    std::size_t Index;    // in StdUtils
    const char* Service;  // of its link
    int Row;
    int Column;
    const char* TestedExtension;
    const char* OpenedExtension;
};
constexpr Companion companions[] = {{5, "Wavrik", 0, 1, ".si", ".SI"},
                                    {3, "Stavrik", 1, 1, ".scm", ".SMC"},  // kept: tests one, opens another
                                    {4, "Schematic/PCB", 1, 0, ".sch", ".SCH"}};

const Companion* CompanionAt(std::size_t index) {
    const auto* found = std::find_if(std::begin(companions), std::end(companions),
                                     [&](const Companion& companion) { return companion.Index == index; });
    return found == std::end(companions) ? nullptr : found;
}

// The error trap of a sequence: a statement that fails is tried once more, then the sequence goes on behind
// it. Kept: a success does not clear the count, so that after a second try that helped the next statement
// that fails has none.
class Attempts {
  public:
    void operator()(const std::function<void()>& statement) {
        while (!Succeeds(statement)) {
            if (++errors_ <= 1) continue;
            errors_ = 0;
            return;
        }
    }

  private:
    static bool Succeeds(const std::function<void()>& statement) {
        try {
            statement();
            return true;
        } catch (const base::RunTimeError&) {
            return false;
        }
    }

    int errors_ = 0;
};

bool HasTitle(const TopLevelWindow& window, const std::string& name) {
    return window.Title.size() <= maxTitle && window.Title == name;
}

// The first window of that title without an owner, 0 if there is none.
std::uint32_t FindWindow(const std::vector<TopLevelWindow>& windows, const std::string& name) {
    for (const TopLevelWindow& window : windows) {
        if (window.Owner == 0 && HasTitle(window, name)) return window.Handle;
    }
    return 0;
}

// The window of a tool that this program started, 0 if there is none: one of its process, if possible under
// its name; else one under its name whose process nobody knows. Never one that the user started himself.
std::uint32_t WindowOf(const CustomUtility& tool, const std::vector<TopLevelWindow>& windows) {
    const std::pair<std::uint32_t, bool> choices[] = {
        {tool.TaskId, true}, {tool.TaskId, false}, {0, true}};  // process, under its name
    for (const auto& [process, named] : choices) {
        for (const TopLevelWindow& window : windows) {
            const bool fits = window.Owner == 0 && window.Process == process;
            if (fits && (!named || window.Title == tool.Name)) return window.Handle;
        }
    }
    return 0;
}

// Without the extension.
std::string ProgramOf(const session::App& app, const std::string& tool) {
    return app.State.InstallRoot + "\\" + tool + "\\" + tool;
}

// Starts and tells companions, under one trap.
class CompanionDesk {
  public:
    explicit CompanionDesk(session::App& app) : app_(app), half_(HalfScreen(app.Host.Screen)) {}

    bool IsInstalled(const Companion& companion) const {
        return app_.Host.Files.FileExists(Program(companion));
    }

    // Its place goes into its settings: it cannot be spoken to before it runs.
    void Start(const Companion& companion) {
        CustomUtility& tool = Tool(companion);
        attempt_([&] {
            SaveToolPlacement(app_.Host, tool.Name, Top(companion), Left(companion), half_.Width,
                              half_.Height);
        });
        attempt_([&] { tool.TaskId = app_.Host.Programs.StartBehind(Program(companion) + " /NoSplash"); });
    }

    void Tell(const Companion& companion) {
        Begin(companion);
        const auto execute = [&](const std::string& command) {
            attempt_([&] { app_.Host.Link.LinkExecute(command); });
        };
        using base::SingleToText;
        execute("Tile" + SingleToText(Top(companion)) + SingleToText(Left(companion)) +
                SingleToText(half_.Width) + SingleToText(half_.Height));
        const std::string& project = app_.State.sProject;
        if (!project.empty() && app_.Host.Files.FileExists(project + companion.TestedExtension))
            execute("Open " + project + companion.OpenedExtension);
        End();
    }

    // Where the desktop does not show the windows of others, a tool that runs answers its link.
    bool Answers(const Companion& companion) {
        try {
            app_.Host.Link.SetLinkTopic(Topic(companion));
            app_.Host.Link.SetLinkMode(LinkMode::Manual);
        } catch (const base::RunTimeError&) {
            return false;
        }
        End();
        return true;
    }

    bool IsOpen(const Companion& companion, const std::vector<TopLevelWindow>& windows) {
        if (windows.empty()) return Answers(companion);
        return std::any_of(windows.begin(), windows.end(), [&](const TopLevelWindow& window) {
            return HasTitle(window, Tool(companion).Name);  // owned or not
        });
    }

  private:
    static std::string Topic(const Companion& companion) {
        return companion.Service + std::string("|frmMain");
    }
    CustomUtility& Tool(const Companion& companion) const { return app_.State.StdUtils[companion.Index]; }
    std::string Program(const Companion& companion) const {
        return ProgramOf(app_, Tool(companion).Name) + ".exe";
    }
    float Top(const Companion& companion) const { return companion.Row == 0 ? 0 : half_.Height; }
    float Left(const Companion& companion) const { return companion.Column == 0 ? 0 : half_.Width; }

    void Begin(const Companion& companion) {
        End();
        attempt_([&] { app_.Host.Link.SetLinkTopic(Topic(companion)); });
        attempt_([&] { app_.Host.Link.SetLinkMode(LinkMode::Manual); });
    }
    void End() {
        attempt_([&] { app_.Host.Link.SetLinkMode(LinkMode::None); });
    }

    session::App& app_;
    const platform::ScreenSize half_;
    Attempts attempt_;
};

void ActivateCompanion(session::App& app, const Companion& companion) {
    CompanionDesk desk(app);
    const std::vector<TopLevelWindow> windows = app.Host.Screen.TopLevel();
    const std::uint32_t window = FindWindow(windows, app.State.StdUtils[companion.Index].Name);
    if (window == 0 && !(windows.empty() && desk.Answers(companion))) {
        if (!desk.IsInstalled(companion)) return;
        desk.Start(companion);
    }
    desk.Tell(companion);  // in vain right after a start, when it has its place from its settings
    if (window != 0) app.Host.Screen.Activate(window);
}

void ActivateOther(session::App& app, CustomUtility& tool) {
    const std::vector<TopLevelWindow> windows = app.Host.Screen.TopLevel();
    if (tool.TaskId != 0 && FindWindow(windows, tool.Name) != 0) {
        // Kept: nothing happens if the tool has ended and the window is another one's.
        if (const std::uint32_t window = WindowOf(tool, windows)) app.Host.Screen.Activate(window);
        return;
    }
    try {
        platform::Converse(app.Host.Link, tool.Name + "|frmMain", "Display");
    } catch (const base::RunTimeError& error) {
        if (error.Number() != base::errNoForeignApplication) return;
        if (app.Host.Files.FileExists(tool.Program)) tool.TaskId = app.Host.Programs.Start(tool.Program);
    }
}

// For a tool that does not run.
void StartWith(session::App& app, const std::string& tool, const std::string& file) {
    const std::string program = ProgramOf(app, tool);
    if (!app.Host.Files.FileExists(program + ".exe")) {
        // The message leaves out the tool's folder: kept.
        return app.Host.Boxes.Say("Unable To Launch " + app.State.InstallRoot + "\\" + tool + ".exe");
    }
    app.Host.Programs.Start(program + " " + platform::Argument(file) + " /NoSplash");
}

}  // namespace

platform::ScreenSize HalfScreen(const platform::Windows& screen) {
    const platform::ScreenSize size = screen.Size();
    return {.Width = size.Width / 2, .Height = size.Height / 2};
}

void TileCompanions(session::App& app) {
    const platform::HourglassScope hourglass(app.Host.Desktop);
    CompanionDesk desk(app);
    const std::vector<TopLevelWindow> windows = app.Host.Screen.TopLevel();
    for (const Companion& companion : companions) {
        if (!desk.IsOpen(companion, windows) && desk.IsInstalled(companion)) {
            desk.Start(companion);
        } else {
            desk.Tell(companion);
        }
    }
}

void ActivateTool(session::App& app, int index) {
    const platform::HourglassScope hourglass(app.Host.Desktop);
    const auto place = static_cast<std::size_t>(index);
    if (const Companion* companion = CompanionAt(place)) return ActivateCompanion(app, *companion);
    ActivateOther(app, app.State.StdUtils.at(place));
}

void LaunchTool(session::App& app, const std::string& tool, const std::string& file) {
    const base::ScopeExit clear([&] { app.Hall.Main->SetPanel(1, ""); });
    app.Hall.Main->SetPanel(1, "Loading Program " + tool + " ...");
    try {
        const platform::HourglassScope hourglass(app.Host.Desktop);
        platform::Converse(app.Host.Link, tool + "|frmMain", "Open " + file);
    } catch (const base::RunTimeError& error) {
        if (error.Number() == base::errNoForeignApplication) StartWith(app, tool, file);
    }
}

void CloseTools(session::App& app) {
    const std::vector<TopLevelWindow> windows = app.Host.Screen.TopLevel();
    for (std::size_t i = 0; i < app.State.StdUtils.size(); ++i) {
        CustomUtility& tool = app.State.StdUtils[i];
        // Kept: nothing notes the windows of companions.
        if (tool.TaskId == 0 || CompanionAt(i) != nullptr) continue;
        // Looked for only now: right after its start a tool has no window yet.
        tool.Hwnd = WindowOf(tool, windows);
        if (tool.Hwnd != 0) app.Host.Screen.Close(tool.Hwnd);
    }
}

void StartUtility(session::App& app, const std::string& program) {
    try {
        app.Host.Programs.Start(program);
    } catch (const base::RunTimeError&) {
        app.Host.Boxes.Say(CannotBeFoundText(program));
    }
}

void RunUtility(session::App& app, session::Document& document, const std::string& caption) {
    for (const CustomUtility& tool : app.State.StdUtils) {
        if (tool.Name == caption) return StartUtility(app, tool.Program);
    }
    std::int16_t row = 0;
    for (const CustomUtility& tool : app.State.CustUtils) {
        if (tool.Name != caption) {
            ++row;
            continue;
        }
        if (base::StartsWith(tool.Program, "MACRO")) return app.Hall.Macros->ChooseMacro(document, row);
        return StartUtility(app, tool.Program);
    }
    app.Host.Boxes.Say(CannotBeFoundText(app.State.StdUtils[6].Program));
}

}  // namespace shell
