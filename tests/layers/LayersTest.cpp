#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

// Who may include whom. The link lists keep most of it; this finds the includes that need no linking.

namespace {

namespace fs = std::filesystem;

const std::set<std::string> rooms = {"editor", "toolchain", "devices", "project", "aids", "partitioner"};

struct Include {
    std::string File;    // relative to the tree
    std::string Target;  // as written
    bool IsSystem;
};

std::vector<Include> IncludesBelow(const std::string& folder) {
    static const std::regex line(R"(^\s*#include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> found;
    const fs::path tree = SOURCE_FOLDER;
    for (const auto& entry : fs::recursive_directory_iterator(tree / folder)) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp") continue;
        std::ifstream file(entry.path());
        std::smatch match;
        for (std::string text; std::getline(file, text);) {
            if (!std::regex_search(text, match, line)) continue;
            found.push_back({fs::relative(entry.path(), tree / folder).string(), match[2], match[1] == "<"});
        }
    }
    return found;
}

std::string Head(const std::string& path) { return path.substr(0, path.find('/')); }

bool IsWindow(const std::string& file) {
    const std::string name = fs::path(file).filename().string();
    return name.starts_with("frm") || name.ends_with("Room.h") ||
           file.find("/windows/") != std::string::npos || file.find("/app/") != std::string::npos;
}

std::set<std::string> MayInclude(const std::string& room) {
    if (room == "base") return {"base"};
    if (room == "platform") return {"base", "platform"};
    if (room == "session") return {"base", "platform", "session"};
    std::set<std::string> allowed = {"base", "platform", "session", room};
    if (room == "shell") allowed.insert(rooms.begin(), rooms.end());
    return allowed;
}

}  // namespace

TEST(Layers, EveryRoomIncludesOnlyWhatLiesBelowIt) {
    const auto includes = IncludesBelow("src");
    ASSERT_GT(includes.size(), 100u);
    for (const Include& include : includes) {
        if (include.IsSystem || include.Target.find('/') == std::string::npos) continue;
        EXPECT_TRUE(MayInclude(Head(include.File)).contains(Head(include.Target)))
            << include.File << " includes " << include.Target;
    }
}

TEST(Layers, LogicKnowsNoToolkit) {
    for (const Include& include : IncludesBelow("src")) {
        const bool mayUseQt = include.File.starts_with("platform/qt/") || IsWindow(include.File);
        const bool isQt = (include.IsSystem && include.Target.size() > 1 && include.Target[0] == 'Q' &&
                           std::isupper(static_cast<unsigned char>(include.Target[1]))) ||
                          include.Target.starts_with("Qsci/") || include.Target.starts_with("platform/qt/");
        EXPECT_TRUE(mayUseQt || !isQt) << include.File << " includes " << include.Target;
    }
}

TEST(Layers, TheShellKnowsARoomByItsDoorAlone) {
    int doors = 0;
    for (const Include& include : IncludesBelow("src")) {
        if (Head(include.File) != "shell" || !rooms.contains(Head(include.Target))) continue;
        const bool isDoor = include.Target.ends_with("Room.h");
        doors += isDoor ? 1 : 0;
        EXPECT_TRUE(isDoor || !IsWindow(include.Target)) << include.File << " includes " << include.Target;
    }
    EXPECT_GE(doors, 3);
}

TEST(Layers, TheDoorsInTheHallAreSmall) {
    int largest = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(SOURCE_FOLDER) / "src" / "session")) {
        std::ifstream file(entry.path());
        int calls = 0;
        for (std::string line; std::getline(file, line);)
            calls += line.find("virtual") != line.npos && line.find("= 0;") != line.npos ? 1 : 0;
        EXPECT_LT(calls, 10) << entry.path();
        largest = std::max(largest, calls);
    }
    EXPECT_GE(largest, 5) << "they were not found";
}

TEST(Layers, CompanionsMeetTheProgramThroughTheLinkAlone) {
    const std::set<std::string> allowed = {
        "platform/PathMap.h",         "platform/Registry.h",           "platform/qt/LinkServer.h",
        "platform/qt/HostRegistry.h", "platform/qt/HostApplication.h", "platform/qt/Guard.h",
        "platform/qt/Twips.h"};
    const auto includes = IncludesBelow("companions");
    ASSERT_FALSE(includes.empty());
    for (const Include& include : includes) {
        const std::string head = Head(include.Target);
        EXPECT_TRUE(include.IsSystem || head == "base" || head == Head(include.File) ||
                    allowed.contains(include.Target))
            << include.File << " includes " << include.Target;
    }
}

TEST(Layers, TheToolChainStandsOnItsOwn) {
    const fs::path tree = SOURCE_FOLDER;
    for (const Include& include : IncludesBelow("tesk")) {
        if (include.IsSystem || include.Target.find('/') == std::string::npos) continue;
        const std::string head = Head(include.Target);
        EXPECT_TRUE(head == "base" || fs::is_directory(tree / "tesk" / head))
            << include.File << " includes " << include.Target;
    }
}
