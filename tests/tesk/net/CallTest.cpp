#include <gtest/gtest.h>

#include "net/FrontEnd.h"
#include "net/GhdlVerilog.h"
#include "net/SourceText.h"
#include "net/Synthesis.h"

namespace {

// The parts of a call with "|" between them; "?" if it is not understood.
std::string Parts(const std::vector<std::string>& words) {
    const auto call = net::ParseCall(words);
    if (!call) return "?";
    const net::Flags& f = call->Flags;
    std::string flags;
    for (const auto& [letter, isOn] : {std::pair('a', f.Analyze),
                                       {'h', f.Pinnodes},
                                       {'j', f.NoSync},
                                       {'c', f.ClockEnable},
                                       {'r', f.ResetsOnly},
                                       {'g', f.CreateLog},
                                       {'v', f.Display}})
        if (isOn) flags += letter;
    for (const int number : {f.Product, f.And, f.Optimize, f.CloseWindow})
        flags += " " + std::to_string(number);
    return call->WorkDir + "|" + call->Library + "|" + call->Device + "|" + call->Source + "|" + flags + "|" +
           call->Top;
}

}  // namespace

TEST(Calls, AreCutIntoTheirParts) {
    using Words = std::vector<std::string>;
    const std::pair<Words, const char*> cases[] = {
        {{"/W", "/S/tesk.dl", "G16V8", "/W/A.VHD-a"}, "/W|/S/tesk.dl|G16V8|/W/A.VHD|a 16 8 0 1|"},
        {{"/W", "/S/tesk.dl", "&", "/W/A.VHD-a-h-j-c-r-p4-s12-z5-g-v1-x2"},
         "/W|/S/tesk.dl|&|/W/A.VHD|ahjcrgv 4 12 5 2|"},
        {{"/W", "/S/tesk.dl", "/W/A.VHD-p100"}, "/W|/S/tesk.dl||/W/A.VHD| 100 8 0 1|"},
        {{"/My", "Work", "/My", "Lib/tesk.dl", "virtual", "/My", "Work/A", "1.VHD-z3"},
         "/My Work|/My Lib/tesk.dl|virtual|/My Work/A 1.VHD| 16 8 3 1|"},
        {{"C:\\MY", "WORK\\X.VHD-A.VHD-a"}, "||&|C:\\MY WORK\\X.VHD-A.VHD|a 16 8 0 1|"},
        {{"A.VHD"}, "||&|A.VHD| 16 8 0 1|"},
        {{"--top", "t", "virtual", "a.v-q"}, "||virtual|a.v| 16 8 0 1|t"},
        {{"--seconds", "0", "A.VHD"}, "?"},
        {{"--seconds", "x", "A.VHD"}, "?"},
        {{"--fast", "1", "A.VHD"}, "?"},
        {{"A.PLD"}, "?"},
        {{}, "?"},
    };
    for (const auto& [words, expected] : cases) {
        EXPECT_EQ(Parts(words), expected);
    }
}

TEST(Sources, TopIsTheOnlyUnitThatNoOtherUses) {
    using enum net::Tongue;
    const std::string two =
        "entity a is port(x: in bit); end entity a; architecture r of a is begin end;\n"
        "entity b is port(x: in bit); end b; architecture r of b is begin\n";
    struct Case {
        net::Tongue Tongue;
        std::string Text, File, Expected;
    };
    const Case cases[] = {
        {Vhdl, two + "u: entity work.A port map(x); end;", "F", "b"},
        {Vhdl, two + "end; -- entity work.a\n", "F", "?"},
        {Vhdl, two + "end; -- \"\n", "A", "a"},
        {Vhdl,
         two + "component a is port(x: in bit); end component; begin u: a port map(x); end;\n"
               "entity tb is end; architecture r of tb is begin u: entity work.b port map(x); end;",
         "F", "?"},
        {Vhdl,
         "entity a is port(x: in bit); end; entity tb is end; architecture r of tb is begin\n"
         "u: entity work.a port map('\"'); end;",
         "F", "a"},
        {Vhdl, "package p is end;", "P", "?"},
        {Verilog,
         "module a(input x); endmodule /* module c(input x); */ module b(input x); a u(x); endmodule", "F",
         "b"},
        {Verilog, "module a #(parameter N = (1)) (input x); endmodule : a\nmodule tb(); a u(x); endmodule",
         "F", "a"},
    };
    for (const Case& test : cases) {
        std::vector<std::string> candidates;
        EXPECT_EQ(net::TopOf(net::UnitsOf(test.Text, test.Tongue), test.File, candidates).value_or("?"),
                  test.Expected)
            << test.Text;
    }
}

