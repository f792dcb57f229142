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
        {".inputs c d r a\n.outputs q p\n.subckt $_SDFF_PP1_ C=c D=d Q=q R=r\n"
         ".subckt $_SDFF_PP1_ C=c D=q Q=p R=r\n",
         "C D R A Q P Q.D=D Q.CK=C Q.SP=R P.D=Q P.CK=C P.SP=R ", gal},
        {".inputs c d r a\n.outputs q p\n.subckt $_SDFF_PP1_ C=c D=d Q=q R=r\n"
         ".subckt $_DFFSR_PPN_ C=c D=d Q=p R=a S=a\n",
         "C D R A Q P Q.D=!(!D&!R) Q.CK=C P.D=D P.CK=C P.AR=!A P.AP=A ", gal},
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
        // a driver within the design
        {".inputs a\n.outputs y z\n.subckt $_TBUF_ A=a E=a Y=t\n.names t y\n0 1\n.names t z\n1 1\n",
         "A Y Z Y=!A Z=A Z.OE=A "},
        // ports of a part of a larger design
        {".inputs a\n.outputs y\n.names a y\n0 1\n", "~A ~Y Y=!A ", {.PinsAreNodes = true}},
    };
    for (const Case& test : cases)
        EXPECT_EQ(Told(Made(test.Netlist, test.Wishes)), test.Expected) << test.Netlist;
    EXPECT_THROW(Made(".inputs b\n.outputs b\n.names $undef b\n1 1\n"), convert::Failure);
}

namespace {

// A random netlist and what it does at a point, in a way of its own: gates over inputs and two registers,
// ports that are off behind choices, split by small limits of terms.
class RandomNetlist {
  public:
    explicit RandomNetlist(unsigned seed) : random_(seed) {
        for (int gate = 0; gate < gates; ++gate) {
            const int all = leaves + gate;
            const int second = gate < leaves ? gate : all - 1;
            const int first = Pick(all);
            kinds_.push_back({first == second ? (first + 1) % leaves : first, second, Pick(rows.size())});
        }
        for (int& net : nets_) net = Pick(leaves + gates);
    }

    std::string Text() const {
        std::string text = ".inputs i0 i1 i2 i3 i4 i5\n.outputs g12 g13 t0 t1\n";
        for (int gate = 0; gate < gates; ++gate) {
            const auto& [first, second, kind] = kinds_[static_cast<std::size_t>(gate)];
            text += ".names " + Name(first) + " " + Name(second) + " g" + std::to_string(gate) + "\n" +
                    rows[static_cast<std::size_t>(kind)].first;
        }
        const auto net = [this](std::size_t which) { return Name(nets_[which]); };
        const auto choice = [](const std::string& zero, const std::string& one, const std::string& select,
                               const std::string& out) {
            return ".names " + zero + " " + one + " " + select + " " + out + "\n1-0 1\n-11 1\n";
        };
        const auto driver = [](const std::string& data, const std::string& enable, const std::string& out) {
            return ".subckt $_TBUF_ A=" + data + " E=" + enable + " Y=" + out + "\n";
        };
        text += ".subckt $_DFFE_PN0N_ C=" + net(0) + " D=" + net(1) + " E=" + net(2) + " Q=r0 R=" + net(3) +
                "\n.subckt $_SDFF_NP1_ C=" + net(0) + " D=" + net(2) + " Q=r1 R=" + net(1) + "\n";
        text += driver(net(4), net(5), "u0") + choice(net(6), "u0", net(7), "t0");
        text += driver(net(8), net(9), "u1") + driver(net(4), net(7), "u2");
        return text + choice("u1", "u2", net(5), "u3") + driver("u3", net(6), "t1");
    }

    // By what the design calls it. What is off has no value.
    std::map<std::string, bool> At(unsigned point) const {
        std::vector<bool> values;
        for (int leaf = 0; leaf < leaves; ++leaf) values.push_back((point >> leaf & 1u) != 0);
        for (const auto& [first, second, kind] : kinds_)
            values.push_back(rows[static_cast<std::size_t>(kind)].second(
                values[static_cast<std::size_t>(first)], values[static_cast<std::size_t>(second)]));
        const auto v = [&](std::size_t which) {
            return bool(values[static_cast<std::size_t>(nets_[which])]);
        };
        std::map<std::string, bool> all{{"G12", values[leaves + 12]},
                                        {"G13", values[leaves + 13]},
                                        {"R0.D", v(1)},
                                        {"R0.CK", v(0)},
                                        {"R0.CE", !v(2)},
                                        {"R0.AR", !v(3)},
                                        {"R1.D", v(2)},
                                        {"R1.CK", !v(0)},
                                        {"R1.SP", v(1)}};
        if ((all["T0.OE"] = !v(7) || v(5))) all["T0"] = v(7) ? v(4) : v(6);
        if ((all["T1.OE"] = v(6) && (v(5) ? v(7) : v(9)))) all["T1"] = v(5) ? v(4) : v(8);
        return all;
    }

    static constexpr int leaves = 8, gates = 14;
    static std::string Name(int net) {
        return net < 6 ? "i" + std::to_string(net)
                       : (net < leaves ? "r" + std::to_string(net - 6) : "g" + std::to_string(net - leaves));
    }

  private:
    static inline const std::vector<std::pair<std::string, bool (*)(bool, bool)>> rows = {
        {"11 1\n", [](bool a, bool b) { return a && b; }},
        {"1- 1\n-1 1\n", [](bool a, bool b) { return a || b; }},
        {"10 1\n01 1\n", [](bool a, bool b) { return a != b; }},
        {"11 0\n", [](bool a, bool b) { return !(a && b); }},
        {"00 1\n11 1\n", [](bool a, bool b) { return a == b; }}};

    int Pick(auto below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

    std::mt19937 random_;
    std::vector<std::array<int, 3>> kinds_;
    std::array<int, 10> nets_{};
};

}  // namespace

TEST(Designs, DoWhatTheirNetlistsDoAtEveryPoint) {
    for (unsigned seed = 0; seed < 8; ++seed) {
        const RandomNetlist netlist(seed);
        const net::Design design = Made(netlist.Text(), {.Name = "T", .MaxTerms = 2u << seed % 4});
        const auto done = CompileWhole(design.File.Text(), "bm1");
        ASSERT_TRUE(done->Lines().empty()) << done->Lines()[0] << design.File.Text();
        const Table table(done->Text(".PLA"));
        std::vector<std::string> settled = {"G12"};
        for (const std::string& node : design.File.Nodes)
            if (node[0] != 'R') settled.push_back(node);
        for (unsigned point = 0; point < 1u << RandomNetlist::leaves; ++point) {
            std::map<std::string, bool> values;
            for (int leaf = 0; leaf < RandomNetlist::leaves; ++leaf)
                values[base::Upper(RandomNetlist::Name(leaf))] = (point >> leaf & 1u) != 0;
            // Nodes and outputs read one another: as many rounds as there are settle them.
            for (std::size_t round = 0; round < settled.size(); ++round)
                for (const std::string& signal : settled) values[signal] = table.At(signal, values) == '1';
            for (const auto& [signal, value] : netlist.At(point)) {
                const bool isTold =
                    std::find(table.Outputs.begin(), table.Outputs.end(), signal) != table.Outputs.end();
                // What always or never holds is left out.
                if (isTold)
                    ASSERT_EQ(table.At(signal, values) == '1', value)
                        << signal << netlist.Text() << design.File.Text();
                else
                    ASSERT_EQ(value, signal.ends_with("E")) << signal << netlist.Text() << design.File.Text();
            }
        }
    }
}
