#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

// A part of a help file, from its heading on.
struct HelpPage {
    std::string Title;   // the heading without its marks
    std::string Anchor;  // what links call it: "5-declarations"
    int Level = 1;       // 1: the title of the file, 2: a chapter, 3 and more: what it holds
    std::size_t Begin = 0;
    std::size_t OwnEnd = 0;  // the next heading
    std::size_t End = 0;     // the next heading that this one does not hold
};

// A help file: Markdown. Links call it by its name without extension: "TeskRef.md#5-declarations".
struct HelpBook {
    std::string Name;
    std::string Text;
    std::vector<HelpPage> Pages;
};

HelpBook ReadHelpBook(std::string_view name, std::string text);

struct HelpPlace {
    std::size_t Book = 0;
    std::size_t Page = 0;
    bool operator==(const HelpPlace&) const = default;
};

class HelpLibrary {
  public:
    std::vector<HelpBook> Books;

    const HelpPage& Page(HelpPlace place) const { return Books[place.Book].Pages[place.Page]; }
    std::string PageText(HelpPlace place) const;  // of a file's title: up to its first chapter
    std::optional<HelpPlace> Contents(std::string_view book) const;  // by its name: the first page
    // The page of that title, in any case, of the first book that has one.
    std::optional<HelpPlace> Keyword(std::string_view title) const;
    // What a link on a page of `book` leads to.
    std::optional<HelpPlace> Follow(std::string_view link, std::size_t book) const;
    // The pages that hold every word of the query, in any case, those with the most of them in the title
    // first. Nothing for a blank query.
    std::vector<HelpPlace> Search(std::string_view query) const;
};

}  // namespace shell
