#include "shell/HelpLibrary.h"

#include <algorithm>
#include <cctype>

#include "base/Text.h"

namespace shell {
namespace {

std::size_t HeadingLevel(std::string_view line) {
    const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
    return level > 0 && level < line.size() && line[level] == ' ' ? level : 0;
}

// Lower case, blanks as "-", without other marks.
std::string AnchorOf(std::string_view title) {
    std::string anchor;
    for (const char c : base::Lower(title)) {
        if (c == ' ') anchor += '-';
        if (std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_') anchor += c;
    }
    return anchor;
}

int TitleHits(const HelpPage& page, const std::vector<std::string>& words) {
    const std::string title = base::Upper(page.Title);
    return static_cast<int>(std::count_if(
        words.begin(), words.end(), [&](const std::string& word) { return base::Contains(title, word); }));
}

}  // namespace

HelpBook ReadHelpBook(std::string_view name, std::string text) {
    HelpBook book{std::string(name), std::move(text), {}};
    std::string_view rest = book.Text;
    bool isCode = false;
    while (!rest.empty()) {
        const std::size_t at = book.Text.size() - rest.size();
        const std::string_view line = base::TakeLine(rest);
        if (line.starts_with("```")) isCode = !isCode;
        const std::size_t level = isCode ? 0 : HeadingLevel(line);
        if (level == 0) continue;
        const std::string title = base::ReplaceAll(base::TrimView(line.substr(level)), "`", "");
        for (HelpPage& page : book.Pages) {
            if (page.OwnEnd == std::string::npos) page.OwnEnd = at;
            const bool holds = page.Level > 1 && page.Level < static_cast<int>(level);
            if (page.End == std::string::npos && !holds) page.End = at;
        }
        book.Pages.push_back(
            {title, AnchorOf(title), static_cast<int>(level), at, std::string::npos, std::string::npos});
    }
    if (book.Pages.empty()) book.Pages.push_back({book.Name, "", 1, 0, std::string::npos, std::string::npos});
    return book;
}

std::string HelpLibrary::PageText(HelpPlace place) const {
    const HelpPage& page = Page(place);
    return Books[place.Book].Text.substr(page.Begin, page.End - page.Begin);
}

std::optional<HelpPlace> HelpLibrary::Contents(std::string_view book) const {
    for (std::size_t i = 0; i < Books.size(); ++i)
        if (base::EqualNoCase(Books[i].Name, book)) return HelpPlace{i, 0};
    return std::nullopt;
}

std::optional<HelpPlace> HelpLibrary::Keyword(std::string_view title) const {
    for (std::size_t i = 0; i < Books.size(); ++i)
        for (std::size_t k = 0; k < Books[i].Pages.size(); ++k)
            if (base::EqualNoCase(Books[i].Pages[k].Title, title)) return HelpPlace{i, k};
    return std::nullopt;
}

std::optional<HelpPlace> HelpLibrary::Follow(std::string_view link, std::size_t book) const {
    const std::size_t mark = std::min(link.find('#'), link.size());
    const std::string_view file = link.substr(0, mark);
    const std::string_view anchor = link.substr(std::min(mark + 1, link.size()));
    if (!file.empty()) {
        if (!file.ends_with(".md")) return std::nullopt;
        const auto other = Contents(file.substr(0, file.size() - 3));
        if (!other || anchor.empty()) return other;
        book = other->Book;
    }
    const std::vector<HelpPage>& pages = Books[book].Pages;
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (pages[i].Anchor == anchor) return HelpPlace{book, i};
    return std::nullopt;
}

std::vector<HelpPlace> HelpLibrary::Search(std::string_view query) const {
    const std::string upperQuery = base::Upper(query);
    std::vector<std::string> words;
    for (const std::string_view word : base::Words(upperQuery)) words.emplace_back(word);
    std::vector<HelpPlace> found;
    if (words.empty()) return found;
    for (std::size_t i = 0; i < Books.size(); ++i) {
        const std::string text = base::Upper(Books[i].Text);
        for (std::size_t k = 0; k < Books[i].Pages.size(); ++k) {
            const HelpPage& page = Books[i].Pages[k];
            const auto own = std::string_view(text).substr(page.Begin, page.OwnEnd - page.Begin);
            if (std::all_of(words.begin(), words.end(),
                            [&](const std::string& word) { return base::Contains(own, word); }))
                found.push_back({i, k});
        }
    }
    std::stable_sort(found.begin(), found.end(), [&](HelpPlace a, HelpPlace b) {
        return TitleHits(Page(a), words) > TitleHits(Page(b), words);
    });
    return found;
}

}  // namespace shell
