#include "toolchain/Compiler.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/MemoryFiles.h"
#include "support/Rooms.h"
#include "toolchain/BackPin.h"

namespace toolchain {
namespace {

// Lists, locks and a trash on top of the files in memory.
class DesignFiles : public doubles::MemoryFiles {
  public:
    std::vector<std::string> Trash;
    std::string Locked;

    void DeleteFile(std::string_view path) override {
        if (!Locked.empty() && base::EqualNoCase(path, Locked)) throw base::RunTimeError(75);
        if (!FileExists(path)) throw base::RunTimeError(base::errFileNotFound);
        MemoryFiles::DeleteFile(path);
    }
    void TrashFile(std::string_view path) override {
        DeleteFile(path);
        Trash.emplace_back(path);
    }
    std::vector<std::string> List(std::string_view pattern) const override {
        std::vector<std::string> names;
        for (const auto& file : Files) {
            if (!file.first.starts_with(base::Upper(pattern.substr(0, pattern.size() - 1)))) continue;
            names.push_back(file.first.substr(file.first.rfind('\\') + 1));
        }
        return names;
    }
    std::string Names() const {
        std::string names;
        for (const auto& file : Files) names += file.first.substr(file.first.rfind('\\') + 1) + " ";
        return names;
    }
};

// Notes what the driver asks of the windows in the log of the libraries, so that one list holds the order.
class Windows : public RunWindows {
  public:
    explicit Windows(std::vector<std::string>& log) : Log(log) {}
    std::vector<std::string>& Log;

    void CreateStatus() override { Log.push_back("create"); }
    void UnloadStatus() override { Log.push_back("unload"); }
    void SetInfo(const std::string& text) override { Log.push_back("info " + text); }
    void EnableOk(bool enabled) override { Log.push_back(enabled ? "ok on" : "ok off"); }
    void ShowStatusModeless() override { Log.push_back("modeless"); }
    void ShowStatusModal() override { Log.push_back("modal"); }
    void AddMessages(const std::vector<std::string>& lines) override {
        for (const std::string& line : lines) Log.push_back("message " + line);
    }
    platform::WindowHandle StatusHandle() override { return 0x01020304; }
    platform::WindowHandle MessagesHandle() override { return 7; }
};

class CompilerTest : public testing::Test, public doubles::Bench<DesignFiles> {
  protected:
    CompilerTest() {
        State.SharedDir = "C:\\K\\Shared\\";
        State.ProgramDir = "C:\\K\\Korvane\\";
        State.UtilityDir = "C:\\K\\Korvane\\Utility\\";
        State.InstallRoot = "C:\\K";
        State.LibraryName = "C:\\K\\SHARED\\TESK.DL";
        State.DeviceCatalog = "C:\\K\\Shared\\Device.cat";
        State.CompilerFlags = "jasxlbm4";
        State.SimulatorFlags = "l";
        State.DeviceName = "G16V8";
        State.sProject = "C:\\WORK\\COUNT8";
        State.WorkDir = "C:\\WORK";
        Files.Files["C:\\WORK\\COUNT8.PLD"] = "old";
        Doc.SetFile("C:\\WORK\\COUNT8.PLD", "C:\\WORK\\COUNT8.PLD");
        Doc.Box.Content = "new";
    }
    std::string Field(std::size_t index) const {  // of the record, without its NUL and filling
        const std::string bytes(Desk.Libraries.Record.begin(), Desk.Libraries.Record.end());
        return bytes.substr(12 + 256 * index, 256).c_str();
    }
    std::vector<platform::MessageBoxRequest>& Boxes() { return Desk.Boxes.Shown; }

