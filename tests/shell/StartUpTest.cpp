#include <gtest/gtest.h>

#include "platform/qt/HostFileSystem.h"
#include "shell/StartUp.h"
#include "support/Doubles.h"

namespace {

// An installation in a temporary folder, and the order in which the windows of the start were asked for.
class StartUpTest : public testing::Test, public shell::StartUpWindows {
  protected:
    StartUpTest() {
        for (const char* folder : {"Korvane/ZrxPart/", "Korvane/Utility/", "Shared/", "Examples/"}) {
            std::filesystem::create_directories(folder_.Path() / folder);
        }
        folder_.Write("Shared/Fullset.dl", "devices");
        folder_.Write("Korvane/TeskErr.txt", "0001ta message\r\nError. what\r\ninfo\r\n");
        desktop_.Desk.Program = folder_.Logic("Korvane/Korvane");
        desktop_.Desk.Windows = "C:\\Windows";
    }
    void ShowSplash() override { order += "splash "; }
    void LoadMain() override { order += "load "; }
    void UnloadSplash() override { order += "unsplash "; }
    void ShowMain() override { order += "show"; }

    bool Run() { return shell::Main(state_, desktop_.Host, errors_, *this); }

    std::string order;
    doubles::TemporaryFolder folder_;
    platform::qt::HostFileSystem files_;
    doubles::Desktop desktop_{files_};
    session::Session state_;
    toolchain::ErrorCodes errors_;
};

}  // namespace

TEST_F(StartUpTest, GoesThroughItsStepsInOrder) {
    state_.LastPath = "kept";
    ASSERT_TRUE(Run());
    EXPECT_EQ(order, "splash load unsplash show");
    EXPECT_TRUE(desktop_.Boxes.Shown.empty()) << desktop_.Boxes.LastText();
    EXPECT_EQ(state_.InstallRoot, folder_.Logic());
    EXPECT_EQ(state_.SharedDir, folder_.Logic() + "\\Shared\\");
    EXPECT_EQ(state_.HelpFile, folder_.Logic("Korvane/Korvane.HLP"));
    EXPECT_EQ(state_.ZrxDir, folder_.Logic() + "\\Korvane\\ZrxPart\\");
    EXPECT_EQ(state_.NettrelDir, folder_.Logic() + "\\Nettrel\\");
    EXPECT_EQ(state_.CompilerFlags, "jasxlm4");
    EXPECT_EQ(state_.DeviceName, "&");
    EXPECT_EQ(state_.StdUtils[2].Program, "C:\\Windows\\system32\\command.com");
    EXPECT_EQ(state_.StdUtils[6].Program, folder_.Logic() + "\\Programmer\\");
    EXPECT_EQ(state_.NoHighlightKeys.size(), 26u);
    EXPECT_EQ(errors_.ErrorCount, 1);
    EXPECT_EQ(folder_.Read("Shared/tesk.dl"), "devices");
    EXPECT_EQ(std::get<std::string>(desktop_.Settings.Keys[shell::settingsKey]["LastPathway"]),
              state_.ExamplesDir);
    EXPECT_EQ(desktop_.Settings.Classes[shell::settingsKey], "Korvane");
}

TEST_F(StartUpTest, ASecondInstanceTouchesNothing) {
    desktop_.Desk.Earlier = true;
    EXPECT_FALSE(Run());
    EXPECT_EQ(desktop_.Desk.Activated, std::vector<std::string>{"Korvane"});
    EXPECT_TRUE(desktop_.Settings.Keys.empty());
    EXPECT_FALSE(folder_.Exists("Shared/tesk.dl"));
    EXPECT_EQ(order, "");
}

TEST_F(StartUpTest, MissingFoldersAreToldOrEmptied) {
    std::filesystem::remove_all(folder_.Path() / "Korvane/ZrxPart");
    std::filesystem::remove_all(folder_.Path() / "Korvane/Utility");
    desktop_.Settings.CanCreate = false;
    ASSERT_TRUE(Run());
    EXPECT_EQ(state_.ZrxDir, "");
    EXPECT_EQ(state_.UtilityDir, "");
    ASSERT_EQ(desktop_.Boxes.Shown.size(), 1u);
    EXPECT_EQ(desktop_.Boxes.LastText(), "Unable to create registration database entries for Korvane!");
}

TEST_F(StartUpTest, WithoutSharedTheDeviceLibraryEndsTheProgram) {
    std::filesystem::remove_all(folder_.Path() / "Shared");
    EXPECT_FALSE(Run());
    ASSERT_EQ(desktop_.Boxes.Shown.size(), 2u);
    EXPECT_EQ(desktop_.Boxes.Shown[0].Text,
              "The Korvane directory structure has been corrupted.  Please reinstall Korvane");
    EXPECT_EQ(desktop_.Boxes.Shown[1].Text, "Unable to install device library file, Fullset.dl.");
    EXPECT_EQ(desktop_.Boxes.Shown[1].Title, "Initialization Error - Application Ending");
    EXPECT_EQ(desktop_.Boxes.Shown[1].Picture, platform::Icon::Stop);
    EXPECT_EQ(order, "splash ");
}

TEST_F(StartUpTest, TheDeviceLibraryIsCopiedWhenSizeOrDateDiffer) {
    ASSERT_TRUE(Run());
    const auto target = folder_.Path() / "Shared/tesk.dl";
    const auto date = std::filesystem::last_write_time(folder_.Path() / "Shared/Fullset.dl");
    EXPECT_EQ(std::filesystem::last_write_time(target), date);
    folder_.Write("Shared/tesk.dl", "DEVICES");  // same length
    std::filesystem::last_write_time(target, date);
    ASSERT_TRUE(shell::InstallDeviceLibrary(state_, desktop_.Host));
    EXPECT_EQ(folder_.Read("Shared/tesk.dl"), "DEVICES");
    std::filesystem::last_write_time(target, date - std::chrono::seconds(2));
    ASSERT_TRUE(shell::InstallDeviceLibrary(state_, desktop_.Host));
    EXPECT_EQ(folder_.Read("Shared/tesk.dl"), "devices");
}

TEST(InstallRoot, IsCutByTheLengthOfTheExecutablesName) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\Opt\\Korvane\\Korvane", "C:\\Opt"},
        {"C:\\Opt\\Korvane\\Korvane.EXE", "C:\\Opt"},
        {"C:\\Opt\\bin\\Korvane", "C:"},  // a shorter folder cuts into the next one
        {"C:\\Opt\\KorvaneBeta\\Korvane", "C:\\Opt\\Kor"}};
    for (const auto& [program, root] : cases) {
        session::Session state;
        shell::ComputeInstallRoot(state, program);
        EXPECT_EQ(state.InstallRoot, root) << program;
    }
}
