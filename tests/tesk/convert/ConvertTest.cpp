#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <random>
#include <regex>

#include "Support.h"
#include "convert/Converters.h"

// Converters by truth: what they write is compiled, and the functions are compared.
namespace {

using Point = std::map<std::string, bool>;

convert::Conversion Convert(const std::string& converter, const std::string& text) {
    if (converter == "PLA2TESK") return convert::ConvertPla(text, "T");
    if (converter == "PTOT") return convert::ConvertPalasm(text, "T");
    if (converter == "ONTESK") return convert::ConvertOntesk(text, "T");
    if (converter == "TDF2TESK") return convert::ConvertAhdl(text, "T");
    return convert::ConvertNetlist(text, "T", DataText("Nettrel/NTR.LIB"));
}

// The compiled table of a foreign text, for no device.
Table Compiled(const std::string& converter, const std::string& text) {
    try {
        const std::string design = Convert(converter, text).Text;
        const auto compiled = CompileWhole(design, "bm0");
        const auto table = compiled->Files.Texts.find("T.PLA");
        if (table != compiled->Files.Texts.end()) return Table(table->second);
        ADD_FAILURE() << design << (compiled->Lines().empty() ? "" : compiled->Lines().front());
    } catch (const convert::Failure& failure) {
        ADD_FAILURE() << converter << " line " << failure.Line << ": " << failure.What;
    }
    return Table("");
}

Point RandomPoint(const Table& table, std::mt19937& random) {
    Point point;
    for (const std::string& input : table.Inputs) point[input] = random() % 2 != 0;
    return point;
}

struct Row {
    std::string In, Out;
};

// What a table says of an output at a point, told row by row.
char Told(const std::vector<Row>& rows, const std::string& type, const std::string& in, std::size_t output) {
    bool on = false, off = false, open = false;
    for (const Row& row : rows) {
        bool holds = true;
        for (std::size_t i = 0; i < in.size(); ++i) holds = holds && (row.In[i] == '-' || row.In[i] == in[i]);
        on = on || (holds && row.Out[output] == '1');
        off = off || (holds && row.Out[output] == '0');
        open = open || (holds && row.Out[output] == '-');
    }
    if (on) return '1';
    return (type == "fd" && open) || (type == "fr" && !off) ? '-' : '0';
}

TEST(Pla, MeansTheSameWhenCompiled) {
    // Names in order, against it with holes, that change, inputs of a register, none; and what becomes of
    // them.
    const std::vector<std::pair<std::string, std::vector<std::string>>> names{
        {".ilb A0 A1 A2 A3 A4\n.ob Y0 Y1 Y2", {"A0", "A1", "A2", "A3", "A4", "Y0", "Y1", "Y2"}},
        {".ilb D9 D7 D5 D3 D1\n.ob Y2 Y0 Y7\n.phase 011", {"D9", "D7", "D5", "D3", "D1", "Y2", "Y0", "Y7"}},
        {".ilb a<1> a[0] PIN 3 a1\n.ob Q0.D Q0.C Q1.D",
         {"a1", "a0", "PIN_", "N3", "a1_a", "Q0.D", "Q0.CK", "Q1.D"}},
        {"#$ PINS 2 u:3 v:19\n.ilb u v w Q.Q x.PIN\n.ob Q.D Q.AR v.OE",
         {"u", "v", "w", "Q", "x", "Q.D", "Q.AR", "v.OE"}},
        {"", {"I0", "I1", "I2", "I3", "I4", "O0", "O1", "O2"}}};
    std::mt19937 random(7);
    for (const std::string type : {"f", "fd", "fr"}) {
        for (const auto& [lines, columns] : names) {
            std::vector<Row> rows;
            for (int row = 0; row < 6; ++row) {
                Row made;
                for (int i = 0; i < 5; ++i) made.In += "01-"[random() % 3];
                // On and off may not meet: an output is on where the first input is 1.
                for (int o = 0; o < 3; ++o)
                    made.Out += type == "fr" ? (random() % 3 == 0 ? '-' : made.In[0]) : "01-"[random() % 3];
                rows.push_back(made);
            }
            std::string text = ".i 5\n.o 3\n.type " + type + "\n" + lines + "\n";
            for (const Row& row : rows) text += row.In + " " + row.Out + "\n";
            const Table table = Compiled("PLA2TESK", text + ".e\n");
            ASSERT_FALSE(table.Outputs.empty()) << text;
            for (int value = 0; value < 32; ++value) {
                std::string in;
                Point point;
                for (std::size_t i = 0; i < 5; ++i) {
                    in += (value >> i & 1) != 0 ? '1' : '0';
                    point[columns[i]] = (value >> i & 1) != 0;
                }
                for (std::size_t o = 0; o < 3; ++o) {
                    char told = Told(rows, type, in, o);
                    const bool isComplement = o == 0 && lines.ends_with(".phase 011");
                    if (isComplement && told == '-') continue;  // becomes 1
                    if (isComplement) told = told == '0' ? '1' : '0';
                    ASSERT_EQ(table.At(columns[5 + o], point), told) << text << in << " " << columns[5 + o];
                }
            }
        }
    }
}

// The compiler's own tables and equations of the examples come back as the same functions.
TEST(Examples, ComeBackTheSame) {
    std::mt19937 random(11);
    for (const auto& entry : std::filesystem::directory_iterator(DATA_DIR "/Examples")) {
        if (entry.path().extension() != ".PLD") continue;
        const std::string text = DataText("Examples/" + entry.path().filename().string());
        const auto compiled =
            CompileWhole(std::regex_replace(text, std::regex("Device +\\w+"), "Device virtual"), "bcm1");
        const Table first(compiled->Text(".PLA"));
        for (const bool isPla : {true, false}) {
            const Table second = isPla ? Compiled("PLA2TESK", compiled->Text(".PLA"))
                                       : Compiled("PTOT", compiled->Text(".PDS"));
            EXPECT_EQ(first.Outputs.size(), second.Outputs.size()) << entry.path();
            for (int i = 0; i < 50; ++i) {
                const Point point = RandomPoint(first, random);
                for (const std::string& output : first.Outputs) {
                    const char told = first.At(output, point);
                    if (told == '-' && !isPla) continue;  // equations have no don't-cares
                    ASSERT_EQ(told, second.At(output, point)) << entry.path() << output;
                }
            }
        }
    }
}

struct Case {
    std::string Converter, Text;
    std::map<std::string, std::function<bool(Point&)>> Functions;  // by output of the compiled table
};

const std::string pds =
    "TITLE John's design; with /* in it\nCHIP X PAL16R4\nCLK LD /EN A B NC NC NC NC GND\n"
    "/OE NC NC /Q0 Q1 NC NC Y Z VCC\nSTRING SUM 'A + B'\nEQUATIONS\n/Q0 := SUM * /LD\n  + Q0 :+: B\n"
    "Q1 := q0 :*: (A + EN)\nY = GND\n/Z = /(A * b) ; the end\nZ.TRST = VCC*A\nSIMULATION\nSETF '\n";
const std::string nodes =
    "CHIP Y GAL22V10\nPIN 1 CLK\nPIN 2 /A\nPIN 3 B REGISTERED\nPIN 14 Q\nNODE ? N\nPIN ? L\nEQUATIONS\n"
    "Q.T := A * N\nN := B\nN.CLKF = /CLK\nGLOBAL.RSTF = B\nL *= A\nL.CLKF = B\n";
const std::string ontesk =
    "// form\nNAME Traffic\nDEVICE G16V8\nPINS\n1 CLK\n2 !A\n3 B - Q - Z\nNODES IF\nEQUATIONS\n"
    "Q := A AND NOT B OR Q xor IF ;\nQ.CK = !CLK ;\nIF = a | Q.DQ & B ; !Z = A ^ 1 ;\nEND\n";
const std::string tdf =
    "TITLE \"t\"; % two\nlines % SUBDESIGN c (clk, a[3..0], b : INPUT; q[1..0], y[2..0], eq : OUTPUT; io : "
    "BIDIR;)\n"
    "VARIABLE q[1..0] : DFF; j : JKFFE; n : NODE;\nBEGIN -- body\n"
    "q[].clk = clk; q[].d = (a1, a0) $ b; q[].clrn = a2; q[].prn = VCC;\n"
    "j.clk = clk; j.j = a0 # b $ a1 & a2; j.k = !Q1; j.ena = b;\nn = a0 !# b;\neq = a[] == H\"A\" & n !$ j;\n"
    "io = TRI(n, b);\nTABLE a[3..2], b => y[];\n 2, X => B\"101\";\n B\"X1\", 1 => 2;\nEND TABLE;\nEND;\n";

bool Low(const Point& point, int value) {
    for (int bit = 0; bit < 4; ++bit)
        if (point.at("a" + std::to_string(bit)) != ((value >> bit & 1) != 0)) return false;
    return true;
}

const std::vector<Case> cases{
    // Strings are texts: LD stands with B alone. The sum is a whole behind ":+:".
    {"PTOT",
     pds,
     {{"Q0.D", [](Point& p) { return !((p["A"] || (p["B"] && !p["LD"]) || p["Q0"]) != p["B"]); }},
      {"Q1.D", [](Point& p) { return p["Q0"] == (p["A"] || p["EN"]); }},
      {"Q1.CK", [](Point& p) { return p["CLK"]; }},
      {"Y", [](Point&) { return false; }},
      {"Z", [](Point& p) { return p["A"] && p["B"]; }},
      {"Z.OE", [](Point& p) { return p["A"]; }}}},
    {"PTOT",
     nodes,
     {{"Q.D", [](Point& p) { return p["Q"] != (p["A"] && p["N"]); }},  // of a toggle register
      {"Q.CK", [](Point& p) { return p["CLK"]; }},
      {"N.CK", [](Point& p) { return !p["CLK"]; }},
      {"N.AR", [](Point& p) { return p["B"]; }},
      {"L.L", [](Point& p) { return p["A"]; }},
      {"L.LE", [](Point& p) { return p["B"]; }}}},
    {"ONTESK",
     ontesk,
     {{"Q.D", [](Point& p) { return ((p["A"] && !p["B"]) || p["Q"]) != p["IF_"]; }},
      {"Q.CK", [](Point& p) { return !p["CLK"]; }},
      {"IF_", [](Point& p) { return p["A"] || (p["Q"] && p["B"]); }},
      {"Z", [](Point& p) { return p["A"]; }}}},
    {"TDF2TESK",
     tdf,
     {{"q1.D", [](Point& p) { return p["a1"] != p["b"]; }},
      {"q0.AR", [](Point& p) { return !p["a2"]; }},
      {"j.J", [](Point& p) { return p["a0"] || (p["b"] != (p["a1"] && p["a2"])); }},
      {"j.K", [](Point& p) { return !p["q1"]; }},
      {"j.CE", [](Point& p) { return p["b"]; }},
      {"eq", [](Point& p) { return (Low(p, 10) && p["n"]) == p["j"]; }},
      {"io.OE", [](Point& p) { return p["b"]; }},
      {"y2", [](Point& p) { return p["a3"] && !p["a2"]; }},
      {"y1", [](Point& p) { return p["a2"] && p["b"]; }},
      {"y0", [](Point& p) { return p["a3"] && !p["a2"]; }}}},
};

TEST(Equations, MeanTheSameWhenCompiled) {
    std::mt19937 random(3);
    for (const Case& tried : cases) {
        const Table table = Compiled(tried.Converter, tried.Text);
        for (int i = 0; i < 400; ++i) {
            Point point = RandomPoint(table, random);
            for (const auto& [output, function] : tried.Functions) {
                const char found = table.At(output, point);  // before `function` adds names
                ASSERT_EQ(found, function(point) ? '1' : '0') << tried.Converter << " " << output;
            }
        }
    }
}

// A gate, an adder and a register, in both forms of a netlist.
const std::string protel =
    "[\nU1\nDIP14\nSN74LS00N\n\n]\n[\nU2\nDIP16\n74HC283\n]\n[\nU3\nDIP14\n7474\n]\n[\nC1\n0805\n100N\n]\n"
    "[\nJ1\nSIP\nHEADER 2\n]\n(\nGND\nU1-7\nC1-1\nU2-6\nU2-15\nU2-11\n)\n(\nVCC\nU3-4\nC1-2\nU3-1\n)\n"
    "(\nA\nU1-1\nU2-5\nU2-14\n)\n(\nB\nU1-2\nU2-3\n)\n(\nN1\nU1-3\nU2-7\nU2-2\nU2-12\nJ1-1\n)\n"
    "(\nSUM\nU2-13\nU3-2\n)\n(\nCLK\nU3-3\n)\n(\nQBAR\nU3-6\n)\n";
const std::string edif =
    "(edif d (edifVersion 2 0 0) (external L (cell (rename &74LS00 \"74LS00\") (view v (interface (port &1) "
    "(port &2)"
    " (port &3)))) (cell LS283 (view v (interface (port A1))))) (library W (cell top (view v (interface "
    "(port A"
    " (direction INPUT)) (port B) (port N1) (port SUM)) (contents (instance U1 (viewRef v (cellRef &74LS00)))"
    " (instance U2 (viewRef v (cellRef &74F283))) (net A (joined (portRef A) (portRef &1 (instanceRef U1)) "
    "(portRef A1"
    " (instanceRef U2)) (portRef A3 (instanceRef U2))))\n(net x (joined (portRef B) (portRef &2 (instanceRef "
    "U1))"
    " (portRef A2 (instanceRef U2)))) (net y (joined (portRef N1) (portRef &3 (instanceRef U1)) (portRef C0"
    " (instanceRef U2)) (portRef B2 (instanceRef U2)) (portRef A4 (instanceRef U2)))) (net GND (joined "
    "(portRef B1"
    " (instanceRef U2)) (portRef B3 (instanceRef U2)) (portRef B4 (instanceRef U2)))) (net s (joined "
    "(portRef SUM)"
    " (portRef S3 (instanceRef U2)))))))) (design top (cellRef top (libraryRef W))))";

TEST(Netlist, MeansTheSameInBothForms) {
    std::mt19937 random(5);
    for (const bool isProtel : {true, false}) {
        const Table table = Compiled("NTR", isProtel ? protel : edif);
        for (int i = 0; i < 50; ++i) {
            const Point point = RandomPoint(table, random);
            const auto at = [&](const char* name) { return point.contains(name) && point.at(name); };
            const bool nand = at("N1");
            ASSERT_EQ(table.At("N1", point) == '1', !(at("A") && at("B")));
            // Carry into the third digit: A + 0 + N1, then B + N1 + carry.
            const int first = at("A") + nand;
            const int second = at("B") + nand + first / 2;
            const std::string sum = isProtel ? "U3_1Q.D" : "SUM";
            ASSERT_EQ(table.At(sum, point) == '1', (at("A") + second / 2) % 2 != 0);
            if (isProtel) {
                ASSERT_EQ(table.At("QBAR", point) == '1', !at("U3_1Q"));
            }
        }
    }
}

// Every cell of the library, each pin on a net of its own.
TEST(Netlist, LibraryCompiles) {
    const std::string cells = DataText("Nettrel/NTR.LIB");
    int count = 0;
    for (std::size_t at = 0; (at = cells.find("CELL ", at)) != std::string::npos; ++count) {
        const std::size_t end = cells.find_first_of(",\r\n", at += 5);
        const std::string name = cells.substr(at, end - at);
        std::string nets;
        const std::size_t pins = cells.find("PINS", at);
        std::istringstream words(cells.substr(pins + 4, cells.find(';', pins) - pins - 4));
        for (std::string number, pin; words >> number >> pin;)
            nets += "(\n" + (pin == "VCC" || pin == "GND" ? pin : "net" + pin) + "\nU1-" + number + "\n)\n";
        const Table table = Compiled("NTR", "[\nU1\nDIP\n74LS" + name + "\n]\n" + nets);
        EXPECT_FALSE(table.Outputs.empty()) << name;
    }
    EXPECT_GT(count, 40);
}

struct Refusal {
    const char* Converter;
    std::string Text;
    int Line;
    const char* What;
};

TEST(Converters, TellLineAndConstruct) {
    const std::string deep = std::string(100, '(') + "A";
    const std::vector<Refusal> refusals{
        {"PLA2TESK", "", 0, ".i and .o"},
        {"PLA2TESK", ".i 2\n.o 1\n1x 1\n", 3, "'x'"},
        {"PLA2TESK", ".i 2\n.o 1\n.symbolic a\n", 3, ".symbolic"},
        {"PLA2TESK", ".i 300\n.o 1\n" + std::string(300, '1') + " 1\n", 1, "256 inputs"},
        {"PLA2TESK", ".i 3\n.o 1\n", 0, "no rows"},
        {"PLA2TESK", ".i 1\n.o 1\n.type fr\n1 1\n- 0\n", 0, ""},
        {"PLA2TESK", ".i 1\n.o 2\n.phase 1\n1 11\n", 3, ".phase"},
        {"PLA2TESK", ".i 1\n.o 2\n.ob a a\n1 11\n", 0, "two columns"},
        {"PTOT", "garbage\n", 0, "CHIP"},
        {"PTOT", "CHIP A PAL16R4\nA B\nEQUATIONS\nA = C\n", 4, "\"C\" is not declared"},
        {"PTOT", "CHIP A PAL16R4\nA B\nEQUATIONS\nIF (A) B = A\n", 4, "IF"},
        {"PTOT", "CHIP A PAL16R4\nA B\nEQUATIONS\nA = B\nA = /B\n", 5, "second equation"},
        {"PTOT", "CHIP A PAL16R4\nPIN 2..5 D[3..0]\nEQUATIONS\n", 2, "vector"},
        {"PTOT", "CHIP A X\nA B\nSTRING S 'S S'\nEQUATIONS\nA = S\n", 5, "nested"},
        {"PTOT", "CHIP A X\nA B\nSTRING S 'A\nEQUATIONS\n", 3, "never closed"},
        {"PTOT", "CHIP A X\nA\nEQUATIONS\nA = " + deep, 4, "nested"},
        {"ONTESK", "NAME A\nSIZE 3\nPINS\n", 2, "SIZE"},
        {"ONTESK", "PINS\n1 A 1 B\n", 2, "pin 1 is declared twice"},
        {"ONTESK", "PINS\n1 A\nEQUATIONS\nA.Q = A ;\nEND", 4, "\"Q\""},
        {"ONTESK", "PINS\n1 A\nEQUATIONS\nA = A\n", 5, "\";\""},
        {"TDF2TESK", "INCLUDE \"x\";\n", 1, "INCLUDE"},
        {"TDF2TESK", "SUBDESIGN a (b:OUTPUT;)\nBEGIN\nCASE b IS\n", 3, "CASE"},
        {"TDF2TESK", "SUBDESIGN a (b:OUTPUT;)\nVARIABLE x : lpm_add;\n", 2, "LPM_ADD"},
        {"TDF2TESK", "SUBDESIGN a (b[1..0],c[2..0]:OUTPUT;)\nBEGIN\nb[]=c[];\n", 3, "group of 3"},
        {"TDF2TESK", "SUBDESIGN a (b:INPUT;)\nBEGIN\nb = VCC;\n", 3, "input"},
        {"TDF2TESK", "SUBDESIGN a (b:OUTPUT;)\nBEGIN\nb = f(b);\n", 3, "function"},
        {"TDF2TESK", "SUBDESIGN a (b:OUTPUT;) % open\n", 1, "never closed"},
        {"NTR", "(edif a (edifVersion 1 1 0))", 1, "EDIF 2 0 0"},
        {"NTR", "(edif a\n(edifVersion 2 0 0", 2, "never closed"},
        {"NTR", "[\nU1\nDIP\nNE555\n]\n(\nA\nU1-1\n)\n", 1, "NE555"},
        {"NTR", "[\nU1\nD\n7400\n]\n(\nA\nU1-1\n)\n(\nY\nU1-3\n)\n", 1, "1B of U1 is not connected"},
        {"NTR", "[\nU1\nD\n7404\n]\n(\nA\nU1-1\nU1-4\n)\n(\nY\nU1-2\nU1-3\n)\n", 1, "ring"},
        {"NTR", "[\nU1\nD\n7404\n]\n(\nA\nU1-2\nU1-4\n)\n(\nY\nU1-1\nU1-3\n)\n", 1, "driven by"},
        {"NTR", "[\nU1\nD\n7404\n]\n(\nA\nU1-99\n)\n", 1, "no pin"},
    };
    for (const Refusal& tried : refusals) {
        try {
            Convert(tried.Converter, tried.Text);
            ADD_FAILURE() << tried.Converter << " took " << tried.Text;
        } catch (const convert::Failure& failure) {
            EXPECT_EQ(failure.Line, tried.Line) << tried.Text << failure.What;
            EXPECT_NE(failure.What.find(tried.What), std::string::npos) << tried.Text << failure.What;
        }
    }
}

}  // namespace
