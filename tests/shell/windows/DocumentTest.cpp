#include "ShellFixture.h"

using platform::Answer;

TEST_F(RunningShell, UntitledNumbersFollowTheCounter) {
    EXPECT_EQ(NewText().Caption(), "Untitled 1");
    EXPECT_EQ(NewText().Caption(), "Untitled 2");
    for (session::Document* document : state.Documents.All()) EXPECT_TRUE(document->Unload());
    EXPECT_EQ(state.UntitledCount, 0);
    // Closing a named file lowers it too.
    Open("a.txt", "x").Unload();
    EXPECT_EQ(NewText().Caption(), "Untitled 0");
}

TEST_F(RunningShell, OpeningADesignMakesTheProjectAndTheRecentList) {
    editor::frmDocument& document = Open("R&D/one.pld", "Name one;\nPIN 1 = a;\n");
    EXPECT_EQ(document.Caption(), UpperLogic("R&D/one.pld"));
    EXPECT_EQ(document.FileName(), document.Caption());
    EXPECT_EQ(document.txtText().Text(), "Name one;\r\nPIN 1 = a;\r\n");
    EXPECT_FALSE(document.Dirty());
    EXPECT_EQ(state.sProject, UpperLogic("R&D/one"));
    EXPECT_EQ(state.LastPath, UpperLogic("R&D") + "\\");
    EXPECT_EQ(state.RecentFiles[0], document.FileName());
    EXPECT_FALSE(desktop.Desk.Hourglass);
    Open("R&D/two.pld", "");
    EXPECT_EQ(state.sProject, UpperLogic("R&D/one"));  // the first one stays
    EXPECT_TRUE(document.Menus()->Entry("mnuFileMru(1)").isVisible());
    EXPECT_EQ(document.Menus()->Entry("mnuFileMru(1)").text().toStdString(),
              base::ReplaceAll(document.FileName(), "&", "&&"));
    for (session::Document* open : state.Documents.All()) open->Unload();
    EXPECT_EQ(state.sProject, "");
}

TEST_F(RunningShell, AMissingFileOpensAsANewOne) {
    shell->TheApp().Hall.Editor->OpenDocument(folder.Logic("new.pld"));
    EXPECT_EQ(desktop.Boxes.LastText(),
              "The file " + UpperLogic("new.pld") + " doesn't exist. New File assumed");
    editor::frmDocument& document = *ActiveDocument();
    EXPECT_EQ(state.RecentFiles[0], "");
    Type(document, "x");
    Save(document);
    EXPECT_EQ(folder.Read("NEW.PLD"), "x");
}

TEST_F(RunningShell, AnUnreadFileIsNotReplacedUnasked) {
    folder.Write("big.txt", "x");
    std::filesystem::resize_file(folder.Path() / "big.txt", platform::FileSystem::MaxFileSize + 1);  // sparse
    shell->TheApp().Hall.Editor->OpenDocument(folder.Logic("big.txt"));
    editor::frmDocument& document = *ActiveDocument();
    EXPECT_EQ(document.txtText().TextLength(), 0);
    desktop.Boxes.Answers = {Answer::No};
    Save(document);
    EXPECT_GT(std::filesystem::file_size(folder.Path() / "big.txt"), 1000u);
    Type(document, "x");
    desktop.Boxes.Answers = {Answer::Yes, Answer::No};  // a run saves too
    document.RunCommand("mnuRunIndepCompile");
    EXPECT_GT(std::filesystem::file_size(folder.Path() / "big.txt"), 1000u);
    EXPECT_TRUE(document.Dirty());
    desktop.Boxes.Answers = {Answer::Yes};
    Save(document);
    EXPECT_EQ(folder.Read("big.txt"), "x");
}

TEST_F(RunningShell, OddBytesAndLineEndsSurviveOpenAndSave) {
    const std::string odd("\xff\xfe a\x00z \xc3\xa4 \xe4\r\n\tend", 18);
    editor::frmDocument& document = Open("odd.bin", odd);
    EXPECT_EQ(document.txtText().Text(), odd);
    Save(document);
    EXPECT_EQ(folder.Read("odd.bin"), odd);
    EXPECT_FALSE(document.Dirty());
}

