#include <gtest/gtest.h>

#include <QLineEdit>
#include <memory>

#include "editor/HighlightTables.h"
#include "editor/frmKorvane.h"
#include "editor/frmSelectDirectory.h"
#include "editor/frmUtility.h"
#include "platform/qt/HostFileSystem.h"
#include "support/FormUser.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

struct FontDocument : doubles::Document {
    struct NotingBox : doubles::PlainTextBox {
        void SetDefaultFont(const std::string& name, double size) override {
            Font = name + " " + std::to_string(static_cast<int>(size));
        }
        void SetSelColor(std::int32_t color) override { Font += " " + std::to_string(color); }
        std::string Font;
    };
    platform::RichTextBox& txtText() override { return Text; }
    NotingBox Text;
};

struct SettingsWindow : testing::Test, doubles::Bench<doubles::MemoryFiles>, doubles::FormUser {
    SettingsWindow() {
        State.WorkDir = "C:\\WORK";
        State.SchematicTools = {{"Protel For Windows", 1}, {"Tango", 4}};
        State.SchematicTool = "Tango";
        State.HighlightEnabled = true;
        State.Delimiters = editor::MakeDelimiters();
        State.EditorFont = {.Name = "Arial", .Size = 10, .Bold = true, .Italic = true, .ForeColor = 0xFF0000};
        State.StdUtils[0].Name = "Calculator";
        State.StdUtils[6] = {.Program = "p", .Name = "Programmer", .Toolbar = true};
    }
    void Open(const char* tab) {
        Window = std::make_unique<editor::frmKorvane>(App);
        Use(*Window);
        ClickTab("SSTab1", tab);
    }
    std::string CustomTools() const {
        std::string tools;
        for (const session::CustomUtility& tool : State.CustUtils)
            tools += tool.Program + ":" + tool.Name + (tool.Menu ? "m" : "") + (tool.Toolbar ? "t|" : "|");
        return tools;
    }
    std::string Words() const {
        std::string words;
        for (const session::KeywordRec& word : State.Keywords)
            words += word.Name + (word.Color == 0 ? " " : ":" + std::to_string(word.Color) + " ");
        return words;
    }
    // "+X" adds the word, "-n" removes line n, "an" applies light red to it, "d" takes the defaults.
    void Do(const std::string& step) {
        if (step[0] == 'd') return Click("Defaults");
        if (step[0] == '+') {
            Desk.Boxes.Inputs = {step.substr(1)};
            return Click("AddWord");
        }
        ClickLine("KeywordList", step[1] - '0');
        if (step[0] == '-') return Click("DelWord");
        ClickEach({"Colors12", "Apply"});
    }

    std::unique_ptr<QDialog> Window;
};

const char* operatorText =
    "A keyword cannot contain or be a TESK language operator or any character that cannot be used in a TESK "
    "variable name.";

}  // namespace

TEST_F(SettingsWindow, EditsTheKeywordTable) {
    const struct {
        std::vector<std::string> Steps;
        const char* List;
        const char* Table;
        const char* Said = "";
    } rows[] = {
        {{}, "$A|B|C|", "$A:1 B:2 C:3 "},
        {{"+ New "}, "$A|B|C|New|", "$A:1 B:2 New  "},           // in the place of the last, and an empty one
        {{"+New", "+b"}, "$A|B|C|New|b|", "$A:1 B:2 b  "},       // the second overwrites the first
        {{"+New", "a3"}, "$A|B|C|*New|", "$A:1 B:2 New :255 "},  // its line is the empty entry
        {{"+New", "a2"}, "$A|B|*C|New|", "$A:1 B:2 New:255  "},
        {{"+ "}, "$A|B|C|C|", "$A:1 B:2 C:3 "},
        {{"+", "-3", "a3"}, "$A|B|C|*C|", "$A:1 B:2 C:3 "},  // a line without an entry
        {{"+$X"}, "$A|B|C|", "$A:1 B:2 C:3 ", operatorText},
        {{"+A&B"}, "$A|B|C|", "$A:1 B:2 C:3 ", operatorText},
        {{"+\xC3\xA9"}, "$A|B|C|", "$A:1 B:2 C:3 ", operatorText},
        {{"-1"}, "$A|C|", "$A:1 C:3 "},
        {{"-1", "-0"}, "C||", "C:3  "},  // the size of the global table less one
        {{"-1", "+"}, "$A|C|", "$A:1 C:3 "},
        {{"-1", "+N"}, "$A|C|N|", "$A:1 C:3 N  "},
        {{"+N", "-0"}, "B|N||", "B:2 N  "},
        {{"-0", "a0", "d"}, "$A|B|C|", "$A:1 B:2 C:3 "},
        {{"a1"}, "$A|*B|C|", "$A:1 B:255 C:3 "},
    };
    for (const auto& row : rows) {
        const std::string about = testing::PrintToString(row.Steps);
        State.Keywords = {{.Name = "$A", .Color = 1}, {.Name = "B", .Color = 2}, {.Name = "C", .Color = 3}};
        Desk.Boxes.Shown.clear();
        Open("Syntax");
        EXPECT_EQ(Texts({"txtSample", "txtCurrent"}), "Sample B|Current B|");
        for (const std::string& step : row.Steps) Do(step);
        EXPECT_EQ(Text("KeywordList"), row.List) << about;
        EXPECT_EQ(Words(), "$A:1 B:2 C:3 ") << about;
        Click("OK");
        EXPECT_EQ(Words(), row.Table) << about;
        EXPECT_EQ(Desk.Boxes.LastText(), row.Said) << about;
    }
}