    doubles::Document Doc;
    Windows Shown{Desk.Libraries.Log};
    Compiler Driver{App, Shown};
};

TEST(RunRecordTest, LiesToTheByte) {
    base::RunRecord record = base::EmptyRecord();
    record.hWndStatus = 0x11223344;
    record.hWndMessages = 2;
    record.hWndNotify = 3;
    base::SetText(record.szProgramDir, "C:\\K\\");
    base::SetText(record.szOptions, std::string(255, 'o'));
    base::SetText(record.szLibrary, std::string(300, 'l'));
    base::SetText(record.szProgramPath, std::string(256, 'p'));
    const auto bytes = record.Bytes();
    ASSERT_EQ(bytes.size(), 2060u);
    std::string expected(2060, ' ');
    const std::uint32_t handles[] = {0x11223344, 2, 3};
    std::memcpy(expected.data(), handles, sizeof handles);
    expected.replace(12, 6, std::string("C:\\K\\\0", 6));
    expected.replace(268, 256, std::string(255, 'o') + '\0');
    expected.replace(524, 256, std::string(256, 'l'));  // cut, and no NUL
    for (const std::size_t empty : {780, 1036, 1292, 1548}) expected[empty] = '\0';
    expected.replace(1804, 256, std::string(256, 'p'));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), expected);
}

TEST_F(CompilerTest, ACompileGoesThroughItsStepsInOrder) {
    Files.Files["C:\\WORK\\COUNT8.SI"] = "";
    State.CompilerFlags = "jsw";
    bool stalePresent = true;
    Files.Files["C:\\WORK\\COUNT8.LST"] = "";
    Desk.Libraries.OnCall = [&](auto&, auto) {
        stalePresent = Files.FileExists("C:\\WORK\\COUNT8.LST");
        Driver.IndepSimulate();  // a second run while one is under way is ignored
        return -1;
    };
    Driver.DepCompile();
    const std::string dir = "load C:\\K\\Shared\\";
    EXPECT_EQ(Desk.Libraries.Log,
              (std::vector<std::string>{
                  "create",          dir + "teskx.dll", dir + "teska.dll", dir + "teskb.dll",
                  dir + "teskm.dll", dir + "teskc.dll", dir + "vorna.dll", dir + "vsima.dll",
                  dir + "teskk.dll", "ok off",          "modeless",        "call teskk.dll TeskkVB",
                  "ok on",           "modal",           "free teskk.dll",  "free teskx.dll",
                  "free teska.dll",  "free teskb.dll",  "free teskm.dll",  "free teskc.dll",
                  "free vorna.dll",  "free vsima.dll"}));
    EXPECT_FALSE(stalePresent);
    EXPECT_EQ(Hall.Calls, std::vector<std::string>{"LaunchTool Wavrik C:\\WORK\\COUNT8.SI"});
    EXPECT_EQ(Field(0), "C:\\K\\Korvane\\");
    EXPECT_EQ(Field(2), "C:\\K\\SHARED\\TESK.DL");
    EXPECT_EQ(Field(4), "C:\\WORK\\COUNT8");
    EXPECT_EQ(Field(7), "C:\\K\\Korvane");
    EXPECT_EQ(Desk.Libraries.Record[0], 4);
    EXPECT_EQ(Desk.Libraries.Record[4], 7);
    EXPECT_EQ(Desk.Libraries.Record[8], 4);
}

TEST_F(CompilerTest, EachRunSendsItsOptionsAndDevice) {
    struct Case {
        void (Compiler::*Run)();
        const char *Compile, *Simulate, *Entry, *Options, *Device;
        bool Wave;
    };
    const Case cases[] = {
        {&Compiler::DepCompile, "jasxlbm4", "d", "call teskk.dll TeskkVB", "jaxlbm4", "G16V8", false},
        {&Compiler::DepCompile, "kssw", "d", "call teskk.dll TeskkVB", "ks", "G16V8", false},
        {&Compiler::DepCompile, "swsw", "d", "call teskk.dll TeskkVB", "sw", "G16V8", true},
        {&Compiler::IndepCompile, "jsw", "d", "call teskk.dll TeskkVB", "jsw", "virtual", true},
        {&Compiler::DepSimulate, "w", "l", "call vornk.dll VornkVB", "l", "G16V8", false},
        {&Compiler::DepSimulate, "w", "ld", "call vornk.dll VornkVB", "ld", "G16V8", true},
        {&Compiler::IndepSimulate, "w", "jd", "call vornk.dll VornkVB", "jd", "virtual", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.Entry) + " " + c.Compile + " " + c.Simulate);
        State.CompilerFlags = c.Compile;
        State.SimulatorFlags = c.Simulate;
        Hall.Calls.clear();
        Desk.Libraries.Log.clear();
        (Driver.*c.Run)();
        EXPECT_EQ(std::count(Desk.Libraries.Log.begin(), Desk.Libraries.Log.end(), c.Entry), 1);
        EXPECT_EQ(Field(1), c.Options);
        EXPECT_EQ(Field(3), c.Device);
        EXPECT_EQ(Hall.Calls.size(), c.Wave ? 1u : 0u);
        EXPECT_EQ(State.CompilerFlags, c.Compile);
    }
}

