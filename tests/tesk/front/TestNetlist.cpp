#include <gtest/gtest.h>

#include <random>
#include <set>

#include "Support.h"
#include "front/Netlist.h"

namespace {

// The value of a net worked out from its driver; nets without one are given.
bool ValueOf(const front::Netlist& netlist, const std::string& net,
             const std::map<std::string, bool>& given) {
    if (const auto value = given.find(net); value != given.end()) return value->second;
    for (const front::NetCell& cell : netlist.Cells) {
        if (cell.Output != net) continue;
        if (cell.Kind == "VCC" || cell.Kind == "GND") return cell.Kind == "VCC";
        bool all = true;
        bool any = false;
        for (const auto& [port, input] : cell.Inputs) {
            const bool value = port == "OE" || ValueOf(netlist, input, given);
            all = all && value;
            any = any || (value && port != "OE");
        }
        if (cell.Kind == "INV") return !any;
        return cell.Kind.starts_with("AND") ? all : any;
    }
    throw std::runtime_error("nothing drives " + net);
}

std::string InputOf(const front::Netlist& netlist, const std::string& output, const std::string& port) {
    for (const front::NetCell& cell : netlist.Cells)
        for (const auto& [name, net] : cell.Inputs)
            if (cell.Output == output && name == port) return net;
    throw std::runtime_error("no " + port + " of " + output);
}

const std::string kBody =
    "PIN 1 = A; PIN 2 = !B; PIN 3 = C; PIN 9 = !Y; PIN 8 = a; PIN 7 = Q; PIN 6 = One;\n"
    "Y = A & B # !C & Q; a = (A $ C) & Y; Q.T = A # B; Q.CK = C; Q.AR = A & !C; One = 'b'1; a.OE = B;";

}  // namespace

// At pin level: what is active low is inverted on its way in and out.
TEST(Netlist, GatesDoWhatTheEquationsSay) {
    const auto done = Compile(kBody, "tzxbm4kb");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    for (const bool onlyD : {false, true}) {
        const front::Netlist netlist = MakeNetlist(done->Run->Result(), onlyD);
        for (int value = 0; value < 16; ++value) {
            const bool a = (value & 1) != 0, b = (value & 2) != 0, c = (value & 4) != 0, q = (value & 8) != 0;
            const std::map<std::string, bool> given{{"A_PIN", a}, {"B_PIN", !b}, {"C_PIN", c}, {"Q", q}};
            const bool y = (a && b) || (!c && q);
            EXPECT_EQ(ValueOf(netlist, "Y_PIN", given), !y);
            EXPECT_EQ(ValueOf(netlist, "a__PIN", given), (a != c) && y);
            EXPECT_TRUE(ValueOf(netlist, "One_PIN", given));
            EXPECT_EQ(ValueOf(netlist, InputOf(netlist, "Q", "AR"), given), a && !c);
            const bool next = onlyD ? q != (a || b) : a || b;
            EXPECT_EQ(ValueOf(netlist, InputOf(netlist, "Q", onlyD ? "D" : "T"), given), next);
        }
    }
}

// Random sums at random polarities, one output used by the other.
TEST(Netlist, RandomGates) {
    std::mt19937 dice(11);
    for (int round = 0; round < 60; ++round) {
        const std::string names[] = {"A", "B", "C", "Y"};
        std::map<std::string, bool> low;
        std::string body;
        for (const char* name : {"A", "B", "C", "Y", "Z"}) {
            low[name] = dice() % 2 == 0;
            body += std::string("PIN = ") + (low[name] ? "!" : "") + name + ";\n";
        }
        // Per output its terms: for each name 0, 1 or 2, which is free.
        std::map<std::string, std::vector<std::vector<unsigned>>> sums;
        for (const char* output : {"Y", "Z"}) {
            body += std::string(output) + " = 'b'0";
            for (std::size_t i = 0, count = dice() % 4; i < count; ++i) {
                std::vector<unsigned>& term = sums[output].emplace_back();
                body += " # 'b'1";
                for (std::size_t k = 0; k < (*output == 'Y' ? 3u : 4u); ++k) {
                    term.push_back(static_cast<unsigned>(dice() % 3));
                    if (term[k] < 2) body += (term[k] == 0 ? " & !" : " & ") + names[k];
                }
            }
            body += ";\n";
        }
        const auto done = Compile(body, "tm" + std::to_string(round % 5) + (round % 2 == 0 ? "kd" : ""));
        ASSERT_TRUE(done->Run->Ok()) << body;
        const front::Netlist netlist = MakeNetlist(done->Run->Result(), round % 3 == 0);
        for (unsigned value = 0; value < 8; ++value) {
            std::map<std::string, bool> pins;
            std::vector<bool> states;
            for (unsigned k = 0; k < 3; ++k) {
                states.push_back((value >> k & 1) != 0);
                pins[names[k] + "_PIN"] = states[k] != low[names[k]];
            }
            for (const char* output : {"Y", "Z"}) {
                bool sum = false;
                for (const auto& term : sums[output]) {
                    bool holds = true;
                    for (std::size_t k = 0; k < term.size(); ++k)
                        holds = holds && (term[k] == 2 || (term[k] == 1) == states[k]);
                    sum = sum || holds;
                }
                states.push_back(sum);
                ASSERT_EQ(ValueOf(netlist, std::string(output) + "_PIN", pins), sum != low[output]) << body;
            }
        }
    }
}

// Each net has one driver, and each cell that stands in the text is declared in it.
TEST(Netlist, EdifHoldsTogether) {
    const auto done = Compile(kBody, "tm4");
    const std::string text = done->Text(".EDF");
    int depth = 0;
    for (char c : text) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        ASSERT_GE(depth, 0);
    }
    EXPECT_EQ(depth, 0);
    const front::Netlist netlist = MakeNetlist(done->Run->Result(), false);
    std::set<std::string> driven;
    for (const front::NetCell& cell : netlist.Cells) {
        EXPECT_TRUE(driven.insert(cell.Output).second) << cell.Output;
        EXPECT_NE(text.find("(cell " + cell.Kind + " "), std::string::npos) << cell.Kind;
    }
}

// What the pin list's language has one word for is not written as something else.
TEST(Netlist, PinListIsLeftOutWhereItWouldLie) {
    const std::string body = "PIN=[A,B,C]; PIN=Q; PIN=Y; Q.D = A; Q.CK = C; ";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"Q.AR = A; Q.SR = B;", ".AR and .SR of \"Q\""},
        {"Q.AP = A; Q.SP = B;", ".AP and .SP of \"Q\""},
        {"Q.OE = B; Y = Q.IO;", "\"Q.IO\""},
        {"Q.AR = A; Q.AP = B; Y = Q.DQ;", ""}};
    for (const auto& [equations, reason] : cases) {
        const auto done = Compile(body + equations, "cm1");
        ASSERT_TRUE(done->Run->Ok()) << equations;
        EXPECT_EQ(done->Files.Texts.contains("T.PDS"), reason.empty()) << equations;
        EXPECT_EQ(done->Lines().size(), reason.empty() ? 0u : 1u) << equations;
        for (const std::string& line : done->Lines()) EXPECT_NE(line.find(reason), std::string::npos) << line;
    }
}

TEST(Netlist, PinListAndEquations) {
    const std::string text = Compile(kBody, "cm4")->Text(".PDS");
    for (const char* line : {"PIN  2  /B  COMBINATORIAL\r\n", "PIN  7  Q  REGISTERED\r\n",
                             "\r\nQ.CLKF = C\r\n", "\r\nOne = VCC\r\n", "\r\na.TRST = B\r\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
}