TEST_F(SettingsWindow, AStyleIsLostWithoutApplyAndTheSwitchWorksAtOnce) {
    State.Keywords = {{.Name = "A"}, {.Name = "B"}};
    const auto style = [&](const char* name) {
        const auto& text = Control<QLineEdit>(name);
        return text.palette().color(QPalette::Text).name().toStdString() + (text.font().bold() ? "b" : "") +
               (text.font().italic() ? "i" : "") + (text.font().underline() ? "u" : "");
    };
    Open("Syntax");
    ClickLine("KeywordList", 0);
    ClickEach({"Colors9", "Bold", "Underline"});
    EXPECT_EQ(style("txtSample") + style("txtCurrent"), "#0000ffbu#000000");
    Click("Apply");
    EXPECT_EQ(style("txtCurrent"), "#0000ffbu");
    ClickEach({"Colors4", "Italic"});
    EXPECT_EQ(style("txtSample"), "#800000biu");
    ClickLine("KeywordList", 0);
    EXPECT_EQ(style("txtSample"), "#0000ffbu");
    Click("EnableHighlight");
    EXPECT_FALSE(State.HighlightEnabled || Control("Apply").isEnabled() || Control("Colors0").isEnabled());
    Key(Qt::Key_Escape);
    EXPECT_FALSE(State.HighlightEnabled);
    EXPECT_FALSE(State.Keywords[0].Bold);
    Open("Syntax");
    EXPECT_FALSE(Control("KeywordList").isEnabled());
}

TEST_F(SettingsWindow, KeepsSixCustomToolsAndNumbersMacros) {
    const std::string full = "You can have a maximum of 6 custom utilities.";
    const auto addTool = [&](const char* program, const char* name) {
        Drive([&] { Click("Add"); }, {{"frmUtility", "OK", [=, this] {
                                           Click("OK");
                                           EXPECT_EQ(Desk.Boxes.LastText(),
                                                     "You must select a program file or Cancel to close.");
                                           Type(program);
                                           Click("OK");
                                           EXPECT_EQ(Desk.Boxes.LastText(),
                                                     "You must assign a name for the menu or toolbar tip or "
                                                     "press Cancel to close.");
                                           Type(name);
                                           Key(Qt::Key_Return);
                                       }}});
    };
    Open("Tools");
    EXPECT_FALSE(Control("Edit").isEnabled() || Control("Remove").isEnabled() ||
                 Control("TBCustom").isEnabled());
    ClickEach({"Macro", "TBCustom"});
    EXPECT_FALSE(Control("Edit").isEnabled());
    addTool("x -a", "R&D");
    EXPECT_EQ(Text("lstCustom"), "*Macro 1|R&D|");
    ClickEach({"Macro", "MenuCustom", "Macro"});
    Drive([&] { Click("Add"); }, {{"frmUtility", "OK", [&] { Click("Cancel"); }}});
    addTool("y", "Calculator");
    Click("Macro");
    for (const char* control : {"Add", "Macro"}) {
        Desk.Boxes.Shown.clear();
        Click(control);
        EXPECT_EQ(Desk.Boxes.LastText(), full) << control;
    }
    ClickLine("lstCustom", 0);
    EXPECT_EQ(Text("lstCustom"), "*Macro 1|R&D|Macro 2|Macro 3|Calculator|Macro 4|");
    Click("Remove");
    EXPECT_EQ(Text("lstCustom"), "*R&D|Macro 1|Macro 2|Calculator|Macro 3|");
    ClickEach({"MenuCalculator", "TBProg"});
    Click("OK");
    EXPECT_EQ(
        Desk.Boxes.LastText(),
        "The custom utility Calculator must be changed, this is a reserved name for a standard utility.");
    EXPECT_EQ(CustomTools() + (State.StdUtils[6].Toolbar ? "t" : ""), ":|:|:|:|:|:|t");
    ClickLine("lstCustom", 3);
    Desk.Boxes.Files = {"C:\\TOOLS\\CALC2.EXE"};
    Drive([&] { Click("Edit"); }, {{"frmUtility", "OK", [&] {
                                        EXPECT_EQ(Texts({"Program", "ProgramName"}), "y|Calculator|");
                                        ClickEach({"Browse", "OK"});
                                    }}});
    ClickEach({"TBCustom", "OK"});
    EXPECT_EQ(CustomTools(),
              "x -a:R&D|MACRO*:Macro 1m|MACRO*:Macro 2|C:\\TOOLS\\CALC2.EXE:CALC2t|MACRO*:Macro 3|:|");
    EXPECT_TRUE(State.StdUtils[0].Menu && !State.StdUtils[6].Toolbar);
}

