#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Support.h"
#include "base/Text.h"
#include "convert/Failure.h"
#include "net/Design.h"

namespace {

net::Design Made(const std::string& netlist, const net::Wishes& wishes = {}) {
    return net::MakeDesign(net::ReadBlif(".model t\n" + netlist + ".end\n"), wishes);
}

// Declarations and equations without blanks, one to a word; then the codes of the notes.
std::string Told(const net::Design& design) {
    std::string told;
    for (const convert::Pin& pin : design.File.Pins) {
        told +=
            (pin.ActiveLow ? "!" : "") + pin.Name + (pin.Number > 0 ? "@" + std::to_string(pin.Number) : "");
        told += " ";
    }
    for (const std::string& node : design.File.Nodes) told += "~" + node + " ";
    const std::string plain = base::ReplaceAll(base::ReplaceAll(design.File.Body, "\r\n", ""), " ", "");
    told += base::ReplaceAll(plain, ";", " ");
    for (const net::Message& note : design.Notes) told += note.Number + " ";
    return told;
}

}  // namespace

TEST(Netlist, FaultsNameTheirLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "0 this is no netlist: no .model"},
        {"a b\n", "1 \"a\" is not taken here"},
        {".inputs a\n", "1 this is no netlist: .model comes first"},
        {".model t\n.inputs a\n", "2 the netlist ends before its .end"},
        {".model t\n.model u\n", "2 a second model: the hierarchy must be flattened"},
        {".model t\n.names a y\n1 1\n.names b y\n", "4 the signal \"y\" is driven from two places"},
        {".model t\n.names a \\\n b y\n1 1\n", "4 this is no row of a gate: \"1\""},
        {".model t\n.names a y\n1 1\n0 0\n", "4 a gate has rows for 1 and for 0"},
        {".model t\n.latch a q xx c 2\n", "2 the register kind \"xx\" is not taken"},
        {".model t\n.subckt $_DFF_PP2_ C=c D=d Q=q R=r\n", "2 the cell \"$_DFF_PP2_\" is not taken"},
        {".model t\n.subckt $_DFF_PP0_ C=c D=d Q=q X=r\n", "2 the cell \"$_DFF_PP0_\" has no \"X=r\""},
        {".model t\n.subckt $_DFF_P_ C=c D=d\n", "2 a cell without data or output"},
        {".model t\n.exdc\n", "2 \".exdc\" is not taken"},
    };
    for (const auto& [text, expected] : cases) {
        try {
            net::ReadBlif(text);
            ADD_FAILURE() << text;
        } catch (const convert::Failure& failure) {
            EXPECT_EQ(std::to_string(failure.Line) + " " + failure.What, expected);
        }
    }
}

TEST(Designs, NetsBecomePinsNodesAndEquations) {
    const std::string reg = ".latch d q re c 2\n";
    struct Case {
        std::string Netlist;
        std::string Expected;
        net::Wishes Wishes = {};
    };
    const net::Wishes gal{.Device = "G22V10", .Sync = net::SyncControls::Shared};
    const Case cases[] = {
        // names: vectors, clashes, words of the language, what the tool made
        {".inputs a[1] A1\n.outputs out\n.names a[1] A1 out\n11 1\n",
         "A1 A1_a OUT_ OUT_=A1&A1_a 0404vh 0404vh "},
        // constants, copies, an inverter, a port that nothing drives, one that never drives
        {".inputs a io\n.outputs x y z u io\n.names x\n.names y\n1\n.names a z\n0 1\n.names $undef\n"
         ".names $undef u\n1 1\n",
         "A IO X Y Z U X='b'0 Y='b'1 Z=!A U='b'0 0403vh 0402vh "},
        // a register at the pin of the port that shows it, or its complement; one that no port shows
        {".inputs c d\n.outputs y n\n" + reg + ".names q y\n1 1\n.names q n\n0 1\n",
         "C D Y N Y.D=D Y.CK=C N=!Y "},
        {".inputs c d\n.outputs n\n" + reg + ".names q n\n0 1\n", "C D !N N.D=D N.CK=C "},
        {".inputs c d a\n.outputs y\n" + reg + ".names q a y\n11 1\n", "C D A Y ~Q Y=A&Q Q.D=D Q.CK=C "},
        // controls of either level
        {".inputs c d r e\n.outputs q\n.subckt $_DFFE_NN0N_ C=c D=d E=e Q=q R=r\n",
         "C D R E Q Q.D=D Q.CK=!C Q.CE=!E Q.AR=!R "},
        {".inputs c d r s\n.outputs q\n.subckt $_DFFSR_PPN_ C=c D=d Q=q R=r S=s\n",
         "C D R S Q Q.D=D Q.CK=C Q.AR=!R Q.AP=S "},
        {".inputs c d r\n.outputs q\n.subckt $_SDFF_PP1_ C=c D=d Q=q R=r\n", "C D R Q Q.D=D Q.CK=C Q.SP=R "},
        {".inputs c d r\n.outputs q p\n.subckt $_SDFF_PP0_ C=c D=d Q=q R=r\n.latch q p re c 1\n",
         "C D R Q P Q.D=D&!R Q.CK=C P.D=Q P.CK=C 0405vh ", gal},
        // three-state: a pin, a register's, one that is read as well, which has a node on a device
        {".inputs a e\n.outputs y\n.subckt $_TBUF_ A=a E=e Y=y\n", "A E Y Y=A Y.OE=E "},
        {".inputs c e b\n.outputs b\n.latch b q re c 2\n.subckt $_TBUF_ A=q E=e Y=b\n",
         "C E B B.D=B.IO B.CK=C B.OE=E "},
        {".inputs c e b\n.outputs b\n.latch b q re c 2\n.subckt $_TBUF_ A=q E=e Y=b\n",
         "C E B ~Q B=Q B.OE=E Q.D=B Q.CK=C ", gal},
        // latches: as a cell, and as logic that keeps its value
        {".inputs d e\n.outputs q\n.subckt $_DLATCH_P_ D=d E=e Q=q\n", "D E Q Q.L=D Q.LE=E 0401vh "},
        {".inputs d e\n.outputs q\n.names d e q q\n11- 1\n-01 1\n", "D E Q Q.L=D&E Q.LE=E 0401vh "},
        {".inputs d e\n.outputs q\n.subckt $_DLATCH_P_ D=d E=e Q=q\n", "D E Q Q=D&E#D&Q#!E&Q MINQ=1 0401vh ",
         gal},
        // pins, by vector and by bit
        {".inputs a[0] a[1]\n.outputs y\n.names a[0] a[1] y\n11 1\n",
         "A0@4 A1@3 Y@7 Y=A0&A1 ",
         {.Pins = {{"a", {3, 4}}, {"y", {7}}}}},
        {".inputs a[0] a[1]\n.outputs y\n.names a[0] a[1] y\n11 1\n",
         "A0 A1@9 Y Y=A0&A1 0502vh 0501vh ",
         {.Pins = {{"a(1)", {9}}, {"y", {7, 8}}, {"z", {1}}}}},
        // ports of a part of a larger design
        {".inputs a\n.outputs y\n.names a y\n0 1\n", "~A ~Y Y=!A ", {.PinsAreNodes = true}},
    };
    for (const Case& test : cases)
        EXPECT_EQ(Told(Made(test.Netlist, test.Wishes)), test.Expected) << test.Netlist;
    EXPECT_THROW(Made(".inputs a e\n.outputs y\n.subckt $_TBUF_ A=a E=e Y=t\n.names t y\n0 1\n"),
                 convert::Failure);
}

