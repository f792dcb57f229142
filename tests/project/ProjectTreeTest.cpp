#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/Text.h"
#include "platform/qt/HostFileSystem.h"
#include "project/ProjectTree.h"
#include "support/Doubles.h"

namespace {

using Lines = std::vector<std::string>;

class ProjectTree : public testing::Test {
  protected:
    doubles::TemporaryFolder folder_;
    platform::qt::HostFileSystem files_;

    project::ProjectTree Read(const std::string& design = "COUNT8") const {
        return project::ReadProjectTree(files_, folder_.Logic(design));
    }
    // Each node below the root as "parent's key/text image file", sources first, then sorted: the folder's
    // order is the disk's.
    Lines Nodes(const std::string& design = "COUNT8") const {
        const auto tree = Read(design);
        Lines lines;
        for (std::size_t i = 1; i < tree.size(); ++i) {
            const std::string file = project::ProjectFileOf(tree, i);
            lines.push_back(tree[tree[i].Parent].Key + "/" + tree[i].Text + " " +
                            std::to_string(tree[i].Image) + " " + file.substr(folder_.Logic().size() + 1));
        }
        const auto isSource = [](const std::string& line) { return line.starts_with("r/"); };
        std::sort(std::find_if_not(lines.begin(), lines.end(), isSource), lines.end());
        return lines;
    }
};

}  // namespace

TEST_F(ProjectTree, ShowsTheFilesOfADesign) {
    for (const char* name : {"COUNT8.PLD", "COUNT8.SI", "COUNT8.VHD", "COUNT8.JED", "COUNT8.SO", "COUNT8.SIM",
                             "COUNT8.so", "count8.lst", "COUNT8", "COUNT8A.JED", "COUNT.JED", "OTHER.PLD"}) {
        folder_.Write(name, "");
    }
    std::filesystem::create_directory(folder_.Path() / "COUNT8.DIR");
    const auto tree = Read();
    EXPECT_EQ(tree[0].Key, "r");
    EXPECT_EQ(tree[0].Text, folder_.Logic("COUNT8"));
    EXPECT_EQ(tree[0].Image, 1);
    EXPECT_EQ(project::ProjectFileOf(tree, 0), "");
    EXPECT_EQ(Nodes(), (Lines{"r/COUNT8.PLD 1 COUNT8.PLD", "r/COUNT8.SI 1 COUNT8.SI",
                              "r/COUNT8.VHD 1 COUNT8.VHD", "PLD/COUNT8.JED 2 COUNT8.JED",
                              "PLD/COUNT8.so 2 COUNT8.so", "PLD/count8.lst 2 COUNT8.lst",
                              "SI/COUNT8.SIM 2 COUNT8.SIM", "SI/COUNT8.SO 2 COUNT8.SO"}));
    EXPECT_EQ(project::ProjectCaption("C:\\WORK\\COUNT8"), "PROJECT: C:\\WORK\\COUNT8");
    EXPECT_EQ(project::ProjectCaption("C:\\WORK.D\\COUNT8"), "PROJECT: C:\\WORK");
}

TEST_F(ProjectTree, LeavesOutFilesWithoutAParent) {
    folder_.Write("COUNT8.LST", "");
    folder_.Write("COUNT8.SO", "");
    EXPECT_EQ(Nodes(), Lines{});
    folder_.Write("COUNT8.VHD", "");
    EXPECT_EQ(Nodes(), Lines{"r/COUNT8.VHD 1 COUNT8.VHD"});
    folder_.Write("COUNT8.SI", "");
    EXPECT_EQ(Nodes(),
              (Lines{"r/COUNT8.SI 1 COUNT8.SI", "r/COUNT8.VHD 1 COUNT8.VHD", "SI/COUNT8.SO 2 COUNT8.SO"}));
    EXPECT_EQ(Read("GONE\\COUNT8").size(), 1u);
    const auto none = project::ReadProjectTree(files_, "");
    ASSERT_EQ(none.size(), 1u);
    EXPECT_EQ(project::ProjectFileOf(none, 0), "");
}

TEST_F(ProjectTree, NamesWithPointsAndInAnyCase) {
    for (const char* name : {"count8.pld", "COUNT8.r", "COUNT8.TXT", "COUNT8.OLD.TXT", "COUNT8.OLD.PLD",
                             "Count8.TXT", "Count8.Pld"}) {
        folder_.Write(name, "");
    }
    auto nodes = Nodes();
    for (std::string& node : nodes) node = base::ReplaceAll(node, "Count8", "COUNT8");  // either of two
    std::sort(nodes.begin() + 1, nodes.end());
    ASSERT_EQ(nodes.size(), 6u);
    EXPECT_TRUE(base::EqualNoCase(nodes[0], "r/COUNT8.PLD 1 COUNT8.PLD"));
    EXPECT_EQ(
        Lines(nodes.begin() + 1, nodes.end()),
        (Lines{"PLD/COUNT8.OLD.TXT 2 COUNT8.OLD.TXT", "PLD/COUNT8.Pld 2 COUNT8.Pld",
               "PLD/COUNT8.TXT 2 COUNT8.TXT", "PLD/COUNT8.r 2 COUNT8.r", "PLD/count8.pld 2 COUNT8.pld"}));
    folder_.Write("COUNT8.PLD", "");
    EXPECT_EQ(Nodes()[0], "r/COUNT8.PLD 1 COUNT8.PLD");
    EXPECT_EQ(Nodes("COUNT8.OLD"),
              (Lines{"r/COUNT8.OLD.PLD 1 COUNT8.OLD.PLD", "PLD/COUNT8.OLD.TXT 2 COUNT8.OLD.TXT"}));
    folder_.Write("A*B.PLD", "");
    folder_.Write("AXB.PLD", "");
    folder_.Write("AXB.JED", "");
    EXPECT_EQ(Nodes("A*B"), Lines{"r/A*B.PLD 1 A*B.PLD"});
}
