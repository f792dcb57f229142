#include <gtest/gtest.h>

#include <memory>

#include "editor/frmFindText.h"
#include "editor/frmReplace.h"
#include "support/FormUser.h"

namespace {

struct SearchWindows : testing::Test, doubles::FormUser {
    template <class T>
    void Open() {
        Window = std::make_unique<T>(Values);
        Use(*Window);
    }
    std::string Codes() const {
        return std::to_string(Values.SearchOptions) + std::to_string(Values.SearchDirection) +
               std::to_string(Values.SearchScope) + std::to_string(Values.SearchOrigin);
    }

    editor::SearchValues Values;
    std::unique_ptr<platform::qt::Form> Window;
};

}  // namespace

TEST_F(SearchWindows, FindTextTakesTheOptions) {
    Open<editor::frmFindText>();
    EXPECT_EQ(Window->windowTitle(), "Find Text");
    EXPECT_EQ(TabOrder(), "Combo1 chkCase chkWhole chkRegular optForward optGlobal optCursor OK Cancel ");
    Type("PIN 1");
    Key(Qt::Key_Return);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FALSE(Window->Cancelled);
    EXPECT_EQ(Values.SearchText, "PIN 1");
    EXPECT_EQ(Codes(), "0001");

    const std::pair<const char*, const char*> options[] = {{"chkCase", "4001"},     {"chkWhole", "2001"},
                                                           {"chkRegular", "0001"},  {"optBackward", "0101"},
                                                           {"optSelected", "0011"}, {"optScope", "0000"}};
    for (const auto& [control, codes] : options) {
        Open<editor::frmFindText>();
        EXPECT_EQ(Text("Combo1"), "");
        Click(control);
        Click("OK");
        EXPECT_EQ(Codes(), codes) << control;
    }
}

TEST_F(SearchWindows, FindTextKeepsElevenTextsAndNoneAfterCancel) {
    for (char text = 'a'; text <= 'l'; ++text) {
        Open<editor::frmFindText>();
        Type({text});
        Click("OK");
    }
    for (const bool byKey : {true, false}) {
        Open<editor::frmFindText>();
        Type("lost");
        byKey ? Key(Qt::Key_Escape) : Click("Cancel");
        EXPECT_TRUE(Window->Cancelled);
        EXPECT_FALSE(Window->isVisible());
    }
    std::string kept;
    for (const std::string& text : Values.SearchHistory) kept += text;
    EXPECT_EQ(kept, "lkjihgfedcb");
    EXPECT_EQ(Values.SearchText, "l");
}

TEST_F(SearchWindows, ReplaceKeepsItsFlags) {
    Open<editor::frmReplace>();
    EXPECT_EQ(Window->windowTitle(), "Replace Text");
    Type("A");
    TabTo("Combo2");
    Type("B");
    Window->close();  // by its cross: as if it had not been opened
    EXPECT_FALSE(Window->Cancelled || Values.ReplaceCancelled);
    EXPECT_EQ(Values.SearchText, "");

    Open<editor::frmReplace>();
    Type("A");
    TabTo("Combo2");
    Type("B");
    ClickEach({"chkCase", "chkWhole", "chkPrompt", "OK"});
    EXPECT_EQ(Values.SearchText + Values.ReplaceText + Codes(), "AB6001");
    EXPECT_TRUE(Values.PromptOnReplace && !Values.ReplaceChangeAll);

    Open<editor::frmReplace>();
    Type("C");
    Click("ChangeAll");
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Values.SearchText + Values.ReplaceText + Codes(), "C0001");
    EXPECT_TRUE(Values.PromptOnReplace && Values.ReplaceChangeAll);

    Open<editor::frmReplace>();
    Click("Cancel");
    EXPECT_TRUE(Window->isVisible() && Window->Cancelled);
    Window->close();
    EXPECT_FALSE(Window->isVisible());
    Open<editor::frmReplace>();
    EXPECT_TRUE(Window->Cancelled && Values.ReplaceCancelled && Values.ReplaceChangeAll);
    EXPECT_EQ(Values.SearchText, "C");
}

TEST_F(SearchWindows, ShowTheirCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<editor::frmFindText>(Values), "");
    EXPECT_EQ(doubles::FormFaults<editor::frmReplace>(Values), "");
}
