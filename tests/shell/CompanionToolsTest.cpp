#include "shell/CompanionTools.h"

#include <gtest/gtest.h>

#include "platform/qt/HostFileSystem.h"
#include "shell/ToolbarModel.h"
#include "support/Rooms.h"

namespace {

using Lines = std::vector<std::string>;

const Lines names = {"Calculator", "Explorer", "DOS", "Stavrik", "Schematic", "Wavrik", "Programmer"};

class CompanionToolsTest : public testing::Test, public doubles::Bench<platform::qt::HostFileSystem> {
  protected:
    CompanionToolsTest() {
        State.InstallRoot = Folder.Logic();
        for (std::size_t i = 0; i < names.size(); ++i) State.StdUtils[i].Name = names[i];
        State.StdUtils[0].Program = Folder.Logic("calc.exe");
        Folder.Write("calc.exe", "");
        OpenWindows({});
    }

    void Install(const std::string& tool) { Folder.Write(tool + "/" + tool + ".exe", ""); }
    std::string Root(const std::string& name) const { return Folder.Logic(name); }
    // The desktop's windows; this program's is always among them.
    void OpenWindows(std::vector<platform::TopLevelWindow> windows) {
        windows.push_back({1, "Korvane", 0, 0});
        Desk.Screen.Open = std::move(windows);
    }
    void RunAll() {
        OpenWindows({{2, "Wavrik", 0, 0}, {3, "Stavrik", 9, 0}, {4, "Schematic", 0, 0}});
        Desk.Link.Servers = {"Wavrik|frmMain", "Stavrik|frmMain", "Schematic/PCB|frmMain"};
    }
    Lines TakeLog() {
        EXPECT_FALSE(Desk.Link.IsOpen()) << "no link outlives its operation";
        return std::exchange(Desk.Link.Log, {});
    }
    Lines TakeStarted() { return std::exchange(Desk.Programs.Started, {}); }

    doubles::TemporaryFolder Folder;
};

}  // namespace

TEST_F(CompanionToolsTest, TilingTellsEveryToolThatRuns) {
    RunAll();
    shell::TileCompanions(App);
    EXPECT_EQ(TakeLog(), (Lines{"Wavrik|frmMain", "Wavrik|frmMain Tile 0 7680 7680 5760", "Stavrik|frmMain",
                                "Stavrik|frmMain Tile 5760 7680 7680 5760", "Schematic/PCB|frmMain",
                                "Schematic/PCB|frmMain Tile 5760 0 7680 5760"}));

    Desk.Screen.Screen = {.Width = 1365 * 15, .Height = 767 * 15};  // halves of odd numbers are fractions
    State.sProject = Root("WORK");
    Folder.Write("WORK.scm", "");  // tests one extension and opens another
    Folder.Write("WORK.SCH", "");
    shell::TileCompanions(App);
    const std::string stavrik = "Stavrik|frmMain", schematic = "Schematic/PCB|frmMain";
    EXPECT_EQ(TakeLog(),
              (Lines{"Wavrik|frmMain", "Wavrik|frmMain Tile 0 10237.5 10237.5 5752.5", stavrik,
                     stavrik + " Tile 5752.5 10237.5 10237.5 5752.5", stavrik + " Open " + Root("WORK.SMC"),
                     schematic, schematic + " Tile 5752.5 0 10237.5 5752.5",
                     schematic + " Open " + Root("WORK.SCH")}));
    EXPECT_EQ(TakeStarted(), Lines{});
}

TEST_F(CompanionToolsTest, TilingStartsWhatIsInstalled) {
    Install("Stavrik");
    Install("Wavrik");
    shell::TileCompanions(App);
    EXPECT_EQ(TakeStarted(), (Lines{"behind: " + Root("Wavrik\\Wavrik.exe") + " /NoSplash",
                                    "behind: " + Root("Stavrik\\Stavrik.exe") + " /NoSplash"}));
    EXPECT_EQ(State.StdUtils[3].TaskId, 2u);
    EXPECT_EQ(State.StdUtils[5].TaskId, 1u);
    const auto number = [&](const char* tool, const char* value) {
        return std::get<std::uint32_t>(
            Desk.Settings.Keys[std::string("Software\\Brennick Labs\\") + tool + "\\1.0\\Settings"][value]);
    };
    EXPECT_EQ(number("Wavrik", "MainTop"), 0u);
    EXPECT_EQ(number("Wavrik", "MainLeft"), 7680u);
    EXPECT_EQ(number("Stavrik", "MainTop"), 5760u);
    EXPECT_EQ(number("Stavrik", "MainHeight"), 5760u);
    // The one that is missing is spoken to in vain, each step with one more try.
    const std::string schematic = "Schematic/PCB|frmMain", tile = schematic + " Tile 5760 0 7680 5760";
    EXPECT_EQ(TakeLog(), (Lines{schematic, schematic, tile, tile}));
}

