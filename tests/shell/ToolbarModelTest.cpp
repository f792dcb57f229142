#include "shell/ToolbarModel.h"

#include <gtest/gtest.h>

#include "support/Rooms.h"

namespace {

using shell::ActiveChild;

using shell::ChildKind;

struct Toolbar : testing::Test {
    shell::ToolbarState Bar;
    session::Session State;
    doubles::Document Doc;
    const ActiveChild Design{ChildKind::Document, "C:\\WORK\\COUNT8.PLD", 0};

    Toolbar() {
        const char* names[] = {"Calculator", "Explorer", "DOS",       "Stavrik",
                               "Schematic",  "Wavrik",   "Programmer"};
        for (std::size_t i = 0; i < 7; ++i) State.StdUtils[i].Name = names[i];
    }
    void UseAllTools() {
        for (auto& tool : State.StdUtils) tool.Menu = tool.Toolbar = true;
        for (std::size_t i = 0; i < 6; ++i) {
            State.CustUtils[i] = {i % 2 == 0 ? "C:\\X.EXE" : "MACRO1", "My" + std::to_string(i), true, true};
        }
    }
    // A letter for each of the buttons 1 to 30: "-" hidden, "|" a separator, "e" enabled, "d" disabled.
    std::string Picture() const {
        std::string picture;
        for (std::size_t i = 0; i < Bar.Buttons.size(); ++i) {
            const char shown = Bar.Buttons[i].Enabled ? 'e' : 'd';
            const bool isLine = *shell::ToolbarTable()[i].Key == '\0';
            picture += !Bar.Buttons[i].Visible ? '-' : isLine ? '|' : shown;
        }
        return picture;
    }
};

TEST_F(Toolbar, ThirteenToolsFillItExactly) {
    UseAllTools();
    shell::SetTBMenu(Bar, Doc, State);
    EXPECT_EQ(Bar.tbLastButton, 28);
    EXPECT_EQ(Bar.Button(16).Image, 12);
    EXPECT_EQ(Bar.Button(22).Image, 18);
    EXPECT_EQ(Bar.Button(23).Image, 19);
    EXPECT_EQ(Bar.Button(28).Image, 20);
    EXPECT_EQ(Bar.Button(28).Tip, "My5");
    EXPECT_EQ(Doc.Tools.Places[13].Caption, "My5");
    EXPECT_TRUE(Doc.Tools.HasMacro && Doc.Tools.HasTools);
    EXPECT_EQ(Picture(), "eee|e|eee|eeee|eeeeeeeeeeeee|e");

    for (auto& tool : State.StdUtils) tool = {"", tool.Name, false, false};
    for (auto& tool : State.CustUtils) tool.Program.clear();
    State.StdUtils[3].Toolbar = true;
    shell::SetTBMenu(Bar, Doc, State);
    EXPECT_EQ(Bar.tbLastButton, 16);
    EXPECT_EQ(Bar.Button(16).Tip, "Stavrik");
    EXPECT_EQ(Bar.Button(16).Image, 15);
    EXPECT_EQ(Picture(), "eee|e|eee|eeee|e------------|e");
    EXPECT_FALSE(Doc.Tools.Places[11].IsVisible || Doc.Tools.HasMacro);
    EXPECT_TRUE(Doc.Tools.Places[12].IsVisible);  // only eleven rows are cleared
    EXPECT_FALSE(Doc.Tools.HasTools);
}

TEST_F(Toolbar, TimerFollowsTheActiveChild) {
    const ActiveChild none, project{ChildKind::Closable, "", 0}, messages{ChildKind::Other, "Messages", 0};
    auto effects = shell::TBMenuTimer(Bar, none, true, false);
    EXPECT_EQ(Picture(), "eed|d|ddd|dddd|-------------|e");
    EXPECT_EQ(effects.mnuClose, false);
    EXPECT_FALSE(effects.mnuFilePrint.has_value());
    EXPECT_TRUE(effects.ClearPanel1);

    // Before the first document: the project alone.
    effects = shell::TBMenuTimer(Bar, project, true, false);
    EXPECT_EQ(Bar.tbLastButton, 9);
    EXPECT_EQ(Picture(), "eed|d|ddd|----|-------------|e");
    EXPECT_EQ(effects.mnuClose, true);
    EXPECT_EQ(effects.mnuFilePrint, false);
    EXPECT_FALSE(effects.ClearPanel1);

    State.StdUtils[0].Toolbar = State.StdUtils[1].Toolbar = true;
    shell::SetTBMenu(Bar, Doc, State);
    effects = shell::TBMenuTimer(Bar, Design, false, true);
    EXPECT_EQ(Picture(), "eee|e|ddd|eeee|ee-----------|e");
    EXPECT_EQ(effects.mnuEditCut, false);
    EXPECT_EQ(effects.mnuEditPaste, false);

    effects = shell::TBMenuTimer(Bar, {ChildKind::Document, "Untitled 1", 3}, true, true);
    EXPECT_EQ(Picture(), "eee|e|eee|dddd|ee-----------|e");
    EXPECT_TRUE(*effects.mnuEditCut && *effects.mnuEditCopy && *effects.mnuEditPaste &&
                *effects.mnuFilePrint);

    effects = shell::TBMenuTimer(Bar, messages, true, true);  // a document is left
    EXPECT_EQ(Picture(), "eed|d|ddd|dddd|dd-----------|e");
    EXPECT_EQ(effects.mnuClose, false);
    shell::TBMenuTimer(Bar, project, true, false);  // the last one is closed
    EXPECT_EQ(Picture(), "eed|d|ddd|----|-------------|e");
    shell::TBMenuTimer(Bar, Design, true, true);
    EXPECT_EQ(Picture(), "eee|e|dde|eeee|ee-----------|e");
}

TEST_F(Toolbar, CompileButtonsGoByTheWholeCaption) {
    const std::pair<const char*, bool> cases[] = {
        {"C:\\READ.ME", false}, {"C:\\X.PLD\\READ.ME", true}, {"c:\\a.pld", false}, {"A.PLDX", true}};
    for (const auto& [caption, enabled] : cases) {
        shell::TBMenuTimer(Bar, {ChildKind::Document, caption, 0}, false, true);
        EXPECT_EQ(Bar.Button(11).Enabled, enabled) << caption;
        EXPECT_EQ(Bar.Button(14).Enabled, enabled) << caption;
    }
}

TEST_F(Toolbar, ClicksGoByKey) {
    using enum shell::ClickKind;
    EXPECT_EQ(shell::ClickOf("Save", "C:\\A.PLD"), ChildCommand);
    EXPECT_EQ(shell::ClickOf("Save", "MESSAGES"), Nothing);
    EXPECT_EQ(shell::ClickOf("Print", "Messages"), ChildCommand);
    EXPECT_EQ(shell::ClickOf("Util3", ""), Tool);
    EXPECT_EQ(shell::ClickOf("Util12", ""), Tool);
    EXPECT_EQ(shell::ClickOf("Util13", ""), Nothing);
    EXPECT_EQ(shell::ClickOf("Util14", ""), Nothing);
}

TEST_F(Toolbar, ToolsAreFoundByTheTip) {
    using enum shell::CustomAction;
    State.CustUtils = {{{"C:\\A.EXE", "DOS"},
                        {"C:\\B.EXE", "Twin"},
                        {"MACRO*", "Twin"},
                        {"MACRO*", "New"},
                        {"MACRO2", "Old"},
                        {"MACRO3", "Old"}}};
    struct Case {
        const char* Tip;
        bool DocumentActive;
        int Standard, Custom;
        shell::CustomAction Action;
        int Macro;
    };
    const Case cases[] = {
        {"DOS", true, 2, 0, StartProgram, -1},  // both run
        {"dos", true, -1, -1, None, -1},          {"Wavrik", false, 5, -1, None, -1},
        {"Twin", true, -1, 1, StartProgram, 2},  // a right click goes to the one that is a macro
        {"New", false, -1, 3, UndefinedMacro, 3}, {"Old", true, -1, 4, RunMacro, 4},
        {"Old", false, -1, 4, None, 4},
    };
    for (const Case& c : cases) {
        const shell::ToolChoice choice = shell::ChooseTool(State, c.Tip, c.DocumentActive);
        EXPECT_EQ(choice.Standard.value_or(-1), c.Standard) << c.Tip;
        EXPECT_EQ(choice.Custom.value_or(-1), c.Custom) << c.Tip;
        EXPECT_EQ(choice.Action, c.Action) << c.Tip;
        EXPECT_EQ(shell::MacroOfTip(State, c.Tip).value_or(-1), c.Macro) << c.Tip;
    }
}

}  // namespace
