#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <algorithm>

#include "aids/frmMacroCreate.h"
#include "aids/frmMacroDef.h"
#include "aids/frmMacroRef.h"
#include "aids/windows/MacroBox.h"
#include "platform/qt/HostFileSystem.h"
#include "support/FormUser.h"
#include "support/Rooms.h"

namespace {

struct MacroWindows : testing::Test, doubles::Bench<platform::qt::HostFileSystem>, doubles::FormUser {
    MacroWindows() {
        State.InstallRoot = Folder.Logic();
        State.EditorFont.Name = "Monospace";
        Desk.Clip.Content = "before";
        Folder.Write("MACRO/ONE.MAC",
                     "$MACRO AND y a b\r\n  y = a & b ;\r\n$MEND\r\n$MACRO N y\r\n$MEND\r\n");
    }
    template <class Window, class... Values>
    void Open(const Values&... values) {
        Window_ = std::make_unique<Window>(App, values...);
        Use(*Window_);
    }
    aids::MacroBox& Box(const char* name) { return Control<aids::MacroBox>(name); }
    void ClickBox(int line) {
        auto& box = Box("txtMacros");
        const auto start =
            static_cast<unsigned long>(box.SendScintilla(QsciScintillaBase::SCI_POSITIONFROMLINE, line));
        const QPoint at(
            static_cast<int>(box.SendScintilla(QsciScintillaBase::SCI_POINTXFROMPOSITION, 0UL, start + 1)),
            static_cast<int>(box.SendScintilla(QsciScintillaBase::SCI_POINTYFROMPOSITION, 0UL, start)) + 4);
        QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, at);
    }

    doubles::TemporaryFolder Folder;
    std::unique_ptr<platform::qt::Form> Window_;
};

}  // namespace

TEST_F(MacroWindows, DefinitionsAreGatheredLineByLine) {
    Open<aids::frmMacroDef>();
    EXPECT_EQ(Desk.Clip.Content, "");
    EXPECT_EQ(Text("cmbFiles") + Text("lstMacros"), "ONE*AND|N|");
    EXPECT_EQ(Box("txtDefinition").Text(), "y a b\r\ny = a & b ;\r\n");
    Box("txtDefinition").SetSelLength(1);
    EXPECT_TRUE(Box("txtDefinition").SelFormat().Bold);
    EXPECT_FALSE(Control<QPushButton>("Add").isEnabled() || Control<QPushButton>("Remove").isEnabled());
    ClickEach({"optInsertMacro", "Add"});
    Click("Add");                     // once is enough
    ClickLine("lstMacros", 1, true);  // its name stands in $MEND
    const std::string all = "$MACRO AND y a b\r\ny = a & b ;\r\n$MEND\r\n \r\n";
    EXPECT_EQ(Box("txtMacros").Text(), all);
    ClickBox(1);
    EXPECT_EQ(Box("txtMacros").SelText(), "y = a & b ;\r\n");
    Click("Remove");
    EXPECT_EQ(Desk.Clip.Content, "");  // the test's own clipboard is another one
    EXPECT_FALSE(Control<QPushButton>("Remove").isEnabled());
    Click("OK");
    EXPECT_EQ(Desk.Clip.Content, "$MACRO AND y a b\r\n$MEND\r\n \r\n\r\n");
    Open<aids::frmMacroDef>();
    Click("OK");
    EXPECT_EQ(Desk.Clip.Content, "$INCLUDE ONE.MAC\r\n");
}

TEST_F(MacroWindows, WithoutALibraryOnlyCancelIsLeft) {
    std::filesystem::remove(Folder.Path() / "MACRO/ONE.MAC");
    for (const char* text :
         {"No macro files found in ", "The Macro directory could not be found, unable to load"}) {
        Open<aids::frmMacroDef>();
        EXPECT_EQ(Desk.Boxes.LastText().find(text), 0u);
        for (const char* name : {"cmbFiles", "lstMacros", "Add", "New", "optInsertMacro", "OK"})
            EXPECT_FALSE(Control<>(name).isEnabled()) << name;
        Click("Cancel");
        EXPECT_TRUE(Window_->Cancelled);
        std::filesystem::remove(Folder.Path() / "MACRO");
    }
}

