#include <gtest/gtest.h>

#include "platform/PathMap.h"
#include "support/TemporaryFolder.h"

namespace {

class PathMapTest : public testing::Test {
  protected:
    PathMapTest() {
        for (const char* name :
             {"Work/Count8.pld", "Work/COUNT8.PLD", "Work/b.si", "Work/B.si", "Work/sub.d/x"})
            folder.Write(name, "x");
    }
    std::string Host(const char* path, const char* current = "C:\\") {
        const std::string whole = platform::PathMap(root.string()).ToHost(path, current);
        return whole.substr(root.string().size());
    }
    const doubles::TemporaryFolder folder;
    const std::filesystem::path root = folder.Path();
};

}  // namespace

TEST_F(PathMapTest, FindsNamesExactlyThenWithoutCaseInByteOrder) {
    EXPECT_EQ(Host("C:\\WORK\\COUNT8.PLD"), "/Work/COUNT8.PLD");
    EXPECT_EQ(Host("C:\\work\\Count8.pld"), "/Work/Count8.pld");
    EXPECT_EQ(Host("c:/work/count8.PLD"), "/Work/COUNT8.PLD");
    EXPECT_EQ(Host("C:\\WORK\\B.SI"), "/Work/B.si");
    EXPECT_EQ(Host("C:\\WORK\\New.doc"), "/Work/New.doc");
    EXPECT_EQ(Host("C:\\NoWhere\\X"), "/NoWhere/X");
}

TEST_F(PathMapTest, RelativePathsAndDots) {
    EXPECT_EQ(Host("b.si", "C:\\Work"), "/Work/b.si");
    EXPECT_EQ(Host("..\\..\\WORK\\.\\b.si", "C:\\work\\SUB.D\\"), "/Work/b.si");
    EXPECT_EQ(Host("..\\..\\..\\WORK"), "/Work");
    EXPECT_EQ(Host("\\WORK", "C:\\else"), "/Work");
}

TEST_F(PathMapTest, BackFromTheHost) {
    const platform::PathMap map(root.string());
    EXPECT_EQ(map.FromHost(root.string() + "/Work/b.si"), "C:\\Work\\b.si");
    EXPECT_EQ(map.FromHost("/elsewhere"), "/elsewhere");
    EXPECT_EQ(platform::PathMap().FromHost("/tmp/x"), "C:\\tmp\\x");
    EXPECT_EQ(platform::PathMap().ToHost("C:\\"), "/");
}
