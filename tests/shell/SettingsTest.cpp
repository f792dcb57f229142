#include "shell/Settings.h"

#include <gtest/gtest.h>

#include "shell/StartUp.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"

namespace {

struct Settings : testing::Test {
    using Value = doubles::Registry::Value;

    Settings() { Fresh(); }
    // The state as Main leaves it before the window loads.
    void Fresh() {
        State = session::Session();
        State.InstallRoot = "C:\\Korvane";
        State.SharedDir = "C:\\Korvane\\Shared\\";
        State.ProgramDir = "C:\\Korvane\\Korvane\\";
        Window = shell::MainWindowState();
        Store.Written.clear();
        Desk.Boxes.Shown.clear();
    }
    std::map<std::string, Value>& Values() { return Store.Keys[shell::settingsKey]; }
    void Set(const std::string& name, int number) { Values()[name] = static_cast<std::uint32_t>(number); }
    int Number(const std::string& name) {
        return static_cast<int>(std::get<std::uint32_t>(Values().at(name)));
    }
    std::string Written() {
        std::string names;
        for (const auto& name : Store.Written) names += name + " ";
        return names;
    }
    static std::string Rows(const std::string& head, int first, int last, std::vector<std::string> tails) {
        std::string names;
        for (int n = first; n <= last; ++n)
            for (const auto& tail : tails) names += head + std::to_string(n) + tail + " ";
        return names;
    }
    void Load() { shell::LoadSettings(State, Desk.Host, Window); }
    void Save() { shell::SaveSettings(State, Desk.Host, Window); }
    // A store as Main prepares it, then a first run.
    void RunFirst() {
        Values()["LastPathway"] = "C:\\Korvane\\Examples\\";
        Load();
    }

    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    doubles::Registry& Store = Desk.Settings;
    session::Session State;
    shell::MainWindowState Window;
};

TEST_F(Settings, FirstRunTakesItsColumnAndWritesAllInOrder) {
    RunFirst();
    EXPECT_EQ(Window.Place.Left, 1000);
    EXPECT_TRUE(State.HighlightEnabled && State.AutoArrange && !State.AutoSymbolUpdate);
    EXPECT_EQ(State.LibraryName, "C:\\Korvane\\Shared\\tesk.dl");
    EXPECT_EQ(State.DeviceCatalog, "C:\\Korvane\\Shared\\device.cat");
    EXPECT_EQ(State.WorkDir, "C:\\Korvane\\Korvane");
    EXPECT_EQ(State.LastPath, "C:\\Korvane\\Examples\\");
    EXPECT_EQ(State.InstallRoot, "C:\\Korvane");

    EXPECT_EQ(
        Written(),
        "MainLeft MainTop MainWidth MainHeight EFontName EFontSize EFontBold EFontItalic MFontName "
        "MFontSize MFontBold MFontItalic PFontName PFontSize PFontBold PFontItalic ForeColor LibraryName "
        "DeviceCatalog WorkDir Schematic Syntax AutoArrange AutoSymbolUpdate Initialized " +
            Rows("StdUtil", 0, 6, {"M", "T"}) + Rows("CustUtil", 0, 5, {"P", "N", "M", "T"}) +
            "LastPathway " + Rows("MRU", 1, 6, {""}));
    EXPECT_EQ(Number("Initialized"), -1);
    EXPECT_EQ(std::get<std::string>(Values().at("CustUtil5P")), "");
}

TEST_F(Settings, SecondRunBringsEverythingBackButForTheKeptLosses) {
    RunFirst();
    State.EditorFont = {"Hack", 11, true, true, 255};
    State.MessageFont = {"Noto", 9, true, true, 0};
    State.ProjectFont = {"Sans", 10, true, true, 0};
    State.SchematicTool = "Tango";
    State.HighlightEnabled = false;
    State.StdUtils[6].Menu = State.StdUtils[2].Toolbar = true;
    State.CustUtils[3] = {"MACRO*", "Mine", true, true, 77, 78};
    State.CustUtils[4].Name = "no program";
    State.RecentFiles[5] = "C:\\A.PLD";
    Window.Place = {-15.5F, 30.5F, 7000.4F, 8000};
    Save();
    EXPECT_EQ(Number("PFontItalic"), -1);
    EXPECT_EQ(Number("ForeColor"), 255);
    EXPECT_FALSE(Values().contains("MPontItalic"));

    Fresh();
    Load();
    EXPECT_TRUE(Store.Written.empty());
    EXPECT_EQ(State.EditorFont.Name + State.MessageFont.Name + State.ProjectFont.Name, "HackNotoSans");
    EXPECT_EQ(State.EditorFont.Size, 11);
    EXPECT_TRUE(State.EditorFont.Italic && State.MessageFont.Italic && State.ProjectFont.Bold);
    EXPECT_FALSE(State.ProjectFont.Italic);
    EXPECT_EQ(State.EditorFont.ForeColor, 0);
    EXPECT_EQ(State.SchematicTool, "Tango");
    EXPECT_FALSE(State.HighlightEnabled);
    EXPECT_TRUE(State.StdUtils[6].Menu && State.StdUtils[2].Toolbar && !State.StdUtils[2].Menu);
    EXPECT_EQ(State.CustUtils[3].Program, "MACRO*");
    EXPECT_EQ(State.CustUtils[4].Name, "no program");
    EXPECT_EQ(State.RecentFiles[5], "C:\\A.PLD");
    EXPECT_EQ(Window.Place.Left, -16);  // halves go to the even neighbour
    EXPECT_EQ(Window.Place.Top, 30);

    Set("MPontItalic", 5);
    Load();
    EXPECT_TRUE(State.ProjectFont.Italic);
}

TEST_F(Settings, MissingOrUnfitValuesTakeTheAbsentColumn) {
    Desk.Desk.Fonts = {"Zapf", "Courier New", "arial"};
    Set("Initialized", 1);
    Set("EFontSize", 70000);
    Set("WorkDir", 3);  // of the wrong type
    State.LastPath = "before";
    State.StdUtils[2].Menu = true;
    Load();
    EXPECT_EQ(State.EditorFont.Name, "Courier New");
    EXPECT_EQ(State.MessageFont.Name, "MS Sans Serif");
    EXPECT_EQ(State.EditorFont.Size, 8);
    EXPECT_EQ(State.LibraryName, "C:\\Korvane\\Shared\\\\tesk.dl");
    EXPECT_EQ(State.DeviceCatalog, "C:\\Korvane\\Shared\\\\Device.cat");
    EXPECT_EQ(State.WorkDir, "C:\\Korvane\\Korvane");
    EXPECT_TRUE(State.HighlightEnabled && State.AutoArrange);
    EXPECT_FALSE(State.StdUtils[2].Menu);
    EXPECT_EQ(Window.Place.Width, 6500);
    EXPECT_EQ(State.LastPath, "before");
    EXPECT_EQ(State.InstallRoot, "");
}

TEST_F(Settings, MinimisedOrMaximisedWindowKeepsTheStoredPlace) {
    RunFirst();
    for (bool minimized : {true, false}) {
        Window = {{1, 2, 3, 4}, minimized, !minimized};
        Save();
        EXPECT_EQ(Number("MainLeft"), 1000);
        EXPECT_EQ(Number("MainHeight"), 6500);
    }
}

TEST_F(Settings, LongTextsAreCutBetweenCharacters) {
    RunFirst();
    const std::string plain(300, 'a');
    std::string accents = "a";
    for (int i = 0; i < 200; ++i) accents += "\xC3\xA9";
    State.LibraryName = plain;
    State.WorkDir = accents;
    State.CustUtils[0].Program = std::string(300, '\x80');
    State.CustUtils[0].Name = std::string("a\0b", 3);
    Save();
    Fresh();
    Load();
    EXPECT_EQ(State.LibraryName, plain.substr(0, 254));
    EXPECT_EQ(State.WorkDir, accents.substr(0, 253));
    EXPECT_EQ(State.CustUtils[0].Program.size(), 254u);
    EXPECT_EQ(State.CustUtils[0].Name, "a");
}

TEST_F(Settings, FailingStore) {
    Store.CanOpen = Store.CanCreate = false;
    Window.Place.Left = 77;
    Load();
    EXPECT_EQ(Desk.Boxes.LastText(), "Unable to create registration database entries for Stavrik!");
    EXPECT_EQ(State.EditorFont.Name, "Courier New");
    EXPECT_FALSE(State.HighlightEnabled);
    EXPECT_EQ(Window.Place.Left, 77);
    Save();
    EXPECT_EQ(Desk.Boxes.LastText(), "Unable to create registration database entries for Korvane!");

    Fresh();
    Store.CanOpen = true;
    Values();  // there, but empty
    Load();
    EXPECT_EQ(Desk.Boxes.LastText(), "Unable to create registration database entries for Korvane!");
    EXPECT_EQ(State.WorkDir, "");

    Store.Keys.clear();
    Store.CanCreate = true;
    Save();  // the key is made, and nothing is written into it
    EXPECT_TRUE(Store.Written.empty());
    EXPECT_TRUE(Values().empty());
    EXPECT_EQ(Store.Classes[shell::settingsKey], "Korvane");
}

TEST_F(Settings, PlacementOfACompanion) {
    shell::SaveToolPlacement(Desk.Host, "Wavrik", 1.4F, 2, 3, 4e20F);
    const std::string key = "Software\\Brennick Labs\\Wavrik\\1.0\\Settings";
    EXPECT_EQ(Store.Classes[key], "Wavrik");
    EXPECT_EQ(Written(), "MainLeft MainTop MainWidth MainHeight ");
    EXPECT_EQ(Store.Keys[key]["MainLeft"], Value(2u));
    EXPECT_EQ(Store.Keys[key]["MainTop"], Value(1u));
    EXPECT_EQ(Store.Keys[key]["MainHeight"], Value(0x7FFFFFFFu));

    Store.CanCreate = false;
    shell::SaveToolPlacement(Desk.Host, "Stavrik", 1, 2, 3, 4);
    EXPECT_EQ(Desk.Boxes.LastText(), "Unable to create registration database entries for Stavrik");
}

}  // namespace