TEST_F(MacroWindows, ANewMacroIsAskedForAndAppended) {
    State.HighlightEnabled = true;
    Open<aids::frmMacroDef>();
    Desk.Boxes.Inputs = {"INV", "two", "x", "&H2", "y", ""};
    Click("New");  // given up at the second argument
    EXPECT_EQ(Desk.Boxes.Shown.size(), 2u);
    EXPECT_EQ(Desk.Boxes.LastText(), "The number of arguments must be numeric.");
    Desk.Boxes.Inputs = {"INV", "1.4", "y", "a.b", "..\\c", "TWO"};
    Drive([&] { Click("New"); }, {{"frmMacroCreate", "OK", [&] {
                                       EXPECT_EQ(Text("cmbFiles"), "New Macro File");
                                       Type("y = 1;");
                                       EXPECT_EQ(Box("txtMacro").SendMessage(platform::EM_LINEFROMCHAR, -1),
                                                 1);
                                       Click("OK");
                                   }}});
    const std::string first = " \r\n$MACRO INV y\r\ny = 1;\r\n\r\n\r\n$MEND\r\n";
    EXPECT_EQ(Folder.Read("MACRO/TWO.MAC"), first);
    Open<aids::frmMacroCreate>(std::string("$MACRO B\r\n$MEND"));
    auto& files = Control<QComboBox>("cmbFiles");
    files.setCurrentIndex(files.findText("TWO"));
    Click("OK");
    EXPECT_EQ(Folder.Read("MACRO/TWO.MAC"), first + " \r\n$MACRO B\r\n$MEND\r\n");
}

TEST_F(MacroWindows, AReferenceTakesItsArguments) {
    Folder.Write("INC.MAC", "$MACRO INC a\r\n$MEND\r\n");
    const aids::frmMacroRef::Design design = {"$INCLUDE INC.MAC\r\n$MACRO OWN x y\r\nx = y;\r\n$MEND\r\n",
                                              "A.PLD", Folder.Logic() + "\\"};
    Open<aids::frmMacroRef>(design, std::vector<std::string>{"CLK", "NC"});
    auto& macros = Control<QComboBox>("cmbMacros");
    EXPECT_EQ(macros.count(), 2);
    EXPECT_EQ(macros.currentIndex(), -1);
    TabTo("cmbMacros");
    Key(Qt::Key_End);
    EXPECT_EQ(Box("txtDefinition").Text(), "x y\r\nx = y;\r\n");
    ClickLine("lstArgs", 0);
    EXPECT_EQ(Text("cmbSymbols"), "NC");
    Click("cmbSymbols");
    Control<QComboBox>("cmbSymbols").lineEdit()->setFocus();
    Key(Qt::Key_A, Qt::ControlModifier);
    Type("Q1");
    EXPECT_EQ(Text("lstArgs"), "*x:Q1|y:NC|");
    Click("OK");
    EXPECT_EQ(Desk.Clip.Content, "OWN Q1 NC;\r\n");
    Open<aids::frmMacroRef>(aids::frmMacroRef::Design{"", "B.PLD", ""}, std::vector<std::string>{});
    EXPECT_EQ(Desk.Boxes.LastText().find("The source file B.PLD contains no macro definitions.  Tesk"), 0u);
    Click("OK");
    EXPECT_EQ(Desk.Clip.Content, "");
}

TEST_F(MacroWindows, ShowTheirCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<aids::frmMacroDef>(App), "");
    const aids::frmMacroRef::Design design{"", "B.PLD", "$MACRO OWN a\r\n$MEND\r\n"};
    EXPECT_EQ(doubles::FormFaults<aids::frmMacroRef>(App, design, std::vector<std::string>{"Q1"}), "");
    EXPECT_EQ(doubles::FormFaults<aids::frmMacroCreate>(App, "$MACRO\r\n$MEND"), "");
}