TEST_F(CompilerTest, MissingSettingsStopAtTheFirst) {
    State.LibraryName = State.DeviceCatalog = State.sProject = "";
    const char* texts[] = {
        "No library specified.  You must select a library with the Library tab from the Options, Compiler "
        "menu.",
        "No device catalog specified.  You must select a device catalog with the compiler Options.",
        "No Design File Specified."};
    std::string* settings[] = {&State.LibraryName, &State.DeviceCatalog, &State.sProject};
    for (std::size_t i = 0; i < 3; ++i) {
        Driver.DepCompile();
        ASSERT_EQ(Boxes().size(), i + 1);
        EXPECT_EQ(Boxes().back().Text, texts[i]);
        EXPECT_EQ(Boxes().back().Title, "");
        *settings[i] = "x";
    }
    EXPECT_TRUE(Desk.Libraries.Log.empty());
}

TEST_F(CompilerTest, AMissingLibraryEndsTheRunBeforeAnyFileIsTouched) {
    Files.Files["C:\\WORK\\COUNT8.JED"] = "";
    const struct {
        void (Compiler::*Run)();
        std::vector<std::string> Libraries;
    } chains[] = {{&Compiler::DepCompile,
                   {"teskx.dll", "teska.dll", "teskb.dll", "teskm.dll", "teskc.dll", "vorna.dll", "vsima.dll",
                    "teskk.dll"}},
                  {&Compiler::IndepSimulate, {"vorna.dll", "vsima.dll", "vornk.dll"}}};
    for (const auto& chain : chains) {
        for (std::size_t loaded = 0; loaded < chain.Libraries.size(); ++loaded) {
            const std::string& name = chain.Libraries[loaded];
            Desk.Libraries.Missing = name;
            Desk.Libraries.Log.clear();
            (Driver.*chain.Run)();
            EXPECT_EQ(Boxes().back().Text, "Unable to load " + name + ".  Make sure the file " + name +
                                               " is in the C:\\K\\Shared\\ directory.");
            const auto& log = Desk.Libraries.Log;
            EXPECT_EQ(log.size(), 2 + (loaded + 1) + chain.Libraries.size()) << name;
            EXPECT_EQ(std::count(log.begin(), log.end(), "free 0"),
                      static_cast<long>(chain.Libraries.size() - loaded));
            EXPECT_EQ(log.back(), "unload");
        }
    }
    EXPECT_TRUE(Files.FileExists("C:\\WORK\\COUNT8.JED"));
    EXPECT_FALSE(Driver.RunOk);
}

TEST_F(CompilerTest, ALibraryThatEndsBadlyIsReportedAndTheRunEndsInOrder) {
    Desk.Libraries.OnCall = [](auto&, auto) -> std::int32_t {
        throw base::RunTimeError(51, "signal 11 (Segmentation fault)");
    };
    Driver.DepSimulate();
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].Text, "The tool vornk.dll ended unexpectedly: signal 11 (Segmentation fault).");
    const auto& log = Desk.Libraries.Log;
    EXPECT_EQ(
        std::vector(log.end() - 5, log.end()),
        (std::vector<std::string>{"ok on", "modal", "free vornk.dll", "free vorna.dll", "free vsima.dll"}));
    Desk.Libraries.OnCall = [](auto&, auto) -> std::int32_t {
        throw base::RunTimeError(453, "no such entry");
    };
    Driver.DepSimulate();
    EXPECT_EQ(Boxes().back().Text, "no such entry");
    EXPECT_EQ(Files.Names(), "COUNT8.PLD ");
}

TEST_F(CompilerTest, AnErrorAmidTheRunGivesBackWhatItHolds) {
    Desk.Libraries.OnCall = [](auto&, auto) -> std::int32_t { throw 1; };
    for (int run = 0; run < 2; ++run) {
        EXPECT_THROW(Driver.DepSimulate(), int);
        const auto& log = Desk.Libraries.Log;
        EXPECT_EQ(std::vector(log.end() - 4, log.end()),
                  (std::vector<std::string>{"free vornk.dll", "free vorna.dll", "free vsima.dll", "unload"}));
    }
    EXPECT_TRUE(Hall.Calls.empty());
}

