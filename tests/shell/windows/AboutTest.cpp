#include <gtest/gtest.h>

#include <QLabel>

#include "platform/qt/HostFileSystem.h"
#include "shell/frmAbout.h"
#include "shell/frmMain.h"
#include "support/Doubles.h"
#include "support/FormUser.h"

namespace {

const std::string programKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const std::string folderKey = "SOFTWARE\\Microsoft\\Shared Tools Location";
const std::string unavailable = "System Information Is Unavailable At This Time";

class About : public testing::Test, protected doubles::FormUser {
  protected:
    About() { folder.Write("tools/msinfo32.exe", ""); }

    doubles::TemporaryFolder folder;
    platform::qt::HostFileSystem files;
};

TEST_F(About, SystemInfoIsLookedForInTwoPlaces) {
    const std::string tools = folder.Logic("tools");
    using Value = doubles::Registry::Value;
    struct Case {
        std::optional<Value> Program, Folder;
        std::string Result;
        int StartFails = 0;
    };
    const std::string withNul("C:\\B\0", 5);
    for (const Case& c : std::vector<Case>{{{}, {}, unavailable},
                                           {"C:\\A B.EXE", tools, "C:\\A B.EXE"},
                                           {withNul, {}, "C:\\B"},
                                           {std::uint32_t{0xFFFFFF9C}, {}, "-100"},
                                           {"", tools, unavailable},
                                           {std::string(1025, 'x'), tools, tools + "\\MSINFO32.EXE"},
                                           {{}, tools, tools + "\\MSINFO32.EXE"},
                                           {{}, tools + "\\none", unavailable},
                                           {{}, "", unavailable},
                                           {"C:\\A.EXE", tools, unavailable, 53}}) {
        doubles::Desktop desktop(files);
        if (c.Program) desktop.Settings.Keys[programKey]["PATH"] = *c.Program;
        if (c.Folder) desktop.Settings.Keys[folderKey]["MSINFO"] = *c.Folder;
        desktop.Programs.FailWith = c.StartFails;
        shell::frmAbout form(desktop.Host, nullptr);
        Use(form);
        Click("cmdSysInfo");
        EXPECT_EQ(doubles::Joined(desktop.Programs.Started) + desktop.Boxes.TakeTexts(), c.Result + "|");
        EXPECT_TRUE(form.isVisible());
        Click("cmdOK");
        EXPECT_FALSE(form.isVisible());
    }
}

TEST_F(About, ShowsItsCaptionsInWhole) {
    doubles::Desktop desktop(files);
    const auto make = [&] { return std::make_unique<shell::frmAbout>(desktop.Host, nullptr); };
    EXPECT_EQ(doubles::FormFaults(make), "");
    shell::InitPictures();
    const auto form = make();
    Use(*form);
    EXPECT_EQ(form->windowTitle(), "About Korvane");
    EXPECT_EQ(Texts({"lblTitle", "lblVersion", "lblDescription"}),
              "Korvane|Version 5.0.0|Universal Compiler for Programmable Logic.|");
    EXPECT_FALSE(Control<QLabel>("picIcon").pixmap().toImage().allGray());
}

}  // namespace
