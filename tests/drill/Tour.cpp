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
        ExpectSeen("0 mismatches", In::Captions);
        Station("status");
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
        MenuByMouse({"&File", "&Export "});
        WaitWindow("Export Files");  // frmExport
        Click("EDIF");
        Station("export");
        Key("Escape");
        WaitGone("Export Files");
    }

    void ShowWaves() {
        Say("simulating it (F7), its results as waves");
        Menu({"&Options", "&Simulator"});
        WaitWindow("Simulator Options");
        Click("Display Results");
        Key("Return");
        WaitGone("Simulator Options");
        Key("F7");
        AcknowledgeRun();
        WaitWindow("Wavrik");
        ExpectSeen("No mismatches");
        Station("waves");
        Key("alt+F4");
        WaitGone("Wavrik");
    }

    void ShowProject() {
        Say("its project: the files that were written, one of them opened, a new design");
        Station("project");  // frmProject
        DoubleClick("COUNT8.SI", In::Messages);
        Answer("Open With Wavrik ...", "Open the Simulator Input file with Wavrik?", "&No");
        ExpectActive(CaptionOf("COUNT8.SI"));
        Key("ctrl+F4");
        MenuByMouse({"&File", "&New", "&Design File"});
        WaitWindow("Design Properties");  // frmNewDesign
        Type("Adder");
        Station("new-design");
        Key("Return");
        for (const char* title : {"INPUT PINS", "OUTPUT PINS", "PINNODES"}) {
            WaitWindow(title);
            Type("2\n");
        }
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
        ExpectSeen("1001ta");
        Station("message-explained");
        Key("Return");
        WaitGone("Compile Message");
    }

    void ShowOptions() {
        Say("the compiler's options, tab by tab");
        Menu({"&Options", "&Compiler"});
        WaitWindow("Compiler Options");  // frmCompiler
        const std::pair<const char*, const char*> tabs[] = {{"output-files", "JEDEC/POF/PRG"},
                                                            {"minimization", "Quine-McCluskey"},
                                                            {"optimization", "Best For Polarity"},
                                                            {"general", "Secure Device"},
                                                            {"library", "Library"}};
        for (const auto& [name, seen] : tabs) {
            ExpectSeen(seen);
            Station(std::string("options-") + name);
            Key("ctrl+Tab");
        }
        Key("Escape");
        WaitGone("Compiler Options");
        Say("the options of the simulator and of the VHDL compiler");
        Menu({"&Options", "&Simulator"});
        WaitWindow("Simulator Options");  // frmSimulator
        Station("options-simulator");
        Key("Escape");
        WaitGone("Simulator Options");
        Menu({"&Options", "&VHDL"});
        WaitWindow("VHDL Options");  // frmVhdl
        Station("options-vhdl");
        Key("ctrl+Tab");
        ExpectSeen("Always Close");
        Station("options-vhdl-debug");
        Key("Escape");
        WaitGone("VHDL Options");
    }

    void ShowSettings() {
        Say("the settings of Korvane itself");
        Menu({"&Options", "&Korvane"});
        WaitWindow("KORVANE Settings");  // frmKorvane
        const std::array<const char*, 3> tabs[] = {{"general", "General", "Working Directory:"},
                                                   {"tools", "Tools", "Programmer"},
                                                   {"syntax", "Syntax", "Sample $ELSE"},
                                                   {"fonts", "Fonts", "Message Window"}};
        for (const auto& [name, tab, seen] : tabs) {
            Click(tab);
            ExpectSeen(seen);
            Station(std::string("settings-") + name);
        }
        Click("Tools");
        Click("&Add Tool");
        WaitWindow("Add Utility");  // frmUtility
        Station("settings-tool");
        Key("Escape");
        WaitGone("Add Utility");
        Click("General");
        Click("&Browse...");
        WaitWindow("Select Directory");  // frmSelectDirectory
        Station("settings-directory");
        Key("Escape");
        WaitGone("Select Directory");
        Key("Escape");
        WaitGone("KORVANE Settings");
    }

    void ShowDevices() {
        Say("the devices");
        Menu({"&Options", "&Devices"});
        WaitWindow("Device Selection");  // frmDevices
        Click("Lattice Semiconductor");
        ExpectSeen("GAL16V8");
        Station("devices");
        Key("Escape");
        WaitGone("Device Selection");
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
        Key("ctrl+F9");
        AcknowledgeRun();
        Menu({"&Utilities", "&Zonerex", "&Setup Zonerex"});
        WaitWindow("Zonerex Fitting Parameters");  // frmZrxParams
        const std::pair<const char*, const char*> tabs[] = {{"fitting", "Split product terms"},
                                                            {"files", "Generate PLD files"},
                                                            {"priority", "Sort based on cost"},
                                                            {"devices", "G16V8A"}};
        for (const auto& [name, seen] : tabs) {
            ExpectSeen(seen);
            Station(std::string("partition-") + name);
            if (seen != tabs[3].second) Key("ctrl+Tab");
        }
        for (const char* device : {"G16V8A", "G22V10", "P22V10"}) Click(device);
        Click("OK");
        WaitGone("Zonerex Fitting Parameters");
        Menu({"&Utilities", "&Zonerex", "&Run Zonerex"});
        WaitWindow("Zonerex");  // frmZonerex
        Click("Find Solutions");
        Click("Fit Selection");
        ExpectSeen("Written: WIDE_1.PLD");
        Station("partition-solutions");
        Key("Escape");
        WaitGone("Zonerex");
        Menu({"&Utilities", "&Zonerex", "Zonerex &Database"});
        WaitWindow("Zonerex Database Editor");  // frmZrxEditor
        Station("partition-library");
        Key("Escape");
        WaitGone("Zonerex Database Editor");
    }

    void ShowAbout() {
        Say("what it is (Help, About)");
        Menu({"&Help", "&About"});
        WaitWindow("About Korvane");  // frmAbout
        ExpectSeen("Version 5.0.0");
        Station("about");
        Key("Escape");
        WaitGone("About Korvane");
    }

    void ShowHelp() {
        Say("help at a topic, and a search in it");
        Menu({"&Options", "&Simulator"});
        WaitWindow("Simulator Options");
        Key("F1");
        WaitWindow("Korvane Help");  // frmHelp
        Station("help-topic");
        Key("alt+s");
        Type("fuse map\n");
        Station("help-search");
        Key("Escape");
        WaitGone("Korvane Help");
        Key("Escape");
        WaitGone("Simulator Options");
    }

    void ShowSearches() {
        Say("find and replace");
        Key("ctrl+f");
        WaitWindow("Find Text");  // frmFindText
        ExpectSeen("Entire scope");
        Station("find");
        Key("Escape");
        WaitGone("Find Text");
        Key("ctrl+r");
        WaitWindow("Replace Text");  // frmReplace
        ExpectSeen("Prompt on replace");
        Station("replace");
        Key("alt+F4");
        WaitGone("Replace Text");
    }

    void Print() {
        Say("printing it");
        Key("ctrl+p");
        WaitWindow("Print");
        ExpectSeen("Print all");
        Station("print");
        Key("Escape");
        WaitGone("Print");
    }

    void ShowTable() {
        Say("a truth table");
        Menu({"&Edit", "Insert T&able"});
        WaitWindow("Create Table");  // frmTable
        Type("[a31..0]\t32\t[y31..0]\t32\t500\t");
        Click("One Hot Right");
        Station("table");
        Key("shift+Tab");
        Key("Up", 2);
        Station("table-14-points");
        Click("Cancel");
        WaitGone("Create Table");
    }

    void ShowMacros() {
        Say("the macros of the language");
        Write("MACROS.PLD", "PIN 1 = CLK ;\r\n$MACRO INV y a\r\ny = !a ;\r\n$MEND\r\n");
        Open("MACROS.PLD");
        Menu({"&Edit", "Insert TESK Macro &Definition"});
        WaitWindow("Insert Macro Definition");  // frmMacroDef
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
        Station("macro-create");
        Key("Escape");
        WaitGone("Create Tesk Macro");
        Key("Escape");
        WaitGone("Insert Macro Definition");
        Key("ctrl+i");
        WaitWindow("Insert Macro Reference");  // frmMacroRef
        Key("Down");
        Click("y:NC");
        ExpectSeen("a:NC");
        Station("macro-reference");
        Key("Escape");
        WaitGone("Insert Macro Reference");
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
    void Say(const std::string& what) { std::printf("  %s\n", what.c_str()); }

    void Station(const std::string& name) {
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
