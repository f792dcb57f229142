#include <QElapsedTimer>
#include <QMenuBar>
#include <QToolBar>
#include <map>
#include <set>

#include "ShellFixture.h"
#include "editor/DocumentMenu.h"
#include "editor/Recovery.h"
#include "platform/qt/HostLink.h"
#include "platform/qt/LinkServer.h"
#include "shell/MainMenu.h"
#include "support/FormUser.h"
#include "toolchain/frmMessage.h"

using platform::Answer;

TEST_F(RunningShell, MenusAreThoseOfTheActiveChildWhichIsShown) {
    QMenuBar& bar = *shell->Main().menuBar();
    EXPECT_EQ(bar.actions().size(), 5);
    editor::frmDocument& document = Open("R&D.txt", "");
    EXPECT_EQ(bar.actions().size(), 8);
    EXPECT_EQ(bar.actions().at(1), document.Menus()->Menu("mnuEdit")->menuAction());
    const auto isShown = [&](const char* button) {
        return shell->Main().findChild<QAction*>(button)->isVisible();
    };
    QWidget& messages = *Messages().parentWidget();
    shell->TheApp().Hall.ToolChain->BringMessagesToFront();
    EXPECT_EQ(bar.actions().size(), 5);
    document.BringToFront();
    EXPECT_EQ(bar.actions().size(), 8);
    shell->TheApp().Hall.ToolChain->BringMessagesToFront();
    QTest::keyClick(&Messages(), Qt::Key_F4, Qt::ControlModifier);
    ASSERT_FALSE(messages.isVisible());
    EXPECT_EQ(ActiveDocument(), &document);  // the next one takes over
    EXPECT_EQ(bar.actions().size(), 8);
    QMenu& windows = *document.Menus()->Menu("mnuWindow");
    windows.popup({});
    QAction& listed = *windows.actions().back();
    EXPECT_TRUE(listed.isChecked() && listed.text().startsWith("&2 ") && listed.text().endsWith("R&&D.TXT"))
        << listed.text().toStdString();
    windows.close();
    shell->SetPanel(1, "told");
    EXPECT_TRUE(document.Unload());
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(bar.actions().size(), 5);
    desktop.Time.Advance(std::chrono::milliseconds(500));
    EXPECT_EQ(shell->Panel(1), "");
    EXPECT_TRUE(isShown("DepComp") && !isShown("Util1"));  // another active child hides both
    EXPECT_TRUE(shell->Main().findChild<QAction*>("AllTESK")->isEnabled());
}