TEST_F(RunningShell, SaveWritesTheTypedTextOrTellsWhyNot) {
    editor::frmDocument& document = Open("a.txt", "old");
    Type(document, "new ");
    EXPECT_TRUE(document.Dirty());
    const auto path = folder.Path() / "a.txt";
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    Save(document);
    EXPECT_EQ(desktop.Boxes.LastText(), "Cannot save file, it is in use by another application");
    EXPECT_EQ(desktop.Boxes.Shown.back().Title, "Save File Error");
    EXPECT_TRUE(document.Dirty());
    EXPECT_EQ(folder.Read("a.txt"), "old");
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    Save(document);
    EXPECT_EQ(folder.Read("a.txt"), "new old");
}

TEST_F(RunningShell, SaveAsOpensASecondWindowAndLeavesTheFirst) {
    editor::frmDocument& first = NewText();
    Type(first, "abc");
    desktop.Boxes.Files = {std::nullopt, folder.Logic("Copy.txt")};
    Save(first);  // an untitled text asks; cancelled
    EXPECT_EQ(state.Documents.Count(), 1u);
    first.RunCommand("mnuFileSaveAs");
    EXPECT_EQ(desktop.Boxes.FileRequests.back().Flags, 2050);
    EXPECT_EQ(folder.Read("Copy.txt"), "abc");
    ASSERT_EQ(state.Documents.Count(), 2u);
    EXPECT_EQ(first.Caption(), "Untitled 1");
    EXPECT_TRUE(first.Dirty());
    EXPECT_EQ(ActiveDocument()->Caption(), UpperLogic("Copy.txt"));
}

TEST_F(RunningShell, ClosingADirtyTextAsks) {
    editor::frmDocument& document = Open("a.txt", "old");
    Type(document, "X");
    desktop.Boxes.Answers = {Answer::Cancel};
    EXPECT_FALSE(document.Unload());
    EXPECT_EQ(desktop.Boxes.LastText(), "Save changes to " + UpperLogic("a.txt") + "?");
    EXPECT_EQ(state.Documents.Count(), 1u);
    desktop.Boxes.Answers = {Answer::Yes};
    EXPECT_TRUE(document.Unload());
    EXPECT_EQ(folder.Read("a.txt"), "Xold");
    EXPECT_EQ(state.Documents.Count(), 0u);

    editor::frmDocument& second = Open("a.txt", "kept");
    Type(second, "Y");
    desktop.Boxes.Answers = {Answer::No};
    EXPECT_TRUE(second.Unload());
    EXPECT_EQ(folder.Read("a.txt"), "kept");

    editor::frmDocument& untitled = NewText();
    Type(untitled, "Z");
    desktop.Boxes.Answers = {Answer::Yes, Answer::Yes};
    desktop.Boxes.Files = {folder.Logic("nowhere/a.txt"), std::nullopt};
    EXPECT_FALSE(untitled.Unload()) << "what can't be written stays";
    EXPECT_EQ(desktop.Boxes.Shown.back().Title, "Save File Error");
    EXPECT_TRUE(untitled.Dirty());
    EXPECT_TRUE(untitled.Unload()) << "a cancelled dialog gives the text up";
}

TEST_F(RunningShell, AWindowWithATakenKeyLeavesTheOthersAlone) {
    editor::frmDocument& first = Open("1.txt", "1");
    editor::frmDocument& second = Open("2.txt", "2");
    first.Unload();
    // The count fell while the second window kept its key.
    Open("3.txt", "3");
    EXPECT_EQ(desktop.Boxes.LastText(),
              "The file " + UpperLogic("3.txt") + " doesn't exist. New File assumed");
    EXPECT_EQ(state.Documents.Count(), 1u);
    EXPECT_TRUE(ActiveDocument()->Unload());
    EXPECT_EQ(state.Documents.All(), std::vector<session::Document*>{&second});
    EXPECT_EQ(folder.Read("3.txt"), "3");
}

TEST_F(RunningShell, RecentFilesKeepSixWithoutDuplicates) {
    for (const char* name : {"1", "2", "3", "4", "5", "6", "7", "4"})
        shell->TheApp().Hall.Editor->UpdateMru(name);
    EXPECT_EQ(state.RecentFiles, (std::array<std::string, 7>{"4", "7", "6", "5", "3", "2", ""}));
    EXPECT_EQ(state.LastPath, "4");  // no backslash: the first character
    editor::frmDocument& open = Open("a.txt", "");
    open.RunCommand("mnuFileMru", 0);
    EXPECT_EQ(desktop.Boxes.LastText(), "File already open in editor. ");
}

