#include <gtest/gtest.h>

#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>
#include <memory>

#include "support/FormUser.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"
#include "toolchain/frmCompiler.h"

namespace {

struct CompilerWindow : testing::Test, doubles::Bench<doubles::MemoryFiles>, doubles::FormUser {
    CompilerWindow() {
        State.LibraryName = "C:\\lib\\Tesk.dl";
        State.WorkDir = "C:\\Work";
        State.ProgramDir = "C:\\Korvane\\Korvane\\";
        State.DeviceName = "&";
    }
    void Open(const std::string& flags) {
        State.CompilerFlags = flags;
        Window = std::make_unique<toolchain::frmCompiler>(App, Options);
        Use(*Window);
    }
    QCheckBox& Box(const char* name) { return Control<QCheckBox>(name); }
    std::string Checked() {
        std::string names;
        for (const auto& row : toolchain::CompilerOptionTable()) {
            if (row.Token != "m" && Box(row.Control).isChecked()) names += std::string(row.Token) + " ";
        }
        return names;
    }
    bool MinimizationIs(int index) {
        return Control<QRadioButton>("optMinimization" + std::to_string(index)).isChecked();
    }

    toolchain::CompilerOptions Options;
    std::unique_ptr<toolchain::frmCompiler> Window;
};

TEST_F(CompilerWindow, DefaultChangeReopenRestore) {
    Open("jasxlbm4");
    EXPECT_EQ(Window->windowTitle(), "Compiler Options");
    EXPECT_EQ(Text("SSTab1"), "Output Files");
    EXPECT_FALSE(Control<QTabWidget>("SSTab1").isTabVisible(5));
    EXPECT_EQ(Checked(), "j x a l b s ");
    EXPECT_TRUE(MinimizationIs(4));
    EXPECT_TRUE(Box("chkDevInFile").isChecked());
    EXPECT_EQ(Box("chkEdif").toolTip(), "Create an EDIF file for use with other design tools");
    Key(Qt::Key_Return);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(State.CompilerFlags, "jxalbm4s");
    EXPECT_EQ(State.LibraryName, "C:\\LIB\\TESK.DL");

    Open(State.CompilerFlags);
    Click("chkPla");
    ClickTab("SSTab1", "Optimization");
    Click("chkBest");
    ClickTab("SSTab1", "Minimization");
    ClickEach({"optMinimization2", "OK"});
    EXPECT_EQ(State.CompilerFlags, "jxalm2kbs");

    // In the same run of the program the record keeps Best; the "b" of "kb" sets Pla.
    Open(State.CompilerFlags);
    EXPECT_EQ(Checked(), "j x a l b kb s ");
    Options = {};
    Open(State.CompilerFlags);
    EXPECT_EQ(Checked(), "j x a l b s ");
    EXPECT_TRUE(MinimizationIs(2));
}

TEST_F(CompilerWindow, RecordOutlivesTheWindow) {
    Open("jgm3");
    Open("");
    EXPECT_EQ(Checked(), "j g ");
    EXPECT_TRUE(MinimizationIs(1));  // without "m" it is Quick, whatever the record holds
    Click("OK");
    EXPECT_EQ(State.CompilerFlags, "jm1g");
    Open("jm1g");
    Click("chkJedec");
    Box("chkSecure").setCheckState(Qt::PartiallyChecked);
    Click("OK");
    EXPECT_EQ(State.CompilerFlags, "m1");
    Open("m7");
    EXPECT_EQ(Box("chkSecure").checkState(), Qt::PartiallyChecked);
    Click("OK");
    EXPECT_EQ(State.CompilerFlags, "m7");  // no such button: none is on, the digit stays
}

TEST_F(CompilerWindow, ApplyTakesTheShowingTabAlone) {
    Open("m4");
    const char* tabs[] = {"Output Files", "Minimization", "Optimization", "General", "Library"};
    const char* changed[] = {"chkJedec", "optMinimization0", "chkKeep", "chkName", "Library"};
    const char* expected[] = {"jm4", "jm0", "jm0kx", "jm0kxn", "untouched"};
    for (int tab = 0; tab < 5; ++tab) {
        ClickTab("SSTab1", tabs[tab]);
        Click(changed[tab]);
    }
    Type("x.dl");
    for (int tab = 0; tab < 5; ++tab) {
        State.CompilerFlags = "untouched";
        ClickTab("SSTab1", tabs[tab]);
        Click("cmdApply");
        EXPECT_EQ(State.CompilerFlags, expected[tab]);
    }
    EXPECT_EQ(State.LibraryName, "C:\\lib\\Tesk.dl");
    ClickTab("SSTab1", "General");
    Click("chkName");
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(State.CompilerFlags, "untouched");
    EXPECT_EQ(State.LibraryName, "C:\\lib\\Tesk.dl");
}

TEST_F(CompilerWindow, ShowsItsCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<toolchain::frmCompiler>(App, Options), "");
}

TEST_F(CompilerWindow, FinalMStopsTheOpening) {
    Open("gm4");
    EXPECT_EQ(doubles::ErrorOf([&] { Open("jm"); }), 13);
    Open("");
    EXPECT_EQ(Checked(), "j g ");  // what was read before the error is in the record
}

TEST_F(CompilerWindow, ChooseLibrary) {
    State.LibraryName = "a";
    State.DeviceName = "g16v8a";
    Open("m1");
    EXPECT_FALSE(Box("chkDevInFile").isChecked());
    ClickTab("SSTab1", "Library");
    Click("ChooseLibrary");
    const auto& request = Desk.Boxes.FileRequests.at(0);
    EXPECT_EQ(request.FileName + "|" + request.Title + "|" + request.Filter + "|" + request.DefaultExtension,
              "TESK.DL|Select Library File|Library Files (*.dl)|*.dl|.DL");
    EXPECT_EQ(request.InitialFolder, "C:\\Work");
    EXPECT_EQ(request.Flags, 6144);
    EXPECT_EQ(State.LibraryName, "TESK.DL");  // stays though cancelled
    EXPECT_EQ(Text("Library"), "a");

    Desk.Boxes.Files = {"C:\\new\\full.dl"};
    Click("ChooseLibrary");
    EXPECT_EQ(Text("Library"), "C:\\new\\full.dl");
    EXPECT_EQ(State.LibraryName, "TESK.DL");
    Click("OK");
    EXPECT_EQ(State.LibraryName, "C:\\NEW\\FULL.DL");
}

TEST_F(CompilerWindow, ShowCatalogAsksForAMissingOne) {
    Open("m1");
    State.DeviceCatalog = "C:\\old.cat";
    EXPECT_FALSE(Window->ShowCatalog());
    EXPECT_EQ(Desk.Boxes.LastText(),
              "The device catalog file C:\\old.cat could not be found. Please select one now");
    EXPECT_EQ(State.DeviceCatalog, "");
    Desk.Boxes.Files = {"C:\\new.cat"};
    EXPECT_TRUE(Window->ShowCatalog());
    EXPECT_EQ(Desk.Boxes.LastText(),
              "The device catalog file could not be found.  Please select a device catalog.");
    EXPECT_EQ(Desk.Boxes.FileRequests.back().FileName, "C:\\Korvane\\Korvane\\DEVICE.CAT");
    EXPECT_EQ(Desk.Boxes.FileRequests.back().Flags, 7168);
    EXPECT_EQ(State.DeviceCatalog, "C:\\new.cat");
}

}  // namespace