TEST_F(RunningShell, TheChildUsedBeforeFollowsOneThatCloses) {
    editor::frmDocument &a = Open("A.TXT", ""), &b = Open("B.TXT", ""), &c = Open("C.TXT", "");
    for (auto* document : {&b, &c, &a}) QTest::mouseClick(TextOf(*document).viewport(), Qt::LeftButton);
    Key(a, Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(ActiveDocument(), &c);
    Key(c, Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(ActiveDocument(), &b);
}

// Among the entries of its menu and all else that a window does by keys.
TEST_F(ShellFixture, NoKeyHasTwoMeanings) {
    for (const auto& table : {editor::DocumentMenu(), shell::MainMenu()})
        for (const platform::MenuRow& row : table)
            EXPECT_EQ(QKeySequence(row.Shortcut).isEmpty(), *row.Shortcut == '\0') << row.Name;
    Start();
    const auto expectOne = [](const QObject& window, std::size_t least) {
        std::map<QKeySequence, int> uses;
        for (const QAction* action : window.findChildren<QAction*>())
            if (!action->shortcut().isEmpty()) ++uses[action->shortcut()];
        EXPECT_GT(uses.size(), least);
        for (const auto& [key, count] : uses) EXPECT_EQ(count, 1) << key.toString().toStdString();
    };
    expectOne(shell->Main(), 2);
    expectOne(Open("a.txt", ""), 15);
}

TEST_F(RunningShell, EntriesWithoutACommandAreDisabledAndTheOthersRun) {
    editor::frmDocument& document = Open("a.txt", "");
    for (const platform::MenuRow& row : editor::DocumentMenu()) {
        if (row.Count > 0) continue;
        const bool isLine = std::string(row.Caption) == "-";
        EXPECT_EQ(document.Menus()->Entry(row.Name).text().isEmpty(), isLine) << row.Name;
        if (document.Menus()->Menu(row.Name) != nullptr || isLine) continue;
        const bool enabled = document.Menus()->Entry(row.Name).isEnabled();
        const std::set<std::string> byTimer = {"mnuEditCut", "mnuEditCopy", "mnuEditPaste"};
        if (enabled || byTimer.contains(row.Name)) continue;
        const session::Hall& hall = shell->TheApp().Hall;
        const bool hasRow = hall.DocumentCommands.Find(row.Name) || hall.MainCommands.Find(row.Name);
        if (hasRow) continue;  // that cannot be called now
        EXPECT_THROW(document.RunCommand(row.Name), base::RunTimeError) << row.Name;
    }
    for (const char* name :
         {"mnuFileSave", "mnuRunDepCompile", "mnuFileOpen", "mnuViewRefresh", "mnuCompiler"}) {
        EXPECT_TRUE(document.Menus()->Entry(name).isEnabled()) << name;
    }
    EXPECT_FALSE(document.Menus()->Entry("mnuImportVhdl").isEnabled());
}

TEST_F(ShellFixture, MissingFoldersHideWhatNeedsThem) {
    std::filesystem::remove_all(folder.Path() / "Korvane/Utility");
    std::filesystem::remove_all(folder.Path() / "Korvane/ZrxPart");
    Start();
    editor::frmDocument& document = Open("a.txt", "");
    for (const char* name : {"mnuZonerex", "mnuRunZrx", "mnuBackpin", "mnuImport", "mnuVhdl",
                             "mnuRunVhdlCompile", "mnuRunVhdlAnalysis"}) {
        EXPECT_FALSE(document.Menus()->Entry(name).isVisible()) << name;
    }
    const auto& main = shell->Main().Menus();
    for (const char* name : {"mnuImport", "mnuVhdl"}) EXPECT_FALSE(main.Entry(name).isEnabled()) << name;
    EXPECT_FALSE(main.Entry("mnuHelpOvrel").isVisible() ||
                 document.Menus()->Entry("mnuHelpOvrel").isVisible());
    folder.Write("Korvane/OvrelHlp/NEWS.TXT", "");
    EXPECT_TRUE(NewText().Menus()->Entry("mnuHelpOvrel").isVisible());
    EXPECT_FALSE(main.Entry("mnuHelpOvrelList(0)").isVisible());
}

TEST_F(RunningShell, ARunBringsClosedMessagesBack) {
    editor::frmDocument& document = Open("a.pld", "");
    QWidget& window = *Messages().parentWidget();
    window.close();
    EXPECT_FALSE(window.isVisible());
    desktop.Libraries.Missing = "teskx.dll";
    document.RunCommand("mnuRunDepCompile");
    EXPECT_TRUE(window.isVisible() && Messages().isVisible());
    EXPECT_EQ(ActiveDocument(), &document);
}

TEST_F(RunningShell, FileOpenComparesCaptionsExactly) {
    Open("A.TXT", "x");
    desktop.Boxes.Files = {folder.Logic("A.TXT"), UpperLogic("A.TXT"), std::nullopt};
    for (int i = 0; i < 3; ++i) shell->Main().RunCommand("mnuFileOpen");
    // A path in mixed case opens a second window; one in upper case finds the first.
    EXPECT_EQ(state.Documents.Count(), 2u);
    EXPECT_EQ(desktop.Boxes.LastText(), "File already open in editor. ");
    EXPECT_EQ(desktop.Boxes.FileRequests[0].InitialFolder, state.LastPath);
}

TEST_F(RunningShell, TheEndClosesTheToolsThatItStarted) {
    const auto start = [&](std::size_t tool, std::uint32_t process) {
        state.StdUtils[tool].TaskId = process;
    };
    start(0, 100);  // Calculator
    start(1, 101);  // Explorer
    start(2, 102);  // DOS
    start(5, 105);  // Wavrik: a companion, which stays
    desktop.Screen.Open = {{1, "Calculator", 0, 7},   {2, "Settings", 0, 100}, {3, "Calculator", 9, 100},
                           {4, "Calculator", 0, 100}, {5, "My files", 0, 101}, {6, "Explorer", 0, 0},
                           {7, "DOS", 0, 8},          {8, "DOS", 0, 0},        {9, "Wavrik", 0, 105},
                           {10, "Programmer", 0, 0}};
    EXPECT_TRUE(Close());
    EXPECT_EQ(desktop.Screen.Closed, (std::vector<std::uint32_t>{4, 5, 8}));
}

TEST_F(ShellFixture, TilingAllToolsEndsThoughNoneAnswers) {
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", folder.Path().c_str());
    const auto accept = [](const std::string&) { return true; };  // which nobody gets to while we wait
    const platform::qt::LinkServer wavrik("Wavrik", "frmMain", accept);
    const platform::qt::LinkServer stavrik("Stavrik", "frmMain", accept);
    const platform::qt::LinkServer schematic("Schematic/PCB", "frmMain", accept);
    platform::qt::HostLink link;
    platform::Host host{files,
                        desktop.Settings,
                        desktop.Boxes,
                        clipboard,
                        desktop.Programs,
                        desktop.Libraries,
                        desktop.Desk,
                        desktop.Time,
                        desktop.Screen,
                        desktop.Paper,
                        link,
                        desktop.Journal};
    Start(host);
    shell->Main().showMaximized();
    desktop.Screen.Open = {{1, "Wavrik"}, {2, "Stavrik"}, {3, "Schematic"}};
    QElapsedTimer time;
    time.start();
    shell->Main().findChild<QAction*>("AllTESK")->trigger();
    EXPECT_LT(time.elapsed(), 3 * 2 * 1000) << "two tries a tool, none longer than a second";
    EXPECT_EQ(shell->Main().Frame(), QRect(0, 0, 512, 384));
    EXPECT_FALSE(shell->Main().isMaximized() || desktop.Desk.Hourglass);
    qputenv("XDG_RUNTIME_DIR", before);
    EXPECT_TRUE(Close());
}

TEST_F(ShellFixture, ARefusedExitLeavesEveryTextOpen) {
    using Exit = std::function<void(editor::frmDocument&)>;
    const Exit exits[] = {[this](editor::frmDocument&) { EXPECT_FALSE(Close()); },
                          [](editor::frmDocument& active) { active.RunCommand("mnuFileExit"); }};
    Start();
    for (const Exit& exit : exits) {
        editor::frmDocument& first = Open("1.txt", "one");
        editor::frmDocument& second = Open("2.txt", "two");
        Type(first, "A");
        Type(second, "B");
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            desktop.Boxes.Answers = {answer, Answer::Cancel};
            exit(second);  // the active one is asked first
            EXPECT_EQ(desktop.Boxes.LastText(), "Save changes to " + UpperLogic("1.txt") + "?");
            EXPECT_EQ(state.Documents.Count(), 2u);
            EXPECT_TRUE(first.Dirty());
            EXPECT_EQ(second.Dirty(), answer == Answer::No);
            EXPECT_EQ(second.txtText().Text(), "Btwo");
            EXPECT_EQ(folder.Read("2.txt"), answer == Answer::No ? "two" : "Btwo");
            EXPECT_FALSE(folder.Exists("Korvane/KORVANE.CFG"));
        }
        desktop.Boxes.Answers = {Answer::No};
        EXPECT_TRUE(first.Unload() && second.Unload());
    }
    Type(NewText(), "C");
    Type(Open("1.txt", "one"), "D");
    desktop.Boxes.Answers = {Answer::Yes, Answer::Yes};
    desktop.Boxes.Files = {folder.Logic("NEW.TXT")};
    EXPECT_TRUE(Close());
    EXPECT_EQ(folder.Read("NEW.TXT"), "C");
    EXPECT_EQ(folder.Read("1.txt"), "Done");
    EXPECT_TRUE(folder.Exists("Korvane/KORVANE.CFG"));
    EXPECT_EQ(state.Documents.Count(), 0u);
}

TEST_F(RunningShell, AClickOnABarsEntryTogglesTheBarAndItsOwnMark) {
    const shell::frmMain& main = shell->Main();
    const platform::qt::MenuSet* menus[] = {&main.Menus(), Open("1.txt", "").Menus(),
                                            Open("2.txt", "").Menus()};
    for (const auto& [entry, bar] : {std::pair<const char*, const char*>{"mnuViewToolbar", "tbToolBar"},
                                     {"mnuViewStatusBar", "sbStatusBar"}}) {
        const auto& widget = *main.findChild<QWidget*>(bar);
        bool marks[] = {true, true, true};
        bool seen = true;
        for (const int click : {1, 2, 2, 0, 1, 1, 0}) {
            menus[click]->Entry(entry).trigger();
            marks[click] = !marks[click];
            seen = !seen;
            EXPECT_EQ(widget.isVisible(), seen) << entry;
            for (int i = 0; i < 3; ++i) EXPECT_EQ(menus[i]->Entry(entry).isChecked(), marks[i]) << entry << i;
        }
    }
}

TEST_F(ShellFixture, AnUnwritableConfigurationInterruptsTheEndAndIsTriedAgain) {
    const auto obstacle = folder.Path() / "Korvane/KORVANE.CFG";
    for (const bool isMended : {false, true}) {
        Start();
        ShowErrorsWith(desktop.Boxes);
        desktop.Boxes.Shown.clear();
        std::filesystem::create_directories(obstacle);
        EXPECT_FALSE(Close());
        QApplication::processEvents();
        EXPECT_EQ(desktop.Boxes.Shown.size(), 1u);
        if (isMended) std::filesystem::remove(obstacle);
        EXPECT_TRUE(Close());
        EXPECT_EQ(desktop.Boxes.Shown.size(), isMended ? 1u : 2u);
    }
    EXPECT_FALSE(folder.Read("Korvane/KORVANE.CFG").empty());
}

TEST_F(RunningShell, TheNextRunRemembers) {
    Open("Work/one.pld", "").Unload();
    state.CompilerFlags = "jm2";
    state.AutoArrange = false;
    shell->Main().setGeometry(30, 40, 900, 700);
    const QRect frame = shell->Main().Frame();
    ASSERT_NE(frame, shell->Main().geometry()) << "this desktop draws frames";
    ASSERT_TRUE(Close());
    state = {};
    Start();
    EXPECT_EQ(state.CompilerFlags, "jm2");
    EXPECT_EQ(state.RecentFiles[0], UpperLogic("Work/one.pld"));
    EXPECT_EQ(state.LastPath, folder.Logic("Examples") + "\\");
    EXPECT_EQ(shell->Main().Frame(), frame);  // it creeps nowhere from start to start
    EXPECT_EQ(shell->Main().size(), QSize(900, 700));
    EXPECT_TRUE(shell->Main().Menus().Entry("mnuFileMru(0)").isVisible());
    EXPECT_TRUE(desktop.Boxes.Shown.empty()) << desktop.Boxes.LastText();
    ASSERT_FALSE(state.AutoArrange);
    const QRect messages = Messages().parentWidget()->geometry();
    EXPECT_NEAR(messages.y() + messages.height(), shell->Main().Area().viewport()->height(), 1)
        << "without it messages start at the foot";
}

TEST_F(RunningShell, ArrangedWindowsFillTheirRegions) {
    shell->Main().resize(1000, 800);
    editor::frmDocument& document = Open("a.txt", "");
    shell->Main().RunCommand("mnuWindowAuto");
    const QRect messages = Messages().parentWidget()->geometry();
    const QRect text = document.geometry();
    const QSize frame = shell->Main().frameGeometry().size();
    EXPECT_NEAR(messages.width(), frame.width() * 0.75, 1);
    EXPECT_NEAR(messages.height(), frame.height() * 0.2 - 1, 1);
    EXPECT_EQ(text.topLeft(), QPoint(0, 0));
    EXPECT_EQ(text.width(), messages.width());
    EXPECT_EQ(text.height(), messages.top() - 1);
    shell->Main().RunCommand("mnuWindowTileVertical");
    EXPECT_FALSE(document.geometry().intersects(Messages().parentWidget()->geometry()));
}

TEST_F(RunningShell, AMinimisedOrMaximisedMessageListTakesItsPlaceLater) {
    shell->Main().resize(1000, 800);
    auto& messages = static_cast<QMdiSubWindow&>(*Messages().parentWidget());
    const auto arrange = [&] {
        shell->Main().RunCommand("mnuWindowAuto");
        QApplication::processEvents();
        return messages.geometry();
    };
    const QRect foot = arrange();
    for (void (QWidget::*change)() : {&QWidget::showMinimized, &QWidget::showMaximized}) {
        messages.move(10, 10);
        (messages.*change)();
        const QRect changed = messages.geometry();
        EXPECT_EQ(arrange(), changed);
        editor::frmDocument& document = NewText();
        document.showNormal();
        EXPECT_EQ(document.height(), foot.top() - 1);
        messages.showNormal();
        QApplication::processEvents();
        EXPECT_EQ(messages.geometry(), foot);
        document.Unload();
    }
    messages.showMaximized();
    messages.hide();
    shell->Main().RunCommand("mnuWindowCascade");
    EXPECT_FALSE(messages.isVisible());
}

TEST_F(RunningShell, UnsavedTextsComeBackAfterAnAbnormalEnd) {
    editor::frmDocument& document = Open("a.txt", "saved");
    Type(document, "lost? ");
    const auto unread = folder.Path() / "unread.txt";
    folder.Write("unread.txt", "");
    std::filesystem::resize_file(unread, platform::FileSystem::MaxFileSize + 1);  // sparse
    shell->TheApp().Hall.Editor->OpenDocument(folder.Logic("unread.txt"));
    Type(*ActiveDocument(), "x");
    NewText();
    desktop.Time.Advance(std::chrono::seconds(2));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return files.List(folder.Logic("state/recovery/*.copy")).size() == 2; }));
    std::filesystem::rename(folder.Path() / "state",
                            folder.Path() / "kept");  // as a killed process leaves it
    desktop.Boxes.Answers = {Answer::No, Answer::No};
    ASSERT_TRUE(Close());
    std::filesystem::remove_all(folder.Path() / "state");
    std::filesystem::rename(folder.Path() / "kept", folder.Path() / "state");
    state = {};
    Start();
    ASSERT_FALSE(desktop.Boxes.Shown.empty());
    EXPECT_EQ(desktop.Boxes.Shown.back().Title, "Recover Texts");
    ASSERT_EQ(state.Documents.Count(), 2u);
    session::Document& back = *state.Documents.All().front();
    EXPECT_EQ(back.Caption(), UpperLogic("a.txt"));
    EXPECT_EQ(back.txtText().Text(), "lost? saved");
    EXPECT_TRUE(back.Dirty());
    desktop.Boxes.Answers = {Answer::No};
    Save(*ActiveDocument());
    EXPECT_GT(std::filesystem::file_size(unread), 1u)
        << "the file that could not be read is not replaced unasked";
    desktop.Boxes.Answers = {Answer::No, Answer::No};
    ASSERT_TRUE(Close());
    EXPECT_TRUE(files.List(folder.Logic("state/recovery/*")).empty());
}

