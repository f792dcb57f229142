#include "editor/KeywordEdit.h"

#include <algorithm>

namespace editor {

session::KeywordRec* KeywordEdit::At(int index) {
    const auto place = static_cast<std::size_t>(index);
    return index < 0 || place >= Words.size() ? nullptr : &Words[place];
}

bool KeywordEdit::MayAdd(const std::string& word) const {
    return word.find_first_of(state_.Delimiters) == word.npos;
}

// Kept: the word takes the place of the last one of the global table, and the new place stays empty.
std::optional<std::string> KeywordEdit::Add(const std::string& word) {
    const std::size_t global = state_.Keywords.size();
    const std::size_t last = global == 0 ? 0 : global - 1;
    if (!word.empty()) {
        Words.resize(global + 1);
        Words[last].Name = word;
        Words[last].Color = 0;
    }
    if (last >= Words.size()) return std::nullopt;
    return Words[last].Name;
}

// Kept: one fewer than in the global table, so that a second removal brings an empty entry. What would not
// fit behind an added word is not lost.
void KeywordEdit::Remove(const std::string& name) {
    std::erase_if(Words, [&](const session::KeywordRec& word) { return word.Name == name; });
    if (Words.size() + 1 < state_.Keywords.size()) Words.resize(state_.Keywords.size() - 1);
}

}  // namespace editor