TEST_F(CompanionToolsTest, AFailingStepHasOneMoreTry) {
    RunAll();
    State.sProject = Root("WORK");
    for (const char* extension : {".si", ".scm", ".sch"}) Folder.Write("WORK" + std::string(extension), "");
    const std::string tile = "Tile", open = "Open";
    const struct {
        const char* Name;
        std::vector<int> Answers;  // of the first server, one a try; then 0
        Lines Steps;               // that it hears of
    } cases[] = {{"willing", {}, {tile, open}},
                 {"fails once", {285}, {tile, tile, open}},
                 {"fails twice", {285, 286}, {tile, tile, open}},
                 {"the count outlives a success", {285, 0, 285}, {tile, tile, open}},
                 {"fails at every step", {285, 285, 292, 292}, {tile, tile, open, open}}};
    for (const auto& c : cases) {
        std::size_t tries = 0;
        Desk.Link.OnCommand = [&](const std::string&) {
            return tries < c.Answers.size() ? c.Answers[tries++] : 0;
        };
        shell::TileCompanions(App);
        Lines steps;
        for (const std::string& line : TakeLog()) {
            if (line.starts_with("Wavrik|frmMain ")) steps.push_back(line.substr(15, 4));
        }
        EXPECT_EQ(steps, c.Steps) << c.Name;
    }
    Desk.Programs.FailWith = base::errPathFileAccess;  // a tool without the right to execute
    OpenWindows({});
    Install("Wavrik");
    shell::TileCompanions(App);
    EXPECT_EQ(State.StdUtils[5].TaskId, 0u);
    EXPECT_TRUE(Desk.Boxes.Shown.empty());
}

TEST_F(CompanionToolsTest, WithoutAListOfWindowsTheLinkTellsWhatRuns) {
    RunAll();
    Desk.Screen.Open.clear();
    for (const char* tool : {"Wavrik", "Stavrik", "Schematic"}) Install(tool);
    Desk.Link.Servers.erase("Wavrik|frmMain");
    shell::TileCompanions(App);
    shell::ActivateTool(App, 3);
    EXPECT_EQ(TakeStarted(), Lines{"behind: " + Root("Wavrik\\Wavrik.exe") + " /NoSplash"});
}

TEST_F(CompanionToolsTest, ACompanionIsStartedOrComesForward) {
    shell::ActivateTool(App, 5);  // not installed
    EXPECT_EQ(TakeLog(), Lines{});
    Install("Wavrik");
    OpenWindows({{7, "Wavrik", 8, 0}});  // a window with an owner is not the tool's
    shell::ActivateTool(App, 5);
    EXPECT_EQ(TakeStarted().size(), 1u);
    EXPECT_EQ(State.StdUtils[5].TaskId, 1u);
    EXPECT_EQ(TakeLog().size(), 4u) << "told in vain, as it is still starting";
    RunAll();
    shell::ActivateTool(App, 5);
    EXPECT_EQ(TakeLog(), (Lines{"Wavrik|frmMain", "Wavrik|frmMain Tile 0 7680 7680 5760"}));
    EXPECT_EQ(TakeStarted(), Lines{});
    EXPECT_EQ(Desk.Screen.Activated, std::vector<std::uint32_t>{2});
}

