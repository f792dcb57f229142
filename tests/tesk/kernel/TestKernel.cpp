#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <new>
#include <stdexcept>

#include "base/ToolInterface.h"
#include "kernel/Host.h"
#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace {

struct Sent {
    std::uint32_t Handle;
    std::uint32_t Message;
    std::string Text;
};
std::vector<Sent> sent;
std::function<void(const Sent&)> onSent;  // may throw, as a fault of the chain's own would

class Kernel : public ::testing::Test, protected doubles::TemporaryFolder {
  protected:
    void SetUp() override {
        for (const char* file : {"COUNT8.PLD", "COUNT8.SI"})
            fs::copy(fs::path(DATA_DIR "/Examples") / file, folder);
        sent.clear();
        setenv("XDG_STATE_HOME", (folder / "state").c_str(), 1);
    }
    void TearDown() override { onSent = nullptr; }

    std::int32_t Call(const char* library, const char* entry, const std::string& design,
                      const std::string& options, const std::string& device = "virtual") {
        base::RunRecord record{};
        record.hWndStatus = 11;
        record.hWndMessages = 22;
        base::SetText(record.szDesign, design);
        base::SetText(record.szDevice, device);
        base::SetText(record.szLibrary, STAGE_DIR "/Shared/Fullset.dl");
        base::SetText(record.szOptions, options);
        void* handle = dlopen((std::string(STAGE_DIR "/Shared/") + library).c_str(), RTLD_NOW | RTLD_LOCAL);
        if (handle == nullptr) throw std::runtime_error(dlerror());
        const auto call = reinterpret_cast<std::int32_t (*)(base::RunRecord*)>(dlsym(handle, entry));
        const std::int32_t result = call(&record);
        dlclose(handle);
        return result;
    }

    std::string Run(const std::string& arguments, int& code, const std::string& program = "teskc") const {
        const auto done = test::RunShell(folder, STAGE_DIR "/bin/" + program + " " + arguments + " 2>&1");
        code = done.Exit;
        return done.Text;
    }
    std::size_t Hidden() const {
        std::size_t hidden = 0;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
            hidden += entry.path().filename().string().starts_with(".") ? 1 : 0;
        return hidden;
    }

    const fs::path folder = Path();
};

std::size_t Count(std::uint32_t message) {
    std::size_t count = 0;
    for (const Sent& one : sent) count += one.Message == message ? 1 : 0;
    return count;
}

}  // namespace

extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t wparam,
                                     std::intptr_t lparam) {
    const std::uintptr_t text = message == base::msgAddString ? static_cast<std::uintptr_t>(lparam) : wparam;
    sent.push_back({handle, message, text == 0 ? "" : reinterpret_cast<const char*>(text)});
    if (onSent) onSent(sent.back());
    return 0;
}

TEST_F(Kernel, CompilesAndSimulatesADesignNamedInDriveForm) {
    EXPECT_EQ(Call("teskk.dll", "TeskkVB", Logic("count8"), "axlbsm4"), 0);
    for (const char* output : {"LST", "DOC", "ABS", "PLA", "SO", "VCD"})
        EXPECT_FALSE(Read(std::string("count8.") + output).empty()) << output;
    EXPECT_EQ(Count(base::msgError), 0u);
    EXPECT_EQ(sent.front().Message, 101u);
    EXPECT_EQ(sent.front().Handle, 11u);
    EXPECT_EQ(sent.back().Text, "Compilation complete");
}

TEST_F(Kernel, SimulatorTellsAMismatch) {
    ASSERT_EQ(Call("teskk.dll", "TeskkVB", folder / "count8", "a"), 0);
    std::string vectors = Read("COUNT8.SI");
    vectors.replace(vectors.find("\"02\""), 4, "\"03\"");
    Write("COUNT8.SI", vectors);
    sent.clear();
    EXPECT_EQ(Call("vornk.dll", "VornkVB", Logic("COUNT8"), "l"), 1);
    EXPECT_GE(Count(base::msgError), 1u);
    EXPECT_NE(Read("COUNT8.SO").find("Q0"), std::string::npos);
}