TEST_F(ShellFixture, ARecoveredCopyStaysUntilItsSuccessorIsWritten) {
    const std::string name = "state/recovery/00000001.copy";
    const std::string old = editor::Recovery::Encode({"Untitled 1", "", "old"});
    const auto tick = [&](const std::function<bool()>& until) {
        return QTest::qWaitFor([&] {
            desktop.Time.Advance(std::chrono::seconds(2));
            return until();
        });
    };
    folder.Write(name, old);
    Start();
    Type(*ActiveDocument(), "new ");
    std::filesystem::permissions(folder.Path() / name, std::filesystem::perms(0444));
    EXPECT_TRUE(tick([&] { return !shell->Panel(1).empty(); }));
    EXPECT_EQ(shell->Panel(1), "No recovery copies: Path/File access error");
    EXPECT_EQ(folder.Read(name), old);
    shell->SetPanel(1, "told once");
    std::filesystem::permissions(folder.Path() / name, std::filesystem::perms(0644));
    EXPECT_TRUE(tick([&] { return folder.Read(name).ends_with("new old"); }));
    EXPECT_EQ(shell->Panel(1), "told once");
}

TEST_F(ShellFixture, ARefusedCopyGoesToTheTrash) {
    ::setenv("XDG_DATA_HOME", (folder.Path() / "data").c_str(), 1);
    folder.Write("state/recovery/00000001.copy", editor::Recovery::Encode({"Untitled 1", "", "refused"}));
    desktop.Boxes.Answers = {Answer::No};
    Start();
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(state.Documents.Count(), 0u);
    EXPECT_TRUE(files.List(folder.Logic("state/recovery/*")).empty());
    EXPECT_TRUE(folder.Read("data/Trash/files/00000001.copy").ends_with("refused"));
}

