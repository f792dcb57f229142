#include <QGuiApplication>
#include <array>
#include <cstdio>
#include <filesystem>
#include <regex>

#include "drill/support/Desk.h"

// drill_tour INSTALLATION PICTURES: shows a copy of the installed program at work on a virtual display, says
// what it does and leaves a picture of each station. Each station looks that it is what it says: 1 if not.

namespace {

using drill::In;

class Tour : public drill::Desk {
  public:
    Tour(const std::string& installation, const std::string& pictures)
        : Desk(installation, pictures, "failed") {
        SetSpeed(30);
    }

    int Stations = 0;

    void OpenDesign() {
        Say("opening COUNT8.PLD");
        Write("COUNT8.PLD", Read(".place/Examples/COUNT8.PLD"));
        Write("COUNT8.SI", Read(".place/Examples/COUNT8.SI"));
        Start();
        Station("first-run");
        Open("COUNT8.PLD");
        ExpectSeen("FIELD", In::Document);
        ExpectButton("dep-comp", true);
        Station("design");
    }

    void Compile() {
        Say("compiling it (F9)");
        Key("F9");
        WaitWindow("Compilation Results");  // frmStatus
        Station("status", "0 mismatches");
        AcknowledgeRun();
        ExpectSeen("[4000tc] Written: COUNT8.DOC", In::Messages);  // frmMessage
        Station("messages");
        for (const char* name : {"COUNT8.LST", "COUNT8.DOC", "COUNT8.ABS", "COUNT8.PLA", "COUNT8.JED"}) {
            Require(!Read(name).empty(), std::string(name) + " was not written");
            Say(std::string("written: ") + name + " (" + std::to_string(Read(name).size()) + " bytes)");
        }
    }

    void ShowExport() {
        Say("the files for other tools");
        MenuByMouse({"&File", "&Export "}, "Export Files");  // frmExport
        Click("EDIF");
        Last("Export Files", "export");
    }

    void ShowWaves() {
        Say("simulating it (F7), its results as waves");
        Menu({"&Options", "&Simulator"}, "Simulator Options");
        Click("Display Results");
        KeyAway("Simulator Options", "Return");
        RunAndWait("F7");
        WaitWindow("Wavrik");
        Station("waves", "No mismatches");
        KeyAway("Wavrik", "alt+F4");
    }

    void ShowProject() {
        Say("its project: the files that were written, one of them opened, a new design");
        Station("project");  // frmProject
        DoubleClick("COUNT8.SI", In::Messages);
        Answer("Open With Wavrik ...", "Open the Simulator Input file with Wavrik?", "&No");
        ExpectActive(CaptionOf("COUNT8.SI"));
        Key("ctrl+F4");
        MenuByMouse({"&File", "&New", "&Design File"}, "Design Properties");  // frmNewDesign
        Type("Adder");
        Station("new-design");
        Key("Return");
        for (const char* title : {"INPUT PINS", "OUTPUT PINS", "PINNODES"}) AnswerInput(title, "2");
        WaitGone("Design Properties");
        Station("skeleton");
        Key("ctrl+F4");
        Answer("Save File", "Save changes to", "&No");
    }

    void ReadAMessage() {
        Say("compiling a design with an error");
        Write("WRONG.PLD", "Name Wrong;\r\nDevice G16V8;\r\nPIN 2 = A;\r\nPIN 19 = Y;\r\nY = A & (B;\r\n");
        Open("WRONG.PLD");
        Key("F9");
        WaitWindow("Project");
        Station("project-question");
        Answer("Project", "The current PLD file is not part of the current project.", "&Yes");
        AcknowledgeRun();
        Station("two-documents");
        Say("reading a message (a click on a line of the list)");
        Click("Error: Statement not understood", In::Messages);
        WaitWindow("Compile Message");  // frmErrorMessage
        Station("message-explained", "1001ta");
        KeyAway("Compile Message", "Return");
    }

    void ShowOptions() {
        Say("the compiler's options, tab by tab");
        Menu({"&Options", "&Compiler"}, "Compiler Options");  // frmCompiler
        Tabs({{"options-output-files", "JEDEC/POF/PRG"},
              {"options-minimization", "Quine-McCluskey"},
              {"options-optimization", "Best For Polarity"},
              {"options-general", "Secure Device"},
              {"options-library", "Library"}});
        KeyAway("Compiler Options");
        Say("the options of the simulator and of the VHDL compiler");
        Menu({"&Options", "&Simulator"}, "Simulator Options");  // frmSimulator
        Last("Simulator Options", "options-simulator");
        Menu({"&Options", "&VHDL"}, "VHDL Options");  // frmVhdl
        Station("options-vhdl");
        Key("ctrl+Tab");
        Last("VHDL Options", "options-vhdl-debug", "Always Close");
    }