// Whatever a stage or an entry throws ends the run as an error with a code of its own; memory is a limit.
TEST_F(Kernel, FaultsOfOurOwnAreToldAsSuch) {
    struct Case {
        const char* Library;
        const char* Entry;
        const char* At;  // the status text that the fault comes up behind
        std::function<void()> Fault;
        const char* Told;
    };
    const auto logic = [] { throw std::logic_error("lost"); };
    const Case cases[] = {
        {"teskk.dll", "TeskkVB", "Expanding", logic, "[9000tc] Error: Internal fault: expand, lost"},
        {"teskk.dll", "TeskkVB", "Analysing", logic, "[9000tc] Error: Internal fault: analyse, lost"},
        {"teskk.dll", "TeskkVB", "Building", [] { throw 3; }, "[9000tc] Error: Internal fault: build"},
        {"teskk.dll", "TeskkVB", "Minimising", [] { throw std::bad_alloc(); },
         "[2002tb] Error: Design too large: out of memory"},
        {"teskk.dll", "TeskkVB", "Writing", logic, "[9000tc] Error: Internal fault: fit and write, lost"},
        {"teskk.dll", "TeskkVB", "Reading vectors", logic,
         "[9000tc] Error: Internal fault: read vectors, lost"},
        {"vornk.dll", "VornkVB", "Simulating", logic, "[9000tc] Error: Internal fault: simulate, lost"},
        {"teskk.dll", "TeskkVB", "[4201tc] Warning: No vectors to simulate", logic,
         "[9000tc] Error: Internal fault: compile, lost"},  // between the stages
    };
    for (const Case& one : cases) {
        sent.clear();
        onSent = [&](const Sent& what) {
            if (what.Text == one.At) one.Fault();
        };
        if (one.At[0] == '[') fs::remove(folder / "COUNT8.SI");
        EXPECT_EQ(Call(one.Library, one.Entry, folder / "COUNT8", "as"), 1) << one.At;
        std::size_t told = 0;
        for (const Sent& what : sent) told += what.Text == one.Told ? 1 : 0;
        EXPECT_EQ(told, 1u) << one.Told;
        EXPECT_EQ(Count(base::msgError), 1u) << one.Told;
        EXPECT_TRUE(sent.back().Text.ends_with("ended with errors")) << sent.back().Text;
    }
}

// Lines go to the list, counts to the status window; each counted message has its line.
TEST_F(Kernel, ReportsByMessagesOnly) {
    Write("BAD.PLD", "Name Bad;\r\nPIN = Y;\r\nY = X;\r\n");
    EXPECT_EQ(Call("teskk.dll", "TeskkVB", folder / "BAD", "lam4j"), 1);
    EXPECT_EQ(Count(base::msgError), 1u);
    EXPECT_EQ(Count(base::msgWarning), 1u);  // the rest of the header
    std::size_t lines = 0;
    for (const Sent& one : sent) {
        if (one.Message != base::msgAddString) continue;
        ++lines;
        EXPECT_EQ(one.Handle, 22u);
        EXPECT_EQ(one.Text[0], '[');
        EXPECT_EQ(one.Text[7], ']');
    }
    EXPECT_EQ(lines, 2u);
    EXPECT_FALSE(Exists("BAD.ABS"));
    EXPECT_NE(Read("BAD.LST").find("    3: Y = X;\r\n[1201ta]"), std::string::npos);
}

TEST_F(Kernel, SameInputSameBytes) {
    const char* const outputs[] = {"LST", "DOC", "ABS", "PLA", "MX"};
    std::vector<std::string> first;
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(Call("teskk.dll", "TeskkVB", folder / "COUNT8", "axlbem4"), 0);
        for (std::size_t i = 0; i < std::size(outputs); ++i) {
            const std::string text = Read(std::string("COUNT8.") + outputs[i]);
            if (round == 0) first.push_back(text);
            EXPECT_EQ(text, first[i]) << outputs[i];
            for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
                ASSERT_EQ(text[at - 1], '\r') << outputs[i];
        }
    }
}

// A text that fills its field has no NUL, and the field behind it is not read.
TEST_F(Kernel, FullFieldsOfTheRecord) {
    base::RunRecord::Text field;
    base::SetText(field, std::string(300, 'x'));
    EXPECT_EQ(base::TextOf(field), std::string(256, 'x'));
    base::SetText(field, "COUNT8");
    EXPECT_EQ(field[6], '\0');
    EXPECT_EQ(field[255], ' ');
    EXPECT_EQ(base::TextOf(field), "COUNT8");
}