TEST_F(CompilerTest, StagesOutsideTheChainLoadNothing) {
    for (const int number : {-1, 0, 5, 99}) {
        auto stage = static_cast<std::int16_t>(number);
        EXPECT_TRUE(Driver.LoadToolLibraries(stage));
        Driver.FreeToolLibraries(stage);
    }
    EXPECT_TRUE(Desk.Libraries.Log.empty());
}

TEST_F(CompilerTest, StaleOutputsGoAndSourcesStay) {
    for (const char* name : {"COUNT8.SI", "COUNT8.M", "COUNT8.JED", "COUNT8.VHD", "COUNT8.V", "COUNT8.TXT",
                             "COUNT8.LST.BAK", "COUNT8.", "COUNT8.ABS", "COUNT80.LST"}) {
        Files.Files[std::string("C:\\WORK\\") + name] = "";
    }
    Files.Locked = "C:\\WORK\\COUNT8.ABS";
    Driver.DeleteStaleOutputs();
    EXPECT_EQ(Files.Names(), "COUNT8.ABS COUNT8.M COUNT8.PLD COUNT8.SI COUNT8.V COUNT8.VHD COUNT80.LST ");
    EXPECT_EQ(Files.Trash, (std::vector<std::string>{"C:\\WORK\\COUNT8.", "C:\\WORK\\COUNT8.jed",
                                                     "C:\\WORK\\COUNT8.lst.bak", "C:\\WORK\\COUNT8.txt"}));
    // The extension of a name with a dot of its own is taken too long, and names no file.
    State.sProject = "C:\\WORK\\A.B";
    Files.Files["C:\\WORK\\A.B.PLD"] = Files.Files["C:\\WORK\\A.B.LST"] = "";
    Driver.DeleteStaleOutputs();
    EXPECT_TRUE(Files.FileExists("C:\\WORK\\A.B.PLD"));
    EXPECT_TRUE(Files.FileExists("C:\\WORK\\A.B.LST"));
}

// What a run wrote is deleted by the next, be it in another session; what only looks like it is trashed.
TEST_F(CompilerTest, OnlyWhatARunWroteIsDeletedForGood) {
    const std::string record = "C:\\STATE\\outputs";
    Desk.Libraries.OnCall = [&](const std::string&, std::span<std::uint8_t>) {
        for (const char* name : {"COUNT8.JED", "COUNT8.LST", "COUNT8.DOC", "COUNT8.NOTES"})
            Files.Files[std::string("C:\\WORK\\") + name] = "from a run";
        return 0;
    };
    Compiler(App, Shown, record).DepCompile();
    Files.Locked = "C:\\WORK\\COUNT8.DOC";  // stays one run long, and stays the run's
    Compiler(App, Shown, record).DepSimulate();
    Files.Locked.clear();
    Files.Files["C:\\WORK\\COUNT8.LST"] += " and a remark";
    Files.Files["C:\\WORK\\COUNT8.PDF"] = "a data sheet";
    Files.Trash.clear();
    Desk.Libraries.OnCall = {};
    Compiler(App, Shown, record).DepSimulate();
    EXPECT_EQ(Files.Names(), "OUTPUTS COUNT8.PLD ");
    EXPECT_EQ(Files.Trash, (std::vector<std::string>{"C:\\WORK\\COUNT8.lst", "C:\\WORK\\COUNT8.notes",
                                                     "C:\\WORK\\COUNT8.pdf"}));
}