    void ShowSettings() {
        Say("the settings of Korvane itself");
        Menu({"&Options", "&Korvane"}, "KORVANE Settings");  // frmKorvane
        const std::array<const char*, 3> tabs[] = {{"general", "General", "Working Directory:"},
                                                   {"tools", "Tools", "Programmer"},
                                                   {"syntax", "Syntax", "Sample $ELSE"},
                                                   {"fonts", "Fonts", "Message Window"}};
        for (const auto& [name, tab, seen] : tabs) {
            Click(tab);
            Station(std::string("settings-") + name, seen);
        }
        Click("Tools");
        ClickFor("Add Utility", "&Add Tool");  // frmUtility
        Last("Add Utility", "settings-tool");
        Click("General");
        ClickFor("Select Directory", "&Browse...");  // frmSelectDirectory
        Last("Select Directory", "settings-directory");
        KeyAway("KORVANE Settings");
    }

    void ShowDevices() {
        Say("the devices");
        Menu({"&Options", "&Devices"}, "Device Selection");  // frmDevices
        Click("Lattice Semiconductor");
        Last("Device Selection", "devices", "GAL16V8");
    }

    void Partition() {
        Say("a design over several devices");
        Write("WIDE.PLD",
              "Name Wide;\r\nDevice G16V8;\r\nPIN = [A7..0];\r\nPIN = [Y15..0];\r\n"
              "[Y15..8] = [A7..0] & A0;\r\n[Y7..0] = [A7..0] # A1;\r\n");
        Open("WIDE.PLD");
        Key("F9");
        Answer("Project", "The current PLD file is not part of the current project.", "&Yes");
        AcknowledgeRun();
        RunAndWait("ctrl+F9");
        Menu({"&Utilities", "&Zonerex", "&Setup Zonerex"}, "Zonerex Fitting Parameters");  // frmZrxParams
        Tabs({{"partition-fitting", "Split product terms"},
              {"partition-files", "Generate PLD files"},
              {"partition-priority", "Sort based on cost"},
              {"partition-devices", "G16V8A"}});
        ClickEach({"G16V8A", "G22V10", "P22V10"});
        ClickAway("Zonerex Fitting Parameters");
        Menu({"&Utilities", "&Zonerex", "&Run Zonerex"}, "Zonerex");  // frmZonerex
        ClickEach({"Find Solutions", "Fit Selection"});
        Last("Zonerex", "partition-solutions", "Written: WIDE_1.PLD");
        Menu({"&Utilities", "&Zonerex", "Zonerex &Database"}, "Zonerex Database Editor");  // frmZrxEditor
        Last("Zonerex Database Editor", "partition-library");
    }

    void ShowAbout() {
        Say("what it is (Help, About)");
        Menu({"&Help", "&About"}, "About Korvane");  // frmAbout
        Last("About Korvane", "about", "Version 5.0.0");
    }

    void ShowHelp() {
        Say("help at a topic, and a search in it");
        Menu({"&Options", "&Simulator"}, "Simulator Options");
        KeyFor("Korvane Help", "F1");  // frmHelp
        Station("help-topic");
        Key("alt+s");
        Type("fuse map\n");
        Last("Korvane Help", "help-search");
        KeyAway("Simulator Options");
    }

    void ShowSearches() {
        Say("find and replace");
        KeyFor("Find Text", "ctrl+f");  // frmFindText
        Last("Find Text", "find", "Entire scope");
        KeyFor("Replace Text", "ctrl+r");  // frmReplace
        Station("replace", "Prompt on replace");
        KeyAway("Replace Text", "alt+F4");
    }

    void Print() {
        Say("printing it");
        KeyFor("Print", "ctrl+p");
        Last("Print", "print", "Print all");
    }

    void ShowTable() {
        Say("a truth table");
        Menu({"&Edit", "Insert T&able"}, "Create Table");  // frmTable
        Type("[a31..0]\t32\t[y31..0]\t32\t500\t");
        Click("One Hot Right");
        Station("table");
        Key("shift+Tab Up Up");
        Station("table-14-points");
        ClickAway("Create Table", "Cancel");
    }

