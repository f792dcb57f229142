#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "base/modLib.h"
#include "shell/HelpLibrary.h"
#include "shell/HelpTopics.h"

namespace {

namespace fs = std::filesystem;

std::string TextOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string Titles(const shell::HelpLibrary& library, const std::vector<shell::HelpPlace>& places) {
    std::string titles;
    for (const shell::HelpPlace place : places) titles += library.Page(place).Title + "|";
    return titles;
}

}  // namespace

TEST(Help, EveryTopicAndEveryLinkOfTheShippedFilesLeadsToAPage) {
    shell::HelpLibrary library;
    session::Session state;
    state.HelpFile = "C:\\K\\Korvane.HLP";
    for (const shell::HelpFile& file : shell::HelpFiles(state)) {
        const std::string name = base::BareName(file.Path);
        library.Books.push_back(shell::ReadHelpBook(name, TextOf(HELP_FOLDER "/" + name + ".md")));
        EXPECT_GT(library.Books.back().Text.size(), 500u) << name;
    }
    for (const char* form : {"frmCompiler", "frmSimulator", "frmVhdl", "frmFindText", "frmReplace",
                             "frmExport", "frmZrxParams", "frmZonerex", "frmMacroDef", "frmKorvane",
                             "frmTable", "frmMacroCreate", "frmMacroRef", "frmErrorMessage"}) {
        const auto page = library.Keyword(shell::HelpTopicOf(form));
        ASSERT_TRUE(page) << form;
        EXPECT_EQ(page->Book, 0u) << form;
    }
    const std::regex link(R"(\]\(([^)]+)\))");
    int links = 0;
    for (std::size_t i = 0; i < library.Books.size(); ++i) {
        const std::string& text = library.Books[i].Text;
        for (std::sregex_iterator each(text.begin(), text.end(), link), end; each != end; ++each, ++links)
            EXPECT_TRUE(library.Follow((*each)[1].str(), i)) << library.Books[i].Name << ": " << each->str();
    }
    EXPECT_GT(links, 60);
    for (const auto& file : fs::directory_iterator(HELP_FOLDER))
        EXPECT_TRUE(library.Contents(file.path().stem().string())) << file.path();
}

TEST(Help, PagesHoldTheirSectionsAndAreFound) {
    const shell::HelpLibrary library{
        {shell::ReadHelpBook(
             "A", "# Guide\nabout\n## One `x`\n1\n### Deep\nred fox\n```\n# no page\n```\n## Two\nfox"),
         shell::ReadHelpBook("B", "no heading"),
         shell::ReadHelpBook("C", "# C\n## Fox hunt\nRed\n## Fox\n")}};
    const std::pair<const char*, const char*> cases[] = {
        {"A.md", "# Guide\nabout\n"},
        {"a.md#one-x", "## One `x`\n1\n### Deep\nred fox\n```\n# no page\n```\n"},
        {"A.md#deep", "### Deep\nred fox\n```\n# no page\n```\n"},
        {"#fox-hunt", "## Fox hunt\nRed\n"},
        {"B.md", "no heading"},
        {"A.md#no-page", ""},
        {"D.md", ""},
        {"A.txt", ""}};
    for (const auto& [link, text] : cases) {
        const auto place = library.Follow(link, 2);
        EXPECT_EQ(place ? library.PageText(*place) : "", text) << link;
    }
    EXPECT_EQ(Titles(library, library.Search(" fOx  red ")), "Fox hunt|Deep|");
    EXPECT_EQ(Titles(library, library.Search("fox")), "Fox hunt|Fox|Deep|Two|");
    EXPECT_TRUE(library.Search(" ").empty() && library.Search("hen").empty());
}
