#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

// No error may unwind through the toolkit: what it calls of ours runs guarded (platform/qt/Guard.h).

namespace {

namespace fs = std::filesystem;

// Handlers that run nothing of ours which throws.
const std::set<std::string> plainHandlers = {"frmMessage::resizeEvent",     "frmMessage::closeEvent",
                                             "ToolHostShield::eventFilter", "TextBox::contextMenuEvent",
                                             "TextBox::dragEnterEvent",     "TextBox::dragMoveEvent",
                                             "TextBox::keyReleaseEvent",    "Welcome::eventFilter"};

template <typename Check>
void ForEachSource(const Check& check) {
    int count = 0;
    std::vector<fs::path> files;
    for (const char* folder : {"src", "companions"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_FOLDER) / folder))
            files.push_back(entry.path());
    for (const auto& path : files) {
        const auto extension = path.extension();
        if ((extension != ".h" && extension != ".cpp") || path.stem() == "Guard") continue;
        std::ifstream file(path);
        check(path.filename().string(), std::string(std::istreambuf_iterator<char>(file), {}));
        ++count;
    }
    ASSERT_GT(count, 50);
}

// The last of the arguments whose list begins at `open`.
std::string LastArgument(const std::string& text, std::size_t open) {
    int depth = 0;
    std::size_t from = open + 1;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == '(' || text[at] == '{' || text[at] == '[') ++depth;
        if (text[at] == ')' || text[at] == '}' || text[at] == ']') --depth;
        if (text[at] == ',' && depth == 1) from = at + 1;
        if (depth == 0) return text.substr(from, at - from);
    }
    return {};
}

}  // namespace

TEST(Edge, OnlySlotsOfTheToolkitAreConnectedWithoutAGuard) {
    static const std::regex call(R"((?:\w::|[^\w:])(connect|singleShot)\()");  // not ::connect
    static const std::regex slotOfToolkit(R"(\s*&Q\w+::\w+)");
    ForEachSource([](const std::string& name, const std::string& text) {
        for (auto each = std::sregex_iterator(text.begin(), text.end(), call); each != std::sregex_iterator();
             ++each) {
            const auto open = static_cast<std::size_t>(each->position() + each->length() - 1);
            const std::string slot = LastArgument(text, open);
            EXPECT_TRUE(std::regex_match(slot, slotOfToolkit))
                << name << ": connect with On(...), or Soon(...): " << slot;
        }
    });
}

TEST(Edge, EventHandlersAreGuarded) {
    static const std::regex handler(R"(\n(?:bool|void) (\w+::(?:\w*[eE]vent|eventFilter))\(Q[^)]*\) \{)");
    std::set<std::string> plain;
    ForEachSource([&](const std::string&, const std::string& text) {
        for (auto each = std::sregex_iterator(text.begin(), text.end(), handler);
             each != std::sregex_iterator(); ++each) {
            const auto from = static_cast<std::size_t>(each->position());
            const std::string body = text.substr(from, text.find("\n}", from + 1) - from);
            if (body.find("Guarded(") == std::string::npos) plain.insert((*each)[1]);
        }
    });
    EXPECT_EQ(plain, plainHandlers) << "guard it, or list it if nothing in it throws";
}
