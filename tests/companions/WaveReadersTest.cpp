#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "base/RunTimeError.h"
#include "wavrik/LoadWaves.h"
#include "wavrik/WaveReaders.h"

using namespace wavrik;

namespace {

// "D=0@0 1@25 0@75 !L@0": name, changes, mismatches with the value expected.
std::string Told(const Waves& waves) {
    std::string text;
    for (const Signal& signal : waves.Signals) {
        text += signal.Name + "=";
        for (const Change& change : signal.Changes)
            text += waves.TextOf(change.To) + "@" + std::to_string(change.At) + " ";
        for (const Mismatch& mismatch : signal.Mismatches)
            text += std::string("!") + mismatch.Expected + "@" + std::to_string(mismatch.At) + " ";
        text.back() = '|';
    }
    return text + std::to_string(waves.End);
}

struct Case {
    const char* What;
    std::string Text;
    std::string Expected;  // or the head of the error
};

template <typename Read>
void Check(const std::vector<Case>& cases, const Read& read) {
    for (const auto& [what, text, expected] : cases) {
        std::string found;
        try {
            found = Told(read(text));
        } catch (const base::RunTimeError& error) {
            found = error.Description();
        }
        EXPECT_EQ(found, expected) << what;
    }
}

const std::string head = "Name A ;\r\nORDER: CLK, %2, [D1..0],\r\n  F ;\r\n";

}  // namespace

TEST(WaveReaders, TestsAreReadAsTheSimulatorReadsThem) {
    const Fields fields = ReadFields("PIN 1 = X; $DEFINE Y Z\nFIELD F = ![Q1, Q0] ; /* FIELD F = [A]; */");
    std::string pulses;
    for (int i = 0; i < 9; ++i) pulses += "$REPEAT 1000000\nC\n";
    Check({{"values", head + "VECTORS:\n/* C\n */ c01 'x'\n$REPEAT 2 ;\n1 \"2\" \"3\"\n",
            "CLK=0@0 1@25 0@75 1@100|D1..0=1@0 2@100|D1=0@0 H@100|D0=1@0 L@100|Q1..0=X@0 3@100|Q1=X@0 H@100|"
            "Q0=X@0 H@100|300"},
           {"an entry too short", head + "VECTORS:\n\n$MSG\"a\"\nC 0 0 1\n", "line 7: 4 of 5 test values"},
           {"too many", head + "VECTORS:\n00 0 0 1 1\n", "line 5: more than 5 test values"},
           {"no digit of the base", head + "BASE: octal;\nVECTORS: 0 '9' '0'\n",
            "line 5: \"9\" does not fit its entry of ORDER:"},
           {"a number too large", head + "BASE: decimal;\nVECTORS: 0 '4' '0'\n",
            "line 5: \"4\" does not fit its entry of ORDER:"},
           {"no value", head + "VECTORS:\n0 0 0 0 #\n", "line 5: \"#\" is no test value"},
           {"cut in the head", "Name A ;\nORDER: A, B", "line 2: \"ORDER: A, B\" is no statement"},
           {"cut before the vectors", "ORDER: A;\n\n", "line 3: the file ends before VECTORS:"},
           {"cut behind them", "ORDER: A;\nVECTORS:", "line 2: no vectors"},
           {"an open comment", "ORDER: A;\n/* \nVECTORS:\n1", "line 2: the comment has no end"},
           {"twice", "ORDER: A, A;\nVECTORS:\n1 1", "line 1: A stands twice in ORDER:"},
           {"no range", "ORDER: [A0..B3];\nVECTORS:\n1", "line 1: \"[A0..B3]\" is no entry of ORDER:"},
           {"a repeat too many", "ORDER: A;\nVECTORS:\n$REPEAT 1000001\n1",
            "line 3: \"$REPEAT 1000001\" is no command"},
           {"too large", "ORDER: A;\nVECTORS:\n" + pulses, "line 20: more than 16777216 changes of values"},
           {"binary", std::string("\0\1\xff", 3), "line 1: \"??\xEF\xBF\xBD\" is no statement"}},
          [&](const std::string& text) { return ReadTests(text, fields); });
}