TEST_F(SettingsWindow, GivesTheFontsToTheOpenWindows) {
    FontDocument design, text;
    design.SetCaption("C:\\A.PLD");
    text.SetCaption("Untitled 1");
    text.ID = 1;
    for (auto* document : {&design, &text}) State.Documents.Add(*document);
    State.sProject = "C:\\A";
    for (const char* button : {"Cancel", "OK"}) {
        Open("Fonts");
        EXPECT_EQ(Text("EFontDesc"), "Arial-10pt Bold Italic");
        EXPECT_EQ(Control("EFontDesc").palette().color(QPalette::Text).name().toStdString(), "#0000ff");
        Desk.Boxes.Fonts = {platform::FontChoice{.Name = "No Such Font", .Size = 11.5, .Color = 7}, {}};
        Click("ChooseEFont");
        Click("ChooseEFont");  // and cancelled
        EXPECT_EQ(Text("EFontDesc"), "No Such Font-12pt");
        EXPECT_TRUE(Hall.Calls.empty() && State.EditorFont.Name == "Arial");
        Click(button);
    }
    EXPECT_EQ(Hall.Calls,
              (std::vector<std::string>{"ResetMessageFont", "ResetProjectFont", "HighlightSyntax"}));
    EXPECT_EQ(design.Text.Font + "|" + text.Text.Font, "No Such Font 12 7|No Such Font 12 7");
}

TEST_F(SettingsWindow, ChoosesTheWorkingDirectoryByItsFolders) {
    const doubles::TemporaryFolder place;
    for (const char* file : {"Work/b/x", "Work/B2/x", "Work/a/deep/x", "Work/.hidden/x"})
        place.Write(file, "");
    platform::qt::HostFileSystem disk{platform::PathMap(place.Path())};
    doubles::Desktop desk{disk};
    session::App app{State, desk.Host, Hall};
    disk.SetCurrentDirectory("C:\\Work");
    Window = std::make_unique<editor::frmKorvane>(app);
    Use(*Window);
    Drive([&] { Click("Browse"); }, {{"frmSelectDirectory", "OK", [&] {
                                          EXPECT_EQ(Text("DirList"),
                                                    "C:\\|*   Work|      a|      b|      B2|");
                                          ClickLine("DirList", 2, true);
                                          TabTo("DirList");
                                          Key(Qt::Key_Down);
                                          Key(Qt::Key_Return);
                                          Click("OK");
                                      }}});
    EXPECT_EQ(Text("txtWorking"), "C:\\Work\\a\\deep");
    Click("OK");
    EXPECT_EQ(State.WorkDir + State.SchematicTool, "C:\\Work\\a\\deepTango");
}

TEST_F(SettingsWindow, ShowsItsCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<editor::frmKorvane>(App), "");
    EXPECT_EQ(doubles::FormFaults<editor::frmUtility>(Desk.Boxes, "", ""), "");
    EXPECT_EQ(doubles::FormFaults<editor::frmSelectDirectory>(Files, "C:"), "");
}