TEST_F(CompilerTest, TheSavePromptWritesOrLeavesTheFile) {
    using Command = void (Compiler::*)(session::Document&);
    for (const Command command : {&Compiler::RunDepCompile, &Compiler::RunIndepCompile,
                                  &Compiler::RunDepSimulate, &Compiler::RunIndepSimulate}) {
        Files.Files["C:\\WORK\\COUNT8.PLD"] = "old";
        Boxes().clear();
        Doc.TextChanged();
        Doc.MarkProject(true);
        Hall.Calls.clear();
        Desk.Boxes.Answers = {platform::Answer::No};
        (Driver.*command)(Doc);
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Boxes()[0].Title + ": " + Boxes()[0].Text,
                  "Save editor file: File is not saved. Do you want to save now?");
        EXPECT_EQ(Files.Files["C:\\WORK\\COUNT8.PLD"], "old");
        EXPECT_TRUE(Doc.Dirty());
        (Driver.*command)(Doc);
        EXPECT_EQ(Files.Files["C:\\WORK\\COUNT8.PLD"], "new");
        EXPECT_FALSE(Doc.Dirty());
        EXPECT_EQ(std::count(Hall.Calls.begin(), Hall.Calls.end(), "UpdateTreeView"), 2);
    }
}

TEST_F(CompilerTest, AFailedSaveEndsTheCommandWithABoxOnlyInTheDependentCompile) {
    for (const auto& [number, text] : {std::pair(75, "Cannot save file, it is in use by another application"),
                                       std::pair(61, "Disk full")}) {
        Files.FailWrites = number;
        Doc.TextChanged();
        Driver.RunDepCompile(Doc);
        EXPECT_EQ(Boxes().back().Text, text);
        EXPECT_EQ(Boxes().back().Title, "Save File Error");
        EXPECT_EQ(Boxes().back().Picture, platform::Icon::Information);
        EXPECT_THROW(Driver.RunIndepCompile(Doc), base::RunTimeError);
        EXPECT_TRUE(Doc.Dirty());
    }
    EXPECT_TRUE(Desk.Libraries.Log.empty());
    EXPECT_EQ(Hall.Calls, std::vector<std::string>{});
}

TEST_F(CompilerTest, OnlyTheDependentCompileAsksAboutTheProject) {
    Doc.SetCaption("C:\\WORK\\OTHER.PLD");
    Doc.MarkProject(true);
    Driver.RunIndepCompile(Doc);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(Field(4), "C:\\WORK\\COUNT8");
    Desk.Libraries.Log.clear();
    Desk.Boxes.Answers = {platform::Answer::No};
    Driver.RunDepCompile(Doc);
    EXPECT_TRUE(Desk.Libraries.Log.empty());
    EXPECT_EQ(Hall.Calls, std::vector<std::string>{"UpdateTreeView"});
    EXPECT_EQ(Boxes().back().Title + ": " + Boxes().back().Text,
              "Project: The current PLD file is not part of the current project.  Do you wish to compile the "
              "current file and set it as the current project?");
    Driver.RunDepCompile(Doc);
    EXPECT_EQ(State.sProject, "C:\\WORK\\OTHER");
    EXPECT_EQ(Field(4), "C:\\WORK\\OTHER");
}

TEST_F(CompilerTest, VhdlLinesAndTheirFailures) {
    State.VhdlFlags = "-a";
    Files.Files["C:\\WORK\\COUNT8.VLS"] = "of another run";
    Desk.Programs.OnWait = [this] { Files.Files["C:\\WORK\\COUNT8.VLS"] = "[0300vh] Error: x\r\ny\r\n"; };
    Driver.RunVhdlAnalysis(Doc);
    State.DeviceName = "";
    Driver.RunVhdlCompile(Doc);
    const std::string compile =
        "C:\\K\\Korvane\\VHDLTesk C:\\WORK C:\\K\\SHARED\\TESK.DL  C:\\WORK\\COUNT8.VHD-a";
    EXPECT_EQ(Desk.Programs.Started,
              (std::vector<std::string>{"C:\\K\\Korvane\\Utility\\VHDLTesk C:\\WORK C:\\K\\SHARED\\TESK.DL "
                                        "G16V8 C:\\WORK\\COUNT8.VHD-a",
                                        compile}));
    Desk.Programs.OnWait = [] { throw base::RunTimeError(platform::errToolEnded, "it was stopped"); };
    EXPECT_EQ(RunAndWait(Desk.Host, "x"), platform::errToolEnded);
    EXPECT_EQ(Boxes().back().Text, "The tool ended unexpectedly: it was stopped.");
    Desk.Programs.FailWith = 53;
    Driver.RunVhdlCompile(Doc);
    EXPECT_EQ(Boxes().back().Text, "Unable to execute  " + compile);
    // The list of the first run alone was new.
    EXPECT_EQ(Desk.Libraries.Log, (std::vector<std::string>{"message [0300vh] Error: x", "message y"}));
    Desk.Programs.FailWith = 75;
    EXPECT_EQ(RunAndWait(Desk.Host, "x"), 75);
    EXPECT_EQ(Boxes().back().Text, "Error 75 Occured");
}

