#include <gtest/gtest.h>

#include <filesystem>

#include "base/Text.h"
#include "net/Child.h"
#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

// The programs as desktop and shell start them, in a folder whose name has a blank.
class Programs : public testing::Test {
  protected:
    Programs() { fs::create_directories(folder_ / "tools"); }

    // The exit code.
    int Run(const std::string& command, const std::string& path = "\"$PATH\"") {
        const auto done =
            test::RunShell("cd '" + folder_.string() + "' && PATH=" + path + " " + command + " 2>&1");
        out_ = done.Text;
        return done.Exit;
    }
    int FrontEnd(const std::string& arguments, const std::string& path = "\"$PATH\"") {
        return Run(STAGE_DIR "/Korvane/VHDLTesk " + arguments, path);
    }
    const std::string& Out() const { return out_; }
    std::string Read(const std::string& name) const { return disk_.Read("My Work/" + name); }
    void Write(const std::string& name, const std::string& text) const {
        disk_.Write("My Work/" + name, text);
    }
    void Tool(const std::string& name, const std::string& script) {
        Write("tools/" + name, "#!/bin/sh\n" + script);
        fs::permissions(folder_ / "tools" / name, fs::perms::owner_all);
    }
    void TakeExample(const std::string& name) {
        for (const auto& file : fs::directory_iterator(DATA_DIR "/Examples"))
            if (file.path().filename().string().starts_with(name))
                fs::copy_file(file, folder_ / file.path().filename());
    }

    const doubles::TemporaryFolder disk_;
    const fs::path folder_ = disk_.Path() / "My Work";
    std::string out_;
};

// With the tools of the synthesis.
class Synthesis : public Programs {
    void SetUp() override {
        if (net::FindProgram("ghdl").empty() || net::FindProgram("yosys").empty())
            GTEST_SKIP() << "SKIPPED: ghdl and yosys are not installed";
    }
};

constexpr const char* gate =
    "library ieee; use ieee.std_logic_1164.all;\n"
    "entity gate is port (a, b : in std_logic; y : out std_logic); end;\n"
    "architecture rtl of gate is begin\n  y <= a and b;\nend;\n";

// Registers with resets of each kind, an enable, a latch, an adder, a multiplexer, states, a bus.
constexpr const char* kinds = R"(library ieee; use ieee.std_logic_1164.all; use ieee.numeric_std.all;
entity kinds is port (
  clk, rst, en : in std_logic; sel : in std_logic_vector(1 downto 0); d, e : in unsigned(3 downto 0);
  low, high, sync, plain : out std_logic; sum : out unsigned(4 downto 0); mux, lat : out std_logic;
  idle, done : out std_logic; io : inout std_logic);
end;
architecture rtl of kinds is
  type states is (waiting, first, second, ready);
  signal state : states;
begin
  process (clk, rst) begin
    if rst = '1' then low <= '0'; high <= '1';
    elsif rising_edge(clk) then low <= d(0); if en = '1' then high <= d(1); end if; end if;
  end process;
  process (clk) begin
    if rising_edge(clk) then
      plain <= io;
      if rst = '1' then sync <= '1'; else sync <= d(2); end if;
      if rst = '1' then state <= waiting; else
        case state is
          when waiting => if en = '1' then state <= first; end if;
          when first => state <= second;
          when second => state <= ready;
          when ready => state <= waiting;
        end case;
      end if;
    end if;
  end process;
  process (en, d) begin if en = '1' then lat <= d(3); end if; end process;
  sum <= ('0' & d) + ('0' & e);
  with sel select mux <= d(0) when "00", d(1) when "01", d(2) when "10", d(3) when others;
  idle <= '1' when state = waiting else '0';
  done <= '1' when state = ready else '0';
  io <= d(0) when sel = "11" else 'Z';
end;
)";
constexpr const char* off = R"(library ieee; use ieee.std_logic_1164.all;
entity off is port (
  s : in std_logic_vector(1 downto 0); a, b : in std_logic; x, l, n : out std_logic;
  io, unused : inout std_logic_vector(1 downto 0));
end;
architecture rtl of off is
begin
  with s select x <= a when "00", b when "01", 'Z' when others;
  process (all) begin if s(0) = '1' then io <= (a, 'Z'); else io <= ('Z', b); end if; end process;
  process (a, b) variable v : std_logic; begin if b = '1' then v := a; end if; l <= v; end process;
  n <= unused(0) and unused(1);
end;
)";
constexpr const char* kindVectors = R"(Name KINDS;
ORDER: CLK, RST, EN, %1, SEL1, SEL0, %1, [D3..0], [E3..0], %2, LOW, HIGH, SYNC, PLAIN, %1, [SUM4..0], %1, MUX, LAT,
  %1, IDLE, DONE, %1, IO;