// The driver clears the outputs before it simulates: the simulator's kernel makes what it needs, as the
// design was compiled last.
TEST_F(Kernel, SimulatesAfterTheOutputsWereCleared) {
    const auto simulate = [&] {
        for (const char* name : {"COUNT8.ABS", "COUNT8.JED", "Count8.JED", "COUNT8.SO"})
            fs::remove(folder / name);
        sent.clear();
        EXPECT_EQ(Call("vornk.dll", "VornkVB", Logic("COUNT8"), "lj", "&"), 0);
        EXPECT_EQ(Count(base::msgError), 0u);
        EXPECT_FALSE(Read("COUNT8.SO").empty());
    };
    simulate();
    EXPECT_NE(Read("COUNT8.JED").find("V0001 "), std::string::npos);
    EXPECT_NE(Read("COUNT8.JED").find("G0*"), std::string::npos);
    EXPECT_TRUE(std::any_of(sent.begin(), sent.end(), [](const Sent& one) {
        return one.Text == "[4202tc] Warning: Options of the last compile are not known: COUNT8.JED has kbm4";
    }));
    int code = -1;
    for (const char* letters : {"jngm2", "jgm4"}) {
        Run(std::string("-o ") + letters + " COUNT8.PLD", code);
        simulate();
        const std::string jedec = Read(letters[1] == 'n' ? "Count8.JED" : "COUNT8.JED");
        EXPECT_NE(jedec.find("G1*"), std::string::npos) << letters;
        EXPECT_NE(jedec.find("V0001 "), std::string::npos) << letters;
        EXPECT_EQ(Count(base::msgWarning), 0u) << letters;
    }
}

// Links and rights of the old outputs stay; a protected one is refused by name, and nothing is left half.
TEST_F(Kernel, OutputsReplaceOldFilesAsTheEditorDoes) {
    fs::create_directory(folder / "out");
    for (const char* name : {"real.jed", "twin.lst", "COUNT8.ABS", "COUNT8.PLA"})
        Write("out/" + std::string(name), "old");
    fs::create_symlink("out/real.jed", folder / "COUNT8.JED");
    fs::create_hard_link(folder / "out/twin.lst", folder / "COUNT8.LST");
    fs::rename(folder / "out/COUNT8.ABS", folder / "COUNT8.ABS");
    fs::rename(folder / "out/COUNT8.PLA", folder / "COUNT8.PLA");
    fs::permissions(folder / "COUNT8.ABS", fs::perms(0604));
    fs::permissions(folder / "COUNT8.PLA", fs::perms(0444));
    int code = -1;
    const std::string lines = Run("-o jalbm4 COUNT8.PLD", code);
    EXPECT_NE(
        lines.find("[4001tc] Error: Output file cannot be written: COUNT8.PLA: the file is write-protected"),
        std::string::npos)
        << lines;
    EXPECT_EQ(code, 1);
    EXPECT_EQ(Read("COUNT8.PLA"), "old");
    EXPECT_TRUE(fs::is_symlink(folder / "COUNT8.JED"));
    EXPECT_NE(Read("out/real.jed").find("QF"), std::string::npos);
    EXPECT_NE(Read("out/twin.lst").find("Listing"), std::string::npos);
    EXPECT_EQ(fs::status(folder / "COUNT8.ABS").permissions(), fs::perms(0604));
    EXPECT_EQ(Hidden(), 0u);
}

// Option "n" names the JEDEC file by the header; the vectors go into that file.
TEST_F(Kernel, JedecFileTakesTheNameOfTheHeader) {
    std::string design = Read("COUNT8.PLD");
    Write("COUNT8.PLD", design.replace(design.find("Count8"), 6, "My-Part"));
    std::string vectors = Read("COUNT8.SI");
    Write("COUNT8.SI", vectors.replace(vectors.find("Count8"), 6, "My-Part"));
    int code = -1;
    const std::string lines = Run("-o jasnm4 COUNT8.PLD", code);
    EXPECT_EQ(code, 0) << lines;
    EXPECT_NE(Read("My-Part.JED").find("V0001 "), std::string::npos) << lines;
    EXPECT_FALSE(Exists("COUNT8.JED"));
}