TEST_F(CompilerTest, VerilogSourceBecomesTheProjectWhereThereIsNone) {
    State.VhdlFlags = "-p16";
    for (const auto& [caption, project, expected] :
         {std::tuple("C:\\WORK\\SHIFT4.V", "", "C:\\WORK\\SHIFT4"),
          {"C:\\WORK\\SHIFT4.V", "C:\\WORK\\OTHER", "C:\\WORK\\OTHER"},
          {"C:\\WORK\\SHIFT4.TXT", "", ""}}) {
        Doc.SetCaption(caption);
        State.sProject = project;
        Driver.RunVhdlCompile(Doc);
        EXPECT_EQ(State.sProject, expected) << caption << project;
        EXPECT_TRUE(Desk.Programs.Started.back().ends_with(" " + std::string(expected) + ".VHD-p16"));
    }
    EXPECT_EQ(Hall.Calls, std::vector<std::string>{"ShowProject"});
}

TEST_F(CompilerTest, PinsComeBackWithTheFileThatTheToolLeft) {
    const std::string tool = "C:\\K\\Korvane\\Utility\\", design = "C:\\WORK\\COUNT8";
    const std::tuple<BackPin, const char*, std::string> cases[] = {
        {BackPin::FloatAll, "&", tool + "backpin.exe -f virtual " + design},
        {BackPin::FloatAll, "G16V8", tool + "backpin.exe -fG16V8" + design},
        {BackPin::AssignAll, "", tool + "\\backpin.exe -b virtual " + design},
        {BackPin::AssignAll, "G16V8", tool + "\\backpin.exe -bG16V8" + design},
        {BackPin::AssignPins, "&", tool + "\\backpin.exe -p virtual " + design},
        {BackPin::AssignPins, "G16V8", tool + "\\backpin.exe -pG16V8" + design},
    };
    Doc.SetFile("C:\\WORK\\OTHER.PLD", "C:\\WORK\\OTHER.PLD");  // the active one, not the design
    Desk.Programs.OnWait = [&] { Files.Files["C:\\WORK\\OTHER.PLD"] = Desk.Programs.Started.back(); };
    for (const auto& [what, device, line] : cases) {
        State.DeviceName = device;
        RunBackPin(App, Doc, what);
        EXPECT_EQ(Doc.Box.Content, line);
    }
    EXPECT_EQ(Hall.Calls, std::vector<std::string>(6, "HighlightSyntax"));
    Files.FailReads = 75;
    Doc.Box.Content = "edited";
    RunBackPin(App, Doc, BackPin::FloatAll);
    EXPECT_EQ(Doc.Box.Content + Desk.Boxes.LastText(), "edited");
}

TEST_F(CompilerTest, TheFitterShortcutIsPatchedInPlace) {
    const std::string field = "C:\\K\\Shared\\cfitr.exe" + std::string(43, ' ');
    ASSERT_EQ(field.size(), 64u);
    const struct {
        std::string Before, After;
    } cases[] = {{std::string(35, 'a'), std::string(35, 'a')},
                 {std::string(36, 'a'), std::string(36, 'a') + field},
                 {std::string(120, 'a'), std::string(36, 'a') + field + std::string(20, 'a')}};
    PatchFitterPif(Files, State);
    EXPECT_EQ(Files.Files.at("C:\\K\\FITR.PIF"), "");
    for (const auto& c : cases) {
        Files.Files["C:\\K\\FITR.PIF"] = c.Before;
        PatchFitterPif(Files, State);
        EXPECT_EQ(Files.Files["C:\\K\\FITR.PIF"], c.After);
    }
    State.SharedDir = "C:\\" + std::string(80, 'x') + "\\";
    PatchFitterPif(Files, State);
    EXPECT_EQ(Files.Files["C:\\K\\FITR.PIF"].size(), 120u);
    Files.FailReads = 75;
    EXPECT_NO_THROW(PatchFitterPif(Files, State));
}

}  // namespace
}  // namespace toolchain