BASE: hex;
VECTORS:
C11 00 'F''1' LHHH "10" HH HL 1
C00 01 'D''5' HHHL "12" LH HL 0
C00 10 '2''E' LHLH "10" LH HL 1
C01 11 '1''9' HLLH "0A" LL LL H
C01 11 'A''A' LHLL "14" HH LL L
C00 00 '4''F' LHHH "13" LH LH 1
000 00 '5''F' LHHH "14" HH LH 0
010 00 '5''F' LHHH "14" HH LH 0
C00 00 '5''0' HHHL "05" HH HL 0
)";

}  // namespace

// The simulator of the chain on the design, ghdl on the source: the same vectors.
TEST_F(Synthesis, ExamplesPassTheirVectorsOnBothSides) {
    TakeExample("STEPPER");
    TakeExample("SHIFT4");
    EXPECT_EQ(FrontEnd("STEPPER.VHD-z3"), 0) << Out();
    EXPECT_EQ(FrontEnd("SHIFT4.VHD"), 0) << Out();  // the desktop's word for the .V
    for (const char* name : {"STEPPER", "SHIFT4"}) {
        EXPECT_NE(Read(std::string(name) + ".JED").find("QP24*"), std::string::npos);
        EXPECT_TRUE(fs::exists(folder_ / (std::string(name) + ".SO"))) << name;
    }
    EXPECT_EQ(Run("ghdl -a --std=08 STEPPER.VHD STEPPER_TB.VHD && ghdl -r --std=08 stepper_tb"), 0) << Out();
    EXPECT_NE(Out().find("stepper_tb: done"), std::string::npos) << Out();
}

TEST_F(Synthesis, EachKindOfLogicDoesWhatItSays) {
    Write("KINDS.SI", base::ReplaceAll(kindVectors, "\n", "\r\n"));
    for (const char* flags : {"-c-p4", "-j-r-z5-p3"}) {
        Write("KINDS.VHD", kinds);
        EXPECT_EQ(FrontEnd("KINDS.VHD" + std::string(flags)), 0) << flags << Out();
        EXPECT_TRUE(fs::exists(folder_ / "KINDS.SO")) << flags;
    }
}

TEST_F(Synthesis, ChoicesMayBeOffAndVariablesMayBeLatches) {
    Write("OFF.VHD", off);
    EXPECT_EQ(FrontEnd("OFF.VHD-z3"), 0) << Out();
    const std::string design = Read("OFF.PLD");
    for (const char* equation : {"X.OE = !S1 ;", "IO0 = B ;\r\nIO0.OE = !S0 ;", "IO1 = A ;\r\nIO1.OE = S0 ;",
                                 "L.L = A & B ;\r\nL.LE = B ;", "N = UNUSED0 & UNUSED1 ;"})
        EXPECT_NE(design.find(equation), std::string::npos) << equation << design;
    EXPECT_NE(Out().find("Latch: l\n"), std::string::npos) << Out();
}

TEST_F(Synthesis, FaultsAreListedByTheirPlaces) {
    struct Case {
        const char* File;
        std::string Text;
        const char* List;
    };
    const std::string text = gate;
    const Case cases[] = {
        {"A.VHD", base::ReplaceAll(text, "a and b;", "a and c;\n  y <= b"),
         "[0300vh] Error: Error in the source: ';' expected at end of signal assignment (A.VHD line 5 column "
         "9)\r\n"
         "[0300vh] Error: Error in the source: (found: 'end') (A.VHD line 5 column 9)\r\n"},
        {"A.VHD",
         base::ReplaceAll(text, "y <= a and b;", "process begin y <= a; wait for 1 ns; end process;"),
         "[0302vh] Error: The source can't be synthesized: expect wait as the first statement (A.VHD line 4 "
         "column "
         "17)\r\n[0301vh] Warning: Warning on the source: no assignment for port \"y\" (A.VHD line 2 column "
         "43)\r\n"},
        {"A.VHD",
         "\xEF\xBB\xBF" + base::ReplaceAll(base::ReplaceAll(text, "begin", "signal s : std_logic; begin"),
                                           "y <= a and b;", "s <= a when b = '1' else s; y <= not s;"),
         "[0306vh] Error: Latch that ghdl loses: s\r\n"},
        {"A.VHD", text + base::ReplaceAll(text, "gate", "other"),
         "[0303vh] Error: The top of the design can't be told: gate, other\r\n"},
        {"A.V", "module a(input x, output y);\n  assign y = x +;\nendmodule\n",
         "[0300vh] Error: Error in the source: syntax error, unexpected ';' (A.V line 2)\r\n"},
        {"A.V", "module a(input x, output y);\n  b u(x, y);\nendmodule\n",
         "[0300vh] Error: Error in the source: Module `\\b' referenced in module `\\a' in cell `\\u' is not "
         "part of "
         "the design.\r\n"},
    };
    for (const Case& test : cases) {
        fs::remove(folder_ / "A.VHD");
        Write(test.File, test.Text);
        EXPECT_EQ(FrontEnd("A.VHD"), 1) << test.Text;
        EXPECT_EQ(Read("A.VLS"), test.List);
        EXPECT_FALSE(fs::exists(folder_ / "A.PLD"));
    }
    EXPECT_EQ(FrontEnd("B.VHD"), 1);
    EXPECT_NE(Out().find("[0100vh] Error: Source can't be read: ./B.VHD"), std::string::npos) << Out();
}