// More vectors than are kept in memory: the results are whole, and nothing else is left in the folder.
TEST_F(Kernel, LongSimulations) {
    const std::string vectors = Read("COUNT8.SI");
    std::string text = vectors.substr(0, vectors.find("$MSG"));
    for (int count = 1; count <= 60000; ++count) {
        char line[40];
        std::snprintf(line, sizeof line, "C 1 0 1 '00' \"%02X\" *\r\n", count & 255);
        text += count == 1 ? "0 0 0 1 '00' \"00\" L\r\n" + std::string(line) : line;
    }
    Write("COUNT8.SI", text);
    EXPECT_EQ(Call("teskk.dll", "TeskkVB", folder / "COUNT8", "jlas", "&"), 0);
    EXPECT_EQ(Count(base::msgError) + Count(base::msgWarning), 0u);
    const std::string so = Read("COUNT8.SO");
    EXPECT_NE(so.find("60000: C 1 0 1  00000000  LHLHHHHH L\r\n60001: C 1 0 1  00000000  LHHLLLLL L\r\n"),
              so.npos);
    EXPECT_TRUE(so.ends_with("\r\n\r\n60001 vectors, 0 mismatches\r\n"));
    EXPECT_TRUE(Read("COUNT8.VCD").ends_with("#6000100\r\n"));
    EXPECT_NE(Read("COUNT8.JED").find("QV60001*"), std::string::npos);
    std::size_t told = 0;
    for (const Sent& one : sent) told += one.Message == base::msgInfo && one.Text == "50000 vectors" ? 1 : 0;
    EXPECT_EQ(told, 1u);
    EXPECT_EQ(Hidden(), 0u);
    Write("COUNT8.SO", "old");
    fs::permissions(folder / "COUNT8.SO", fs::perms(0444));
    sent.clear();
    EXPECT_EQ(Call("vornk.dll", "VornkVB", folder / "COUNT8", "l"), 1);
    EXPECT_EQ(Count(base::msgError), 1u);
    EXPECT_EQ(Read("COUNT8.SO"), "old");
}

// A design that does not fit: its terms can be read, its fuses are not those of an earlier run.
TEST_F(Kernel, FailureLeavesNoOldFuses) {
    int code = -1;
    Run("-o jxlm4 COUNT8.PLD", code);
    ASSERT_TRUE(Exists("COUNT8.JED"));
    EXPECT_NE(Run("-o jxlm4 -d G16V8 COUNT8.PLD", code).find("Error"), std::string::npos);
    EXPECT_EQ(code, 1);
    EXPECT_FALSE(Exists("COUNT8.JED"));
    EXPECT_NE(Read("COUNT8.DOC").find("Q7.D =>"), std::string::npos);
}

TEST_F(Kernel, CommandLineTellsErrorsByItsCode) {
    int code = -1;
    const std::string lines = Run("-d virtual -o axlbm4 COUNT8.PLD", code);
    EXPECT_TRUE(lines.starts_with("[3003tm] Reduced: ")) << lines;
    EXPECT_TRUE(
        lines.ends_with("\n[4000tc] Written: COUNT8.DOC, COUNT8.PLA, COUNT8.ABS, COUNT8.LST for virtual\n"))
        << lines;
    EXPECT_EQ(code, 0);
    Write("BAD.PLD",
          "Name B; Partno 1; Date 1; Rev 1; Designer 1; Company 1; Assy 1; Loc 1; Device virtual;\n"
          "PIN = Y;\nY = X;\n");
    EXPECT_EQ(Run("-o l BAD.PLD", code), "[1201ta] Error: Unknown name: \"X\" (BAD.PLD line 3 column 5)\n");
    EXPECT_EQ(Run("--gnu -o l ./BAD.PLD", code), "./BAD.PLD:3:5: error: Unknown name: \"X\" [1201ta]\n");
    EXPECT_EQ(code, 1);
    EXPECT_NE(Run("MISSING.PLD", code).find("[0101tx] Error: "), std::string::npos);
    EXPECT_EQ(code, 1);
    for (const char* wrong :
         {"", "-o", "-x COUNT8.PLD", "COUNT8.PLD BAD.PLD", "\"\"", "-o jb -", "-o js -"}) {
        EXPECT_NE(Run(wrong, code).find("usage: "), std::string::npos) << wrong;
        EXPECT_EQ(code, 2) << wrong;
    }
    EXPECT_TRUE(Run("--help", code).starts_with("usage: "));
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(Run("--version", code).starts_with("teskc "));
    EXPECT_EQ(code, 0);
}

