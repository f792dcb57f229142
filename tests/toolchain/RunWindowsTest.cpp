// Whole runs: the driver, its windows and a tool library in the tool host.
#include <gtest/gtest.h>

#include <QListView>
#include <QTimer>

#include "platform/qt/HostFileSystem.h"
#include "platform/qt/ToolHost.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "support/Rooms.h"
#include "toolchain/Compiler.h"
#include "toolchain/windows/StatusWindows.h"

namespace toolchain {
namespace {

class WholeRun : public testing::Test, protected doubles::FormUser {
  protected:
    WholeRun() {
        for (const char* name : {"teskx", "teska", "teskb", "teskm", "teskc", "vorna", "vsima", "teskk"}) {
            std::filesystem::copy_file(BADLIB, Folder.Path() / (std::string(name) + ".dll"));
        }
        State.SharedDir = State.ProgramDir = Folder.Logic("");
        State.SharedDir += "\\";
        State.LibraryName = State.DeviceCatalog = "x";
        State.sProject = Folder.Logic("DESIGN");
        Folder.Write("DESIGN.PLD", "source");
        Folder.Write("DESIGN.LST", "stale");
        Window.resize(300, 100);
    }
    // Compiles under these options; what the acknowledged window showed as "status|info|warnings|errors".
    std::string Compile(const std::string& options) {
        State.CompilerFlags = options;
        std::string seen;
        Drive([this] { Driver.IndepCompile(); },
              {{"frmStatus", "OK", [&] {
                    seen = Texts({"lblStatus", "lblInfo", "lblWarnings", "lblErrors"});
                    Click("OK");
                }}});
        EXPECT_FALSE(Libraries.IsRunning());
        return seen;
    }

    doubles::TemporaryFolder Folder;
    platform::qt::HostFileSystem Files;
    doubles::Desktop Parts{Files};
    platform::qt::ToolHost Libraries{Parts.Time, platform::PathMap(), TOOLHOST};
    platform::Host Host{Files,      Parts.Settings, Parts.Boxes,  Parts.Clip,  Parts.Programs, Libraries,
                        Parts.Desk, Parts.Time,     Parts.Screen, Parts.Paper, Parts.Link,     Parts.Journal};
    session::Session State;
    doubles::Hall Hall;
    session::App App{State, Host, Hall};
    ErrorCodes Codes;
    frmMessage Window{App, Codes};
    StatusWindows Windows{App, [this]() -> frmMessage& { return Window; }, nullptr};
    Compiler Driver{App, Windows};
};

TEST_F(WholeRun, ShowsTheReportUntilItIsAcknowledged) {
    EXPECT_EQ(Compile("report"), "Fitting|pin 3|1|3|");
    const QListView* list = Window.findChild<QListView*>("lstMessages");
    ASSERT_EQ(list->model()->rowCount(), 1);
    EXPECT_EQ(list->model()->index(0, 0).data().toString(), "[0012ta] bad symbol");
    EXPECT_TRUE(Parts.Boxes.Shown.empty());
    EXPECT_FALSE(Folder.Exists("DESIGN.LST"));
    EXPECT_TRUE(Folder.Exists("DESIGN.PLD"));
    EXPECT_EQ(Compile("nothing"), "Initializing||0|0|");
    EXPECT_EQ(Compile("box"), "Initializing||0|0|");
    EXPECT_EQ(Parts.Boxes.LastText(), "B A");
    EXPECT_EQ(list->model()->rowCount(), 1);
}

TEST_F(WholeRun, ACrashIsToldOnceAndTheNextRunIsAsEver) {
    EXPECT_EQ(Compile("crash"), "Initializing||0|0|");
    ASSERT_EQ(Parts.Boxes.Shown.size(), 1u);
    EXPECT_EQ(Parts.Boxes.LastText(),
              "The tool teskk.dll ended unexpectedly: signal 11 (Segmentation fault).");
    EXPECT_EQ(Folder.Read("DESIGN.PLD"), "source");
    EXPECT_EQ(Compile("report"), "Fitting|pin 3|1|3|");
    EXPECT_EQ(Parts.Boxes.Shown.size(), 1u);
}

TEST_F(WholeRun, AFloodFillsTheShownList) {
    Window.show();
    Compile("flood 5000");
    const QListView* list = Window.findChild<QListView*>("lstMessages");
    EXPECT_EQ(list->model()->rowCount(), 5000);
    EXPECT_TRUE(list->viewport()->rect().intersects(list->visualRect(list->model()->index(4999, 0))));
}

}  // namespace
}  // namespace toolchain