TEST_F(Synthesis, FilesOfTheUserStayAndNamesMayHoldBlanks) {
    Write("two gates.vhd",
          std::string(gate) +
              "entity other is port (x : in bit); end; architecture a of other is begin end;\n");
    const std::string call = "'" + folder_.string() + "' /none/tesk.dl & ";
    const std::string line = base::ReplaceAll(folder_.string() + "/TWO GATES.VHD-h-g", "/", "\\\\");
    // As the desktop calls it: in pieces.
    EXPECT_EQ(FrontEnd("--top gate " + folder_.string() + " /none/tesk.dl \\& C:" + line), 0) << Out();
    EXPECT_NE(Read("two gates.PLD").find("NODE A ;\r\nNODE B ;\r\nNODE Y ;"), std::string::npos);
    EXPECT_NE(Read("two gates.LOG").find("--synth"), std::string::npos);
    EXPECT_EQ(FrontEnd("'two gates.vhd'"), 1);  // which of the two?
    Write("two gates-pins.txt", "top other\n");
    EXPECT_EQ(Run(STAGE_DIR "/Korvane/Utility/VHDLTesk 'two gates.vhd'"), 0) << Out();
    Write("GATE.VHD", gate);
    Write("GATE.PLD", "mine");
    EXPECT_EQ(FrontEnd("GATE.VHD"), 1);
    EXPECT_NE(Out().find("GATE.PLD was not made by VHDLTesk and stays"), std::string::npos) << Out();
    EXPECT_EQ(Read("GATE.PLD"), "mine");
}

TEST_F(Programs, ToolsThatLackOrFailAreNamed) {
    Write("A.VHD", gate);
    Write("A.PLD", "Made by VHDLTesk of A.VHD");
    const auto listAfter = [&](const std::string& what) {
        EXPECT_EQ(FrontEnd("--seconds 1 A.VHD", "\"$PWD/tools\"" + what), 1);
        return Read("A.VLS");
    };
    EXPECT_EQ(listAfter(""),
              "[0200vh] Error: The tools of the synthesis are not installed: install ghdl and yosys "
              "(apt install ghdl yosys)\r\n");
    Tool("yosys", "echo Yosys 0.23");
    EXPECT_NE(listAfter("").find("(apt install ghdl)"), std::string::npos);
    Tool("ghdl", "echo GHDL 1.0.0 old");
    EXPECT_EQ(listAfter(""), "[0201vh] Error: A tool of the synthesis is too old: GHDL 1.0.0 old\r\n");
    Tool("ghdl", "case $1 in --version) echo GHDL 2.0.0;; *) kill -SEGV $$;; esac");
    EXPECT_EQ(listAfter(""),
              "[0202vh] Error: A tool of the synthesis ended unexpectedly: ghdl, signal 11\r\n");
    Tool("ghdl", "case $1 in --version) echo GHDL 2.0.0;; *) while :; do :; done;; esac");
    EXPECT_EQ(listAfter(""),
              "[0203vh] Error: A tool of the synthesis took too long and was stopped: ghdl, 1 seconds\r\n");
    // Who stops the front end leaves neither the tool nor its folder behind.
    fs::create_directories(folder_ / "tmp");
    Run("TMPDIR=\"$PWD/tmp\" /usr/bin/timeout 0.5 " STAGE_DIR "/Korvane/VHDLTesk A.VHD", "\"$PWD/tools\"");
    EXPECT_EQ(Read("A.VLS"),
              "[0203vh] Error: A tool of the synthesis took too long and was stopped: ghdl\r\n");
    EXPECT_TRUE(fs::is_empty(folder_ / "tmp"));
    EXPECT_EQ(Read("A.PLD"), "Made by VHDLTesk of A.VHD");
}