    void ShowMacros() {
        Say("the macros of the language");
        Write("MACROS.PLD", "PIN 1 = CLK ;\r\n$MACRO INV y a\r\ny = !a ;\r\n$MEND\r\n");
        Open("MACROS.PLD");
        Menu({"&Edit", "Insert TESK Macro &Definition"}, "Insert Macro Definition");  // frmMacroDef
        Click("Insert macro definitions");
        Key("alt+a");
        Station("macro-definition");
        Key("alt+n");
        for (const char* answer : {"PAIR\n", "2\n", "y\n", "a\n"}) {
            WaitWindow("New Tesk Macro");
            Type(answer);
        }
        WaitWindow("Create Tesk Macro");  // frmMacroCreate
        Type("y = a ;");
        Last("Create Tesk Macro", "macro-create");
        KeyAway("Insert Macro Definition");
        KeyFor("Insert Macro Reference", "ctrl+i");  // frmMacroRef
        Key("Down");
        Click("y:NC");
        Last("Insert Macro Reference", "macro-reference", "a:NC");
        Key("ctrl+F4");
    }

    void ShowAllTools() {
        Say("closing, and starting again with every tool on the toolbar");
        Key("alt+F4");
        ExpectEnd();
        const std::string file = ".home/config/korvane/settings.ini";
        std::string settings = Read(file);
        const std::pair<const char*, const char*> changes[] = {
            {"(StdUtil[0-6][MT])=number:[0-9]+", "$1=number:4294967295"},
            {"(CustUtil[0-5][MT])=number:[0-9]+", "$1=number:4294967295"},
            {"CustUtil([0-5])P=[^\n]*", "CustUtil$1P=\"tool$1\""},
            {"CustUtil([0-5])N=[^\n]*", "CustUtil$1N=\"My tool $1\""}};
        for (const auto& [pattern, value] : changes)
            settings = std::regex_replace(settings, std::regex(pattern), value);
        Write(file, settings);
        Start();
        Open("COUNT8.PLD");
        for (const char* tool :
             {"calculator", "explorer", "dos", "stavrik", "schematic", "wavrik", "programmer", "custom-tool"})
            ExpectButton(tool, true);
        Station("all-tools");
        ShowQuarters();
        Key("alt+F4");
        ExpectEnd();
    }

    void ShowQuarters() {
        Say("the tools in the quarters of the screen (Utilities, Tesk Tools)");
        Button("wavrik");
        ExpectWindows({"Korvane", "Wavrik"});
        MenuByMouse({"&Utilities", "&Tesk Tools"});
        Station("quarters");  // Wavrik stays open, as companions do
    }

  private:
    // The window goes after it.
    void Last(const std::string& window, const std::string& name, const std::string& seen = "") {
        Station(name, seen);
        KeyAway(window);
    }

    // Stations with what is seen there, from one tab to the next.
    void Tabs(const std::vector<std::pair<std::string, std::string>>& stations) {
        for (const auto& [name, seen] : stations) {
            if (name != stations.front().first) Key("ctrl+Tab");
            Station(name, seen);
        }
    }

    void Say(const std::string& what) { std::printf("  %s\n", what.c_str()); }

    void Station(const std::string& name, const std::string& seen = "") {
        if (!seen.empty()) ExpectSeen(seen);
        const std::string number = std::to_string(++Stations);
        const std::string file = (number.size() < 2 ? "0" : "") + number + "-" + name;
        TakePicture(file);
        Say("picture: " + file + ".png");
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return std::fputs("usage: drill_tour INSTALLATION PICTURES\n", stderr), 2;
    if (!drill::Screen::IsPossible()) return std::fputs("tour: no virtual display here\n", stderr), 1;
    drill::PrepareToDraw();
    const QGuiApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    try {
        for (const auto& old : std::filesystem::directory_iterator(argv[2]))
            if (old.path().extension() == ".png") std::filesystem::remove(old.path());
        Tour tour(argv[1], argv[2]);
        tour.OpenDesign();
        tour.ShowSearches();
        tour.Print();
        tour.ShowTable();
        tour.Compile();
        tour.ShowExport();
        tour.ShowWaves();
        tour.ShowProject();
        tour.ReadAMessage();
        tour.ShowOptions();
        tour.ShowSettings();
        tour.ShowDevices();
        tour.ShowAbout();
        tour.ShowHelp();
        tour.ShowMacros();
        tour.Partition();
        tour.ShowAllTools();
        std::printf("  done: %d pictures in %s\n", tour.Stations, argv[2]);
    } catch (const std::exception& miss) {
        std::fprintf(stderr, "tour: %s\n", miss.what());
        return 1;
    }
    return 0;
}
