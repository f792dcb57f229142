#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "base/PosixFile.h"
#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace {

const std::string kHeader =
    "Name Fragment; Partno 1; Date 1; Rev 1; Designer 1; Company 1; Assy 1; Loc 1; Device virtual;\n";

// A fenced block: what stands behind the fence ("tesk", "tesk 1302ta", "si", ""), its text and first line.
struct Block {
    std::string Info;
    std::string Text;
    int Line;
};

std::vector<Block> Blocks(const std::string& page) {
    std::vector<Block> blocks;
    std::istringstream in(page);
    bool open = false;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.starts_with("```")) {
            open = !open;
            if (open) blocks.push_back({line.substr(3), "", number + 1});
        } else if (open) {
            blocks.back().Text += line + "\n";
        }
    }
    return blocks;
}

class Reference : public ::testing::Test, protected doubles::TemporaryFolder {
  protected:
    // What teskc prints of a file of the folder: errors and warnings; what a run without them tells at its
    // end is left out.
    std::string Compile(const std::string& arguments, int& code) const {
        const auto done = test::RunShell(Path(), STAGE_DIR "/bin/teskc " + arguments + " 2>&1");
        code = done.Exit;
        std::istringstream lines(done.Text);
        std::string faults;
        for (std::string one; std::getline(lines, one);)
            if (!one.starts_with("[3003tm]") && !one.starts_with("[4000tc]") && !one.starts_with("[7500tc]"))
                faults += one + "\n";
        return faults;
    }

    const std::string page = base::ReadWhole(SOURCE_DIR "/docs/help/TeskRef.md", 1u << 24);
};

}  // namespace

TEST_F(Reference, EveryExampleDoesWhatThePageSays) {
    const std::vector<Block> blocks = Blocks(page);
    std::string declarations;
    std::size_t tried = 0;
    std::ptrdiff_t passed = 0;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const Block& block = blocks[i];
        if (block.Info.empty() && declarations.empty()) declarations = block.Text;
        if (!block.Info.starts_with("tesk")) continue;
        SCOPED_TRACE("docs/help/TeskRef.md line " + std::to_string(block.Line));
        const bool whole = block.Text.starts_with("Name");
        const bool simulated = whole && i + 1 < blocks.size() && blocks[i + 1].Info == "si";
        Write("BLOCK.PLD", whole ? block.Text : kHeader + declarations + block.Text);
        if (simulated) Write("BLOCK.SI", blocks[i + 1].Text);
        int code = -1;
        const std::string said = Compile(
            std::string("-o axlm4") + (whole ? "j" : "") + (simulated ? "s" : "") + " BLOCK.PLD", code);
        const std::string expected = block.Info.size() > 5 ? block.Info.substr(5) : "";
        if (expected.empty()) {
            EXPECT_EQ(said, "");
            EXPECT_EQ(code, 0);
        } else {
            EXPECT_NE(said.find("[" + expected + "]"), std::string::npos) << said;
        }
        if (simulated) passed += Read("BLOCK.SO").find(" 0 mismatches") != std::string::npos ? 1 : 0;
        ++tried;
    }
    EXPECT_GT(tried, 20u);
    EXPECT_GT(passed, 1);
    EXPECT_EQ(passed, std::count_if(blocks.begin(), blocks.end(),
                                    [](const Block& block) { return block.Info == "si"; }))
        << "vectors that differ, or that no design is simulated with";
}

// A family is the first two digits of a code and its stage.
TEST_F(Reference, EveryFamilyOfMessagesIsTold) {
    std::istringstream messages(base::ReadWhole(SOURCE_DIR "/data/TeskErr.txt", 1u << 24));
    std::size_t count = 0;
    for (std::string line; std::getline(messages, line); ++count) {
        if (count % 3 != 0 || line.size() < 7) continue;
        const std::string family = "`" + line.substr(0, 2) + " " + line.substr(4, 2) + "`";
        EXPECT_NE(page.find(family), std::string::npos) << family;
    }
    EXPECT_GT(count, 300u);
}

// The vectors of an example pass, and they see each output that they expect anything of in both its levels.
TEST_F(Reference, ExamplesAreTestedThoroughly) {
    std::size_t designs = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(SOURCE_DIR "/data/Examples"))
        fs::copy(entry.path(), Path());
    for (const fs::directory_entry& entry : fs::directory_iterator(SOURCE_DIR "/data/Examples")) {
        if (entry.path().extension() != ".PLD") continue;
        SCOPED_TRACE(entry.path().filename().string());
        int code = -1;
        EXPECT_EQ(Compile("-o jm1 " + entry.path().filename().string(), code), "");  // quick does as well
        EXPECT_EQ(Compile("-o jaxflsm4 " + entry.path().filename().string(), code), "");
        EXPECT_EQ(code, 0);
        EXPECT_LE(entry.path().stem().string().size(), 8u);
        std::istringstream jedec(Read(entry.path().stem().string() + ".JED"));
        std::map<std::size_t, std::set<char>> seen;
        for (std::string line; std::getline(jedec, line);) {
            if (line[0] != 'V') continue;
            for (std::size_t pin = line.find(' ') + 1; line[pin] != '*'; ++pin) seen[pin].insert(line[pin]);
        }
        EXPECT_GT(seen.size(), 19u);
        int driven = 0;
        for (const auto& [pin, values] : seen) {
            const int levels = values.contains('L') + values.contains('H') + values.contains('Z');
            EXPECT_NE(levels, 1) << "pin " << pin - 5;
            driven += levels > 1 ? 1 : 0;
        }
        EXPECT_GT(driven, 0);
        ++designs;
    }
    EXPECT_GE(designs, 8u);
}
