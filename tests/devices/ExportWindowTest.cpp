#include <gtest/gtest.h>

#include <memory>

#include "devices/frmExport.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "toolchain/CompilerOptions.h"

namespace devices {
namespace {

struct ExportWindow : testing::Test, doubles::FormUser {
    std::unique_ptr<frmExport> Make() {
        return std::make_unique<frmExport>(toolchain::OutputFrames(), Boxes, nullptr);
    }
    doubles::Dialogs Boxes;
};

TEST_F(ExportWindow, TheTokensOfWhatIsCheckedInTheirOrder) {
    using enum platform::Answer;
    struct Case {
        std::vector<std::string> Clicks;
        platform::Answer Answer;
        const char* Flags;
    };
    const std::vector<Case> cases{
        {{"OK"}, Yes, ""},
        {{"chkEdif", "OK"}, No, ""},
        {{"chkEdif", "Cancel"}, Yes, ""},
        {{"chkQdif", "chkXnf", "chkEdif", "chkPalasm", "chkPla", "chkPdif", "chkExpanded", "chkList",
          "chkAbsolute", "chkEquations", "chkFuse", "chkAscii", "chkHl", "chkJedec", "OK"},
         Yes,
         "jhifxalepbctzxzq"},
    };
    for (const Case& c : cases) {
        Boxes.Answers = {c.Answer};
        const auto form = Make();
        Use(*form);
        for (const std::string& control : c.Clicks) Click(control);
        EXPECT_EQ(form->CompilerFlags, c.Flags);
        EXPECT_EQ(form->Cancelled, c.Answer == No || c.Clicks.back() == "Cancel");
    }
    EXPECT_EQ(Boxes.Shown.size(), 3u) << "Cancel asks nothing";
    EXPECT_EQ(doubles::FormFaults([this] { return Make(); }), "");
}

}  // namespace
}  // namespace devices