TEST_F(CompanionToolsTest, AnotherToolComesForwardIfThisProgramStartedIt) {
    const std::string display = "Calculator|frmMain Display";
    const struct {
        const char* Name;
        std::uint32_t TaskId;
        std::vector<platform::TopLevelWindow> Windows;
        int Answer;  // of the tool: -1 nobody listens
        std::size_t Starts;
        std::vector<std::uint32_t> Activated;
    } cases[] = {{"not there", 0, {}, -1, 1, {}},
                 {"started by hand", 0, {{5, "Calculator", 0, 77}}, -1, 1, {}},
                 {"started here", 9, {{5, "Calculator", 0, 77}, {6, "Calculator", 0, 9}}, -1, 0, {6}},
                 {"ended, and one by hand", 9, {{5, "Calculator", 0, 77}}, -1, 0, {}},
                 {"ended", 9, {}, -1, 1, {}},
                 {"answers", 0, {}, 0, 0, {}},
                 {"refuses", 0, {}, 285, 0, {}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        State.StdUtils[0].TaskId = c.TaskId;
        OpenWindows(c.Windows);
        Desk.Screen.Activated.clear();
        Desk.Link.Servers.clear();
        if (c.Answer >= 0) Desk.Link.Servers = {"Calculator|frmMain"};
        Desk.Link.OnCommand = [&](const std::string&) { return c.Answer; };
        shell::ActivateTool(App, 0);
        EXPECT_EQ(TakeStarted().size(), c.Starts);
        EXPECT_EQ(Desk.Screen.Activated, c.Activated);
        TakeLog();
    }
    State.StdUtils[0] = {.Program = Root("gone.exe"), .Name = "Calculator"};
    Desk.Link.Servers.clear();
    shell::ActivateTool(App, 0);
    EXPECT_EQ(TakeStarted(), Lines{});
}

TEST_F(CompanionToolsTest, ATitleOfSixteenBytesNeverMatches) {
    for (const std::size_t length : {15u, 16u, 17u}) {
        State.StdUtils[0].Name = std::string(length, 'x');
        State.StdUtils[0].TaskId = 3;
        OpenWindows({{5, State.StdUtils[0].Name, 0, 3}, {6, State.StdUtils[0].Name + "x", 0, 3}});
        shell::ActivateTool(App, 0);
    }
    EXPECT_EQ(Desk.Screen.Activated, std::vector<std::uint32_t>{5});
    EXPECT_EQ(TakeStarted().size(), 2u);
}

TEST_F(CompanionToolsTest, AResultGoesToTheToolThatRunsOrStartsIt) {
    std::string panel;
    Desk.Link.OnCommand = [&](const std::string& command) {
        panel = Hall.Panel(1);
        return command == "Open C:\\BAD.SI" ? platform::errLinkRefused : 0;
    };
    shell::LaunchTool(App, "Wavrik", "C:\\A.SI");
    EXPECT_EQ(Desk.Boxes.LastText(), "Unable To Launch " + Root("Wavrik.exe"));
    Install("Wavrik");
    shell::LaunchTool(App, "Wavrik", "C:\\A.SI");
    shell::LaunchTool(App, "Wavrik", "C:\\MY WORK\\A.SI");
    EXPECT_EQ(TakeStarted(), (Lines{Root("Wavrik\\Wavrik") + " C:\\A.SI /NoSplash",
                                    Root("Wavrik\\Wavrik") + " \"C:\\MY WORK\\A.SI\" /NoSplash"}));
    TakeLog();
    Desk.Link.Servers = {"Wavrik|frmMain"};
    for (const char* file : {"C:\\A.SI", "C:\\BAD.SI"}) shell::LaunchTool(App, "Wavrik", file);
    EXPECT_EQ(TakeLog(), (Lines{"Wavrik|frmMain", "Wavrik|frmMain Open C:\\A.SI", "Wavrik|frmMain",
                                "Wavrik|frmMain Open C:\\BAD.SI"}));
    EXPECT_EQ(TakeStarted(), Lines{});
    EXPECT_EQ(panel, "Loading Program Wavrik ...");
    EXPECT_EQ(Hall.Panel(1), "");
    EXPECT_EQ(Desk.Boxes.Shown.size(), 1u);
}

TEST_F(CompanionToolsTest, TheMenuStartsAFurtherCopy) {
    OpenWindows({{5, "Calculator", 0, 9}});
    State.StdUtils[0].TaskId = 9;
    State.StdUtils[6].Program = "C:\\Prog\\";
    State.CustUtils[0] = {.Program = "C:\\ONE", .Name = "Calculator"};
    State.CustUtils[1] = {.Program = "C:\\TWO", .Name = "Two"};
    State.CustUtils[2] = {.Program = "C:\\THREE", .Name = "Two"};
    doubles::Document document;
    for (const char* caption : {"Calculator", "Two", "Gone"}) shell::RunUtility(App, document, caption);
    EXPECT_EQ(TakeStarted(), (Lines{Root("calc.exe"), "C:\\TWO"}));
    EXPECT_EQ(Desk.Boxes.LastText(), "File C:\\Prog\\ cannot be found");
    Desk.Programs.FailWith = base::errFileNotFound;
    shell::RunUtility(App, document, "Two");
    EXPECT_EQ(Desk.Boxes.LastText(), "File C:\\TWO cannot be found");
    EXPECT_EQ(State.StdUtils[0].TaskId, 9u);
    EXPECT_EQ(TakeLog(), Lines{});
}