TEST(Sources, PinsOfAttributesAndFiles) {
    using Pins = net::Pins;
    const std::string vhdl =
        "attribute chip_pin : string; attribute keep of s : signal is \"9\";\r\n"
        "attribute CHIP_PIN of Q, r : signal is \"P20, 19\";\r\n";
    EXPECT_EQ(net::AttributePins(vhdl, net::Tongue::Vhdl), (Pins{{"q", {20, 19}}, {"r", {20, 19}}}));
    EXPECT_EQ(net::AttributePins("module a((* LOC = \"1\" *) input clk, (*loc=\"2,3\"*) output reg [1:0] Y);",
                                 net::Tongue::Verilog),
              (Pins{{"clk", {1}}, {"y", {2, 3}}}));
    const std::string blanked = net::WithoutAttributes(vhdl);
    EXPECT_EQ(blanked.substr(0, 29), vhdl.substr(0, 29));
    EXPECT_EQ(blanked.find_first_not_of(" \r\n", 29), std::string::npos);
    EXPECT_EQ(blanked.size(), vhdl.size());
    const net::PinFile file = net::ReadPinFile(
        "# c\r\ntop Main\r\nDEVICE g22v10 -- d\r\npin q[3] 4\r\npin a 1,2 // e\r\n"
        "pin b 0\r\npins\r\ntop a b\r\n");
    EXPECT_EQ(file.Top + file.Device, "MainG22V10");
    EXPECT_EQ(file.Pins, (Pins{{"q(3)", {4}}, {"a", {1, 2}}}));
    EXPECT_EQ(file.BadLines, (std::vector<int>{6, 7, 8}));
}

TEST(Tools, WhatTheySayBecomesMessages) {
    std::string told;
    for (const net::Message& each : net::ToolMessages(
             "source.vhd:5:9: ';' expected\n  z <= b\n        ^\nsource.vhd:5:9: ';' expected\n"
             "source.vhd:2:42:warning: no assignment\r\n/tmp/x/source.v:3: ERROR: syntax error\n"
             "ERROR: Module `\\a' not found!\nWarning: Yosys has only limited support for tri-state logic\n"
             "othersource.v:1: x\nsource.vhd:x\nsource.v:0: ERROR: no loops\nsource.vhd:2:1:note: RAM\n"
             "Warning: multiple conflicting drivers for t.\\b:\n    module input b[0]\n    module input "
             "a[0]\n"
             "Warning: multiple conflicting drivers for t.\\r:\n    port Q[0] of cell $1 ($dff)\n",
             "0302vh"))
        told += each.Number + " " + std::to_string(each.At.Line) + ":" + std::to_string(each.At.Column) +
                each.Text.substr(each.Text.find(": ")) + "\n";
    EXPECT_EQ(told,
              "0302vh 5:9: ';' expected\n0301vh 2:42: no assignment\n0302vh 3:0: syntax error\n"
              "0302vh 0:0: Module `\\a' not found!\n0302vh 0:0: no loops\n"
              "0302vh 0:0: more than one thing drives a signal: b[0], a[0]\n"
              "0302vh 0:0: more than one thing drives a signal: r\n");
}

TEST(Ghdl, WhatItWritesIsMended) {
    const auto defaults =
        net::DefaultsOf("  with n2_o select n9_o <=\n    a when \"1\",\n    \"0X\" when others;\n");
    const std::string choice = "    case (x)\n      1'b1: n9_o <= a;\n";
    const std::string complete =
        "    case (x)\n      1'b1: n8_o <= a;\n      default: n8_o <= b;\n    endcase\n";
    const std::string own = "  assign s = n2_q; // (signal)\n";
    const std::string initial = "  always @*\n    v = n4_o; // (isignal)\n  initial\n    v <= 1'bX;\n";
    const std::string off = "  assign n0_oport = 2'bZZ; // (inout - port)\n";
    const std::string same = "  assign n1_oport = n4_o; // (inout - port)\n";
    const auto made = net::AdaptedVerilog("module m\n  reg v;\n  reg w;\n" + own + choice + "    endcase\n" +
                                              complete + initial + off + same + "endmodule\n",
                                          defaults);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->Text, "module m\nwire v;\n  reg w;\n" + own + choice +
                              "default: n9_o <= 2'b0x;\n    endcase\n" + complete +
                              "assign v = n4_o; // (isignal)\n" + same + "endmodule\n");
    EXPECT_EQ(made->SignalNames, (std::map<std::string, std::string>{{"n2_q", "s"}}));
    EXPECT_FALSE(net::AdaptedVerilog(choice + "    endcase\n", {}));
    const auto lost = net::AdaptedVerilog(
        "module m\n  assign a = 2'bXX; // (signal)\n  assign b = 2'bX0; // (signal)\n  always @*\n"
        "    c = 1'b0; // (isignal)\n  initial\n    c <= 1'b0;\nendmodule\n",
        {});
    EXPECT_EQ(lost->Lost, std::vector<std::string>{"a"});
    EXPECT_EQ(lost->Constant, std::vector<std::string>{"c"});
    for (const char* text : {"e ? a : 1'bz", "4'SB1_Z", "8 'h0Z", "`include \"z.vh\""})
        EXPECT_TRUE(net::MayBeOff(text)) << text;
    EXPECT_FALSE(net::MayBeOff("z <= 4'b0011 + 'd9; // isn't z"));
}