TEST_F(ShellFixture, ThePositionIsTheCaretsLineAndTheSelectionsStart) {
    constexpr std::chrono::milliseconds statusInterval{1000};
    Start();
    editor::frmDocument& document = Open("a.txt", "abc\r\ndef\r\n\r\nx");
    shell->SetPanel(1, "Macro recording stopped.");
    const auto expect = [&](const char* position) {
        desktop.Time.Advance(statusInterval);
        EXPECT_EQ(shell->Panel(2), position);
    };
    expect(" Line:1 Col:1 ");
    EXPECT_EQ(shell->Panel(1), "");
    Key(document, Qt::Key_Down);
    Key(document, Qt::Key_Right);
    expect(" Line:2 Col:1 ");  // as the place before it
    Key(document, Qt::Key_Right);
    expect(" Line:2 Col:2 ");
    Key(document, Qt::Key_Right, Qt::ShiftModifier);
    expect(" Line:2 Col:2 ");
    Key(document, Qt::Key_Down, Qt::ShiftModifier);
    expect(" Line:3 Col:-3 ");
    Key(document, Qt::Key_Up, Qt::ShiftModifier);
    Key(document, Qt::Key_Up, Qt::ShiftModifier);
    expect(" Line:1 Col:3 ");
}

// No event of the timers comes between.
TEST_F(RunningShell, WhatIsSelectedOrCopiedCanBeUsedAtOnce) {
    QApplication::clipboard()->clear();
    editor::frmDocument& document = Open("a.txt", "");
    const auto enabled = [&](const char* entry, const char* button) {
        const bool inMenu = document.Menus()->Entry(entry).isEnabled();
        EXPECT_EQ(shell->Main().findChild<QAction*>(button)->isEnabled(), inMenu) << entry;
        return inMenu;
    };
    Type(document, "one two");
    Key(document, Qt::Key_V, Qt::ControlModifier);
    EXPECT_FALSE(enabled("mnuEditCopy", "Copy") || enabled("mnuEditPaste", "Paste"));
    Key(document, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(enabled("mnuEditCopy", "Copy") && enabled("mnuEditCut", "Cut"));
    Key(document, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(document.txtText().Text(), "one ");
    EXPECT_TRUE(enabled("mnuEditPaste", "Paste") && !enabled("mnuEditCut", "Cut"));
    Key(document, Qt::Key_Home);
    Key(document, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(document.txtText().Text(), "twoone ");
    Key(document, Qt::Key_Z, Qt::ControlModifier);
    Key(document, Qt::Key_Z, Qt::ControlModifier);
    Key(document, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(document.txtText().Text(), "");
}

TEST_F(RunningShell, TheFontGoesToTheWholeText) {
    state.EditorFont.ForeColor = 0x123456;
    editor::frmDocument& document = Open("a.txt", "some text");
    EXPECT_EQ(document.txtText().SelFormat().Color, 0) << "the setting's colour is not the text's";
    desktop.Boxes.Fonts = {
        std::nullopt,
        platform::FontChoice{.Name = "DejaVu Sans Mono", .Size = 13.6, .Bold = true, .Color = 255}};
    document.RunCommand("mnuFont");
    EXPECT_FALSE(document.txtText().SelFormat().Bold);
    document.RunCommand("mnuFont");
    EXPECT_EQ(document.txtText().SelLength(), 9);
    EXPECT_EQ(document.txtText().SelFormat(), (platform::CharFormat{.Color = 255, .Bold = true}));
    EXPECT_EQ(document.txtText().SelFontSize(), 14);
    EXPECT_FALSE(document.Dirty());
}

TEST_F(RunningShell, EveryDesignIsColouredOnLoadAndWhileTyping) {
    for (const char* name : {"one.pld", "two.pld"}) {
        editor::frmDocument& document = Open(name, "Name Wrong;\r\nPIN 2 = A;\r\n/* c */\r\n");
        platform::RichTextBox& text = document.txtText();
        const auto colorAt = [&](int offset) {
            text.SetSelStart(offset);
            text.SetSelLength(1);
            return text.SelFormat().Color;
        };
        EXPECT_EQ(colorAt(0), 0xFF0000) << name;
        EXPECT_EQ(colorAt(6), 0) << name;
        EXPECT_EQ(colorAt(13), 0xFF0000) << name;
        EXPECT_EQ(colorAt(27), 0x008000) << name;
        EXPECT_FALSE(document.Dirty());
        Key(document, Qt::Key_End, Qt::ControlModifier);
        Type(document, "NODE x");
        EXPECT_EQ(colorAt(34), 0xFF0000) << name;
        EXPECT_EQ(colorAt(39), 0) << name;
    }
}
