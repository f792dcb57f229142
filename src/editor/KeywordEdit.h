#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "session/Session.h"

namespace editor {

struct PaletteColor {
    const char* Name;
    std::int32_t Color;  // 0x00BBGGRR
};

// The colours that a keyword can be given, in the order of the console palette.
inline constexpr PaletteColor Palette[] = {
    {"Black", 0x000000},       {"Blue", 0x800000},
    {"Green", 0x008000},       {"Cyan", 0x808000},
    {"Red", 0x000080},         {"Magenta", session::Magenta},
    {"Brown", 0x008080},       {"Light Grey", 0xC0C0C0},
    {"Grey", 0x808080},        {"Light Blue", session::LightBlue},
    {"Light Green", 0x00FF00}, {"Light Cyan", 0xFFFF00},
    {"Light Red", 0x0000FF},   {"Light Magenta", 0xFF00FF},
    {"Yellow", 0x00FFFF},      {"White", 0xFFFFFF},
};

// The private copy of the keyword table that frmKorvane edits. The global table stays as it is meanwhile, and
// its size is what the operations go by.
class KeywordEdit {
  public:
    explicit KeywordEdit(const session::Session& state) : Words(state.Keywords), state_(state) {}

    std::vector<session::KeywordRec> Words;

    session::KeywordRec* At(int index);  // null if there is none

    bool MayAdd(const std::string& word) const;  // no character of it is in Delimiters
    // Takes a word in, or with an empty one nothing. Gives the name for a further line of the list, if any.
    std::optional<std::string> Add(const std::string& word);
    void Remove(const std::string& name);  // every entry of that very name
    void Reset() { Words = state_.Keywords; }

  private:
    const session::Session& state_;
};

}  // namespace editor