TEST_F(RunningShell, ToolsRunFromTheMenuAndTheToolbar) {
    state.StdUtils[0].Menu = state.StdUtils[0].Toolbar = true;
    // A name is data: no character of it is an access key, and bytes that can't be shown come back.
    const std::string name = "R&D \xFF";
    state.CustUtils[1] = {.Program = "C:\\own tool", .Name = name, .Menu = true, .Toolbar = true};
    state.CustUtils[2] = {.Program = "MACRO*", .Name = "Slot", .Menu = true, .Toolbar = true};
    editor::frmDocument& document = Open("a.txt", "");
    document.txtText().SetText("typed");
    document.txtText().SetSelLength(5);
    desktop.Boxes.Inputs = {"Renamed", "Again"};
    QMenu& menu = *document.Menus()->Menu("mnuUtilities");
    for (int index : {1, 2, 3}) {
        menu.popup({});
        const std::string entry = "mnuUtilTool(" + std::to_string(index) + ")";
        QTest::mouseClick(&menu, Qt::LeftButton, {},
                          menu.actionGeometry(&document.Menus()->Entry(entry)).center());
    }
    EXPECT_EQ(desktop.Programs.Started,
              (std::vector<std::string>{state.StdUtils[0].Program, "C:\\own tool"}));
    // The macro is defined by its entry, played by a click on its button and defined anew by a right click.
    QToolBar& bar = shell->Main().ToolBar();
    auto* slot = shell->Main().findChild<QAction*>("Util3");
    const auto click = [&](Qt::MouseButton with) { QTest::mouseClick(bar.widgetForAction(slot), with); };
    EXPECT_EQ(state.CustUtils[2].Program + slot->text().toStdString(), "MACRO:typedRenamed");
    click(Qt::LeftButton);
    EXPECT_EQ(document.txtText().Text(), "typedtyped");
    document.txtText().SetSelStart(9);
    document.txtText().SetSelLength(1);
    click(Qt::RightButton);
    EXPECT_EQ(state.CustUtils[2].Program + slot->text().toStdString(), "MACRO:dAgain");
    document.RunCommand("mnuUtilClearMacro");
    document.RunCommand("mnuUtilTool", 3);
    click(Qt::LeftButton);
    EXPECT_EQ(desktop.Boxes.LastText(),
              "The macro has not been defined.  You must define a macro before it can be used.");
    desktop.Programs.FailWith = base::errFileNotFound;
    auto* button = shell->Main().findChild<QAction*>("Util2");
    ASSERT_TRUE(button != nullptr && button->isVisible());
    for (const QAction* shown : {button, &document.Menus()->Entry("mnuUtilTool(2)")}) {
        EXPECT_EQ(shown->text(), QString("R&&D \uFFFD"));
    }
    QTest::mouseClick(bar.widgetForAction(button), Qt::LeftButton);
    EXPECT_EQ(desktop.Boxes.LastText(), "File C:\\own tool cannot be found");
    EXPECT_FALSE(shell->Main().findChild<QAction*>("Util4")->isVisible());
}
