#include <gtest/gtest.h>

#include <QLineEdit>
#include <QRadioButton>
#include <array>
#include <memory>

#include "support/FormUser.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"
#include "toolchain/frmSimulator.h"
#include "toolchain/frmVhdl.h"

namespace {

using doubles::ErrorOf;

std::string Rewritten(const std::string& flags) {
    toolchain::VhdlOptions options;
    toolchain::ParseVhdlFlags(flags, options);
    return toolchain::WriteVhdlFlags(options);
}

TEST(VhdlOptions, ParserAndWriter) {
    const std::pair<const char*, const char*> cases[] = {
        {"-x2-v1-g-z5-s3-p4-r-c-j-h-a", "-a-h-j-c-r-p4-s3-z5-g-v1-x2"},
        {"ah?Jq \xC3\xA9", "-a-h-p16-s8-z0-x1"},
        {"-p123-s4 -a", "-a-p12-s4-z0-x1"},  // the third digit is lost
        {"-p7", "-p7-s8-z0-x1"},             // one digit at the very end
        {"-p-5-s 6", "-p-5-s6-z0-x1"},       // what is typed is not restrained
        {"-va-v", "-p16-s8-z0-v1-x1"},       // whatever stands behind "v" is stepped over
        {"-z35-x9a", "-a-p16-s8-z3-x9"},     // one digit
    };
    for (const auto& [flags, written] : cases) EXPECT_EQ(Rewritten(flags), written) << flags;
    for (const char* flags : {"-p", "-p8a", "-pa", "-s-", "-z", "-z-1", "-xa"})
        EXPECT_EQ(ErrorOf([&] { Rewritten(flags); }), 13) << flags;
}

TEST(VhdlOptions, Arrows) {
    using enum toolchain::VhdlKind;
    const struct {
        toolchain::VhdlKind Kind;
        std::string Typed;
        const char* Steps;
        const char* Shown;
    } cases[] = {
        {Number, "3", "--", "2 2 "},
        {Number, "1", "-", "1 "},
        {Number, "-4", "-+", "-4 -3 "},
        {Number, "32767", "+-", "32768 32767 "},
        {Level, "0", "+++---", "3 5 5 3 0 0 "},
        {Level, "4", "+-", "4 4 "},
    };
    for (const auto& c : cases) {
        std::string text = c.Typed;
        std::string shown;
        for (const char* step = c.Steps; *step != '\0'; ++step) {
            text = toolchain::StepVhdlNumber(c.Kind, text, *step == '+' ? 1 : -1);
            shown += text + " ";
        }
        EXPECT_EQ(shown, c.Shown) << c.Typed;
    }
    for (const auto kind : {Number, Level})
        EXPECT_EQ(ErrorOf([&] { toolchain::StepVhdlNumber(kind, "x", 1); }), 13);
}

struct OptionWindow : testing::Test, doubles::Bench<doubles::MemoryFiles>, doubles::FormUser {
    void OpenSimulator(const std::string& flags) {
        State.SimulatorFlags = flags;
        Window = std::make_unique<toolchain::frmSimulator>(App);
        Use(*Window);
    }
    void OpenVhdl(const std::string& flags) {
        State.VhdlFlags = flags;
        Window = std::make_unique<toolchain::frmVhdl>(App, Options);
        Use(*Window);
    }
    void TypeInto(const std::string& name, const std::string& text) {
        Control<QLineEdit>(name).setFocus();
        Key(Qt::Key_A, Qt::ControlModifier);
        Type(text);
    }

    toolchain::VhdlOptions Options;
    std::unique_ptr<QWidget> Window;
};

TEST_F(OptionWindow, SimulatorShowsAndWritesItsLetters) {
    const std::array<const char*, 3> cases[] = {
        // flags, click, written
        {"l", "chkAppend", "lj"},
        {"djl", "chkListing", "jd"},
        {"x-Ljj", "chkDisplay", "jd"},
        {"d", "chkDisplay", ""},
    };
    for (const auto& [flags, click, written] : cases) {
        OpenSimulator(flags);
        Click(click);
        Key(Qt::Key_Return);
        EXPECT_EQ(State.SimulatorFlags, written) << flags;
    }
    OpenSimulator("jx");
    EXPECT_EQ(TabOrder(), "chkListing chkAppend chkDisplay OK Cancel ");
    Click("chkListing");
    Key(Qt::Key_Escape);
    EXPECT_EQ(State.SimulatorFlags, "jx");
}

TEST_F(OptionWindow, VhdlDefaultChangeReopen) {
    OpenVhdl("-a");
    EXPECT_EQ(TabOrder(),
              "SSTab1 chkAnalyze chkPinnodes chkSync chkClock chkForce UpDownProduct UpDownAnd "
              "UpDownOptimization OK Cancel Apply ");
    EXPECT_EQ(Texts({"txtProduct", "txtAnd", "txtOptimize"}), "16|8|0|");
    EXPECT_TRUE(Control<QRadioButton>("optSuccess").isChecked());
    Key(Qt::Key_Return);
    EXPECT_EQ(State.VhdlFlags, "-a-p16-s8-z0-x1");

    OpenVhdl(State.VhdlFlags);
    ClickEach({"chkAnalyze", "chkForce"});
    TypeInto("txtProduct", "128");
    ClickTab("SSTab1", "Debug");
    ClickEach({"chkDisplay", "OptAlways", "OK"});
    EXPECT_EQ(State.VhdlFlags, "-r-p128-s8-z0-v1-x2");
    OpenVhdl(State.VhdlFlags);
    EXPECT_EQ(Text("txtProduct"), "12");

    // A box that was on stays so in this run of the program; a number does not.
    OpenVhdl("-x7");
    EXPECT_EQ(Text("txtProduct"), "16");
    Click("OK");
    EXPECT_EQ(State.VhdlFlags, "-r-p16-s8-z0-v1-x0");  // no button was on
}

TEST_F(OptionWindow, VhdlAppliesTheShowingTabAlone) {
    OpenVhdl("-a");
    TypeInto("txtAnd", "many");  // does not hinder the other tab
    Click("chkPinnodes");
    ClickTab("SSTab1", "Debug");
    ClickEach({"chkCreate", "optNever", "Apply"});
    EXPECT_EQ(State.VhdlFlags, "-a-p16-s8-z0-g-x0");
    Click("chkCreate");
    const auto ok = [&] { static_cast<toolchain::frmVhdl&>(*Window).OK_Click(); };
    EXPECT_EQ(ErrorOf(ok), 13);
    EXPECT_EQ(State.VhdlFlags, "-a-p16-s8-z0-g-x0");
    EXPECT_TRUE(Window->isVisible());
    Type("11");  // the field at fault is shown and marked
    ASSERT_EQ(Text("SSTab1"), "Synthesis");
    Click("Apply");
    EXPECT_EQ(State.VhdlFlags, "-a-h-p16-s11-z0-g-x0");
    Key(Qt::Key_Escape);
    EXPECT_EQ(State.VhdlFlags, "-a-h-p16-s11-z0-g-x0");
}

TEST_F(OptionWindow, ShowTheirCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<toolchain::frmSimulator>(App), "");
    EXPECT_EQ(doubles::FormFaults<toolchain::frmVhdl>(App, Options), "");
}

}  // namespace