// The design comes from the standard input, the one output goes to the standard one, the messages do not mix
// in.
TEST_F(Kernel, CommandLineWorksOnStandardStreams) {
    int code = -1;
    Run("-o bjlm4 COUNT8.PLD", code);
    Write("BAD.PLD", "Name B;\nPIN = Y;\nY = X;\n");
    Write("WHOLE.PLD", "$INCLUDE COUNT8.PLD\n");
    const std::size_t before = std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    const struct {
        const char* Arguments;
        const char* Result;  // what is the same as this file
        int Code;
        const char* Message;
    } cases[] = {{"-o bm4 - <COUNT8.PLD", "COUNT8.PLA", 0, "[4000tc] Written: stdin.PLA for G22V10\n"},
                 {"- <WHOLE.PLD", "COUNT8.JED", 0, "[4000tc] Written: stdin.JED for G22V10\n"},
                 {"-o m0 - <COUNT8.PLD", nullptr, 0, "[4000tc] Written: nothing for G22V10\n"},
                 {"- <BAD.PLD", nullptr, 1, "(stdin.PLD line 3 column 5)\n"},
                 {"- </", nullptr, 1, "[0101tx] Error: "}};
    for (const auto& test : cases) {
        Run(std::string(test.Arguments) + " >OUT 2>LIST #", code);
        EXPECT_EQ(code, test.Code) << test.Arguments;
        EXPECT_EQ(Read("OUT"), test.Result == nullptr ? "" : Read(test.Result)) << test.Arguments;
        EXPECT_NE(Read("LIST").find(test.Message), std::string::npos) << Read("LIST");
    }
    const std::size_t after = std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    EXPECT_EQ(after, before + 2);
}

// Names without a pin are told by the fuse map; without its notes, by the letters of the last compile.
TEST_F(Kernel, TeskproveComparesFusesWithTheDesign) {
    const std::string design =
        "Name P; Partno 1; Date 1; Rev 1; Designer 1; Company 1; Assy 1; Loc 1; Device G22V10;\n"
        "PIN 1 = CLK; PIN = [A, B]; PIN = !Y; PIN = Q; PINNODE = N;\n"
        "N = A & !B; Y = N # Q; Q.T = A $ B; Q.CE = N;\n";
    Write("P.PLD", design);
    int code = -1;
    Run("-o jm4 P.PLD", code);
    const std::string map = Read("P.JED");
    ASSERT_NE(map.find("*\r\nN PIN 23 Y*\r\n"), std::string::npos) << map;
    std::string bare = map;
    for (std::size_t at = 0; (at = bare.find("\nN ")) != bare.npos;)
        bare.erase(at + 1, bare.find('\n', at + 1) - at);
    Write("BARE.JED", bare);
    std::string flipped = map;
    const std::size_t fuse = flipped.find("01", flipped.find("\nL"));
    flipped.replace(fuse, 2, "11");
    Write("FLIP.JED", flipped);
    Write("CUT.JED", map.substr(0, map.find("*\r\nC")));
    Write("WRONG.PLD", design + "B = X;\n");
    const struct {
        const char* Arguments;
        const char* Says;
        int Code;
    } cases[] = {{"P.PLD P.JED", "[7500tc] Fuse map proved: ", 0},
                 {"P.PLD BARE.JED", "[7500tc] Fuse map proved: ", 0},
                 {"P.PLD FLIP.JED", "[7501tc] Error: Fuse map is not the design: ", 1},
                 {"P.PLD CUT.JED", "[7301tc] Error: Fuse file is cut: ", 1},
                 {"P.PLD P.PLD", "[7300tc] Error: Not a fuse file (P.PLD line 1)\n", 1},
                 {"-d P16L8 P.PLD P.JED",
                  "[7400tc] Error: Fuse map is not of this device: 5892 fuses, P16L8 has 2048", 1},
                 {"-d virtual P.PLD P.JED", "virtual: no device whose fuses are known\n", 1},
                 {"P.PLD NONE.JED", "NONE.JED: cannot be read\n", 1},
                 {"WRONG.PLD P.JED", "[1201ta] Error: Unknown name: \"X\"", 1},
                 {"P.PLD", "usage: teskprove [-d DEVICE]", 2},
                 {"--version", "teskprove ", 0}};
    for (const auto& one : cases) {
        const std::string said = Run(one.Arguments, code, "teskprove");
        EXPECT_NE(said.find(one.Says), std::string::npos) << one.Arguments << ": " << said;
        EXPECT_EQ(code, one.Code) << one.Arguments;
    }
}