// Random gates, split by small limits of terms, compiled, and compared with the gates point by point.
TEST(Designs, SplitSumsKeepTheFunction) {
    std::mt19937 random(7);
    constexpr int inputs = 6, gates = 14, outputs = 3;
    const std::vector<std::string> rows = {"11 1\n", "1- 1\n-1 1\n", "10 1\n01 1\n", "11 0\n",
                                           "00 1\n11 1\n"};
    for (unsigned limit : {2u, 2u, 4u, 4u, 8u, 16u}) {
        std::string text = ".inputs i0 i1 i2 i3 i4 i5\n.outputs g11 g12 g13\n";
        std::vector<std::array<int, 3>> kinds;
        const auto name = [](int net) {
            return net < inputs ? "i" + std::to_string(net) : "g" + std::to_string(net - inputs);
        };
        for (int gate = 0; gate < gates; ++gate) {
            const int first = static_cast<int>(random() % static_cast<unsigned>(inputs + gate));
            const int second = gate < inputs ? gate : inputs + gate - 1;
            const int kind = static_cast<int>(random() % rows.size());
            kinds.push_back({first, second == first ? (first + 1) % inputs : second, kind});
            text += ".names " + name(kinds.back()[0]) + " " + name(kinds.back()[1]) + " g" +
                    std::to_string(gate) + "\n" + rows[static_cast<std::size_t>(kind)];
        }
        net::Design design = Made(text, {.Name = "T", .MaxTerms = limit});
        const auto done = CompileWhole(design.File.Text(), "bm1");
        ASSERT_TRUE(done->Lines().empty()) << done->Lines()[0] << design.File.Text();
        std::vector<std::string> signals = design.File.Nodes;
        signals.insert(signals.end(), {"G11", "G12", "G13"});
        const Table table(done->Text(".PLA"));
        for (unsigned point = 0; point < 1u << inputs; ++point) {
            std::map<std::string, bool> values;
            std::vector<bool> nets;
            for (int i = 0; i < inputs; ++i)
                nets.push_back(values["I" + std::to_string(i)] = (point >> i & 1u) != 0);
            for (const auto& [first, second, kind] : kinds) {
                const bool a = nets[static_cast<std::size_t>(first)],
                           b = nets[static_cast<std::size_t>(second)];
                nets.push_back(kind == 0   ? a && b
                               : kind == 1 ? a || b
                               : kind == 2 ? a != b
                               : kind == 3 ? !(a && b)
                                           : a == b);
            }
            // Nodes and outputs read one another: as many rounds as there are settle them.
            for (std::size_t round = 0; round < signals.size(); ++round)
                for (const std::string& signal : signals) values[signal] = table.At(signal, values) == '1';
            for (int i = gates - outputs; i < gates; ++i)
                ASSERT_EQ(table.At("G" + std::to_string(i), values) == '1',
                          nets[static_cast<std::size_t>(inputs + i)])
                    << text << design.File.Text();
        }
    }
}