TEST(WaveReaders, ResultsAreReadWithTheirMismatches) {
    const std::string list =
        "Name       A\r\n\r\n   1: Name A;\r\n      A\r\n\r\n"  // a listing, then lines of a design's text
        "      C  \r\n      L QQ\r\n      K 10\r\n\r\n      note\r\n"
        "0001: C LH\r\n   >> Q0: expected L, found H\r\n   >> Q1: no mismatch\r\n\r\n"
        "0002: 0 LZ  (not simulated)\r\n   >> Q9: expected L, found H\r\n";
    Check({{"whole", list + "\r\n2 vectors, 1 mismatches\r\n",
            "CLK=0@0 1@25 0@75|Q1..0=1@0 X@100|Q1=L@0|Q0=H@0 Z@100 !L@0|200"},
           {"cut", list, "line 16: the list ends before its last line"},
           {"a mismatch less", list + "\r\n2 vectors, 2 mismatches\r\n",
            "line 18: the list ends before its last line"},
           {"a vector cut", list + "0003: 1 L\r\n", "line 17: \"0003: 1 L\" is no vector of 3 values"},
           {"nothing simulated", "Name A\r\n\r\n0 vectors, 0 mismatches\r\n",
            "line 3: no vectors were simulated"}},
          ReadResults);
}

TEST(WaveReaders, DumpsAreReadWithScopesBusesAndAliases) {
    const std::string declared =
        "$timescale 10 ps $end $scope module top $end $var wire 1 ! a $end $scope module u $end\n"
        "$var reg 8 \" b [7:0] $end $upscope $end $var wire 1 ! c $end $var real 64 r x $end\n"
        "$enddefinitions $end\n";
    Check({{"changes", declared + "$dumpvars x! b101 \" $end #5 1! bz \" r1.5 r\n$comment 0? $end #9\n1! #10",
            "a=X@0 1@5|u.b[7:0]=05@0 ZZ@5|c=X@0 1@5|x=\"1.5\"@5|10"},
           {"an unknown signal", declared + "#1\n1?", "line 5: no signal \"?\" is declared"},
           {"back in time", declared + "#5\n#4", "line 5: \"4\" is no time, or one before the last"},
           {"cut within a value", declared + "#5 b10", "line 4: the file ends before a signal's name"},
           {"cut within the head", "$timescale 1 ns", "line 1: the file ends before $end"},
           {"no signals", "$enddefinitions $end", "line 1: no signals are declared"},
           {"no dump",
            "\n\x7f"
            "ELF",
            "line 2: \"?ELF\" is no declaration of a value change dump"},
           {"no value", declared + "#1 \x01", "line 4: \"?\" is no change of a value"},
           {"no scale", "$timescale 3 days $end", "line 1: \"3days\" is no time scale"},
           {"no width", "$var wire 99999 ! a $end", "line 1: \"99999\" is no number of bits"}},
          ReadDump);
}

TEST(LoadWaves, VectorsGiveWayToNewerResults) {
    char folder[] = "/tmp/wavrik-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const platform::PathMap paths(folder);
    const auto write = [&](const std::string& name, const std::string& text, int age) {
        const std::filesystem::path path = std::filesystem::path(folder) / name;
        std::ofstream(path, std::ios::binary) << text;
        std::filesystem::last_write_time(
            path, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(age));
    };
    write("a.pld", "FIELD F = [Q1..0];", 30);
    write("a.si", "ORDER: F;\nVECTORS:\n\"2\"\n", 20);
    EXPECT_EQ(Told(LoadWaves("C:\\A.SI", paths).Shown), "Q1..0=2@0|Q1=H@0|Q0=L@0|100");
    write("A.SO", "\r\n      X\r\n\r\n0001: 1\r\n\r\n1 vectors, 0 mismatches\r\n", 10);
    EXPECT_EQ(LoadWaves("C:\\A.SI", paths).Source, "C:\\A.SO");
    write("a.si", "ORDER: F;\nVECTORS:\n\"7\"\n", 0);
    const std::pair<const char*, const char*> faults[] = {
        {"C:\\A.SI", "C:\\A.SI, line 3: \"7\" does not fit its entry of ORDER:"},
        {"C:\\B.VCD", "C:\\B.VCD: File not found"},
        {"C:\\A.PLD", "C:\\A.PLD is no .SI, .SO or .VCD file"}};
    for (const auto& [path, text] : faults) {
        try {
            LoadWaves(path, paths);
            ADD_FAILURE() << path;
        } catch (const base::RunTimeError& error) {
            EXPECT_STREQ(error.Description(), text);
        }
    }
    std::filesystem::remove_all(folder);
}
