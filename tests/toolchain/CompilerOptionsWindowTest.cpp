#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "base/RunTimeError.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"
#include "toolchain/frmCompiler.h"

namespace {

struct CompilerWindow : testing::Test {
    CompilerWindow() {
        State.LibraryName = "C:\\lib\\Tesk.dl";
        State.WorkDir = "C:\\Work";
        State.ProgramDir = "C:\\Korvane\\Korvane\\";
        State.DeviceName = "&";
    }
    void Open(const std::string& flags) {
        State.CompilerFlags = flags;
        Window = std::make_unique<toolchain::frmCompiler>(App, Options);
        Window->show();
    }
    template <typename T = QCheckBox>
    T& Find(const char* name) {
        T* control = Window->findChild<T*>(name);
        if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    void Click(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }
    QTabWidget& Tabs() { return Find<QTabWidget>("SSTab1"); }
    std::string Checked() {
        std::string names;
        for (const auto& row : toolchain::CompilerOptionTable()) {
            if (row.Token != "m" && Find(row.Control).isChecked()) names += std::string(row.Token) + " ";
        }
        return names;
    }
    bool MinimizationIs(int index) {
        return Find<QRadioButton>(("optMinimization" + std::to_string(index)).c_str()).isChecked();
    }

    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    doubles::Hall Hall;
    session::Session State;
    session::App App{State, Desk.Host, Hall};
    toolchain::CompilerOptions Options;
    std::unique_ptr<toolchain::frmCompiler> Window;
};

TEST_F(CompilerWindow, DefaultChangeReopenRestore) {
    Open("jasxlbm4");
    EXPECT_EQ(Window->windowTitle(), "Compiler Options");
    EXPECT_EQ(Tabs().currentIndex(), 0);
    EXPECT_FALSE(Tabs().isTabVisible(5));
    EXPECT_EQ(Checked(), "j x a l b s ");
    EXPECT_TRUE(MinimizationIs(4));
    EXPECT_TRUE(Find("chkDevInFile").isChecked());
    EXPECT_EQ(Find("chkEdif").toolTip(), "Create an EDIF file for use with other design tools");
    QTest::keyClick(Window.get(), Qt::Key_Return);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(State.CompilerFlags, "jxalbm4s");
    EXPECT_EQ(State.LibraryName, "C:\\LIB\\TESK.DL");

    Open(State.CompilerFlags);
    Find("chkPla").click();
    Find("chkBest").click();
    Find<QRadioButton>("optMinimization2").click();
    Click("OK");
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
    Find("chkJedec").click();
    Find("chkSecure").setCheckState(Qt::PartiallyChecked);
    Click("OK");
    EXPECT_EQ(State.CompilerFlags, "m1");
    Open("m7");
    EXPECT_EQ(Find("chkSecure").checkState(), Qt::PartiallyChecked);
    Click("OK");
    EXPECT_EQ(State.CompilerFlags, "m7");  // no such button: none is on, the digit stays
}

TEST_F(CompilerWindow, ApplyTakesTheShowingTabAlone) {
    Open("m4");
    Find("chkJedec").click();
    Find("chkKeep").click();
    Find("chkName").click();
    Find<QRadioButton>("optMinimization0").click();
    Find<QLineEdit>("Library").setText("x.dl");
    const char* expected[] = {"jm4", "jm0", "jm0kx", "jm0kxn", "untouched"};
    for (int tab = 0; tab < 5; ++tab) {
        State.CompilerFlags = "untouched";
        Tabs().setCurrentIndex(tab);
        Click("cmdApply");
        EXPECT_EQ(State.CompilerFlags, expected[tab]);
    }
    EXPECT_EQ(State.LibraryName, "C:\\lib\\Tesk.dl");
    Find("chkName").click();
    QTest::keyClick(Window.get(), Qt::Key_Escape);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(State.CompilerFlags, "untouched");
    EXPECT_EQ(State.LibraryName, "C:\\lib\\Tesk.dl");
}

TEST_F(CompilerWindow, FinalMStopsTheOpening) {
    Open("gm4");
    try {
        Open("jm");
        ADD_FAILURE();
    } catch (const base::RunTimeError& error) {
        EXPECT_EQ(error.Number(), 13);
    }
    Open("");
    EXPECT_EQ(Checked(), "j g ");  // what was read before the error is in the record
}

TEST_F(CompilerWindow, ChooseLibrary) {
    State.LibraryName = "a";
    State.DeviceName = "g16v8a";
    Open("m1");
    EXPECT_FALSE(Find("chkDevInFile").isChecked());
    Tabs().setCurrentIndex(4);
    Click("ChooseLibrary");
    const auto& request = Desk.Boxes.FileRequests.at(0);
    EXPECT_EQ(request.FileName + "|" + request.Title + "|" + request.Filter + "|" + request.DefaultExtension,
              "TESK.DL|Select Library File|Library Files (*.dl)|*.dl|.DL");
    EXPECT_EQ(request.InitialFolder, "C:\\Work");
    EXPECT_EQ(request.Flags, 6144);
    EXPECT_EQ(State.LibraryName, "TESK.DL");  // stays though cancelled
    EXPECT_EQ(Find<QLineEdit>("Library").text(), "a");

    Desk.Boxes.Files = {"C:\\new\\full.dl"};
    Click("ChooseLibrary");
    EXPECT_EQ(Find<QLineEdit>("Library").text(), "C:\\new\\full.dl");
    EXPECT_EQ(State.LibraryName, "TESK.DL");
    Click("OK");
    EXPECT_EQ(State.LibraryName, "C:\\NEW\\FULL.DL");
}

TEST_F(CompilerWindow, ShowCatalogAndHelp) {
    Open("m1");
    QTest::keyClick(&Find("chkJedec"), Qt::Key_F1);
    EXPECT_EQ(Hall.Calls, std::vector<std::string>{"ShowHelpTopic Compiler"});

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
