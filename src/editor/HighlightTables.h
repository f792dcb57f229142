#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/Records.h"

// What start-up puts into the highlighter's part of the shared state.
namespace editor {

// The characters of codes 1 to 255 that are no word characters, ascending.
std::string MakeDelimiters();

// The 26 key codes after whose release nothing is painted: keys that cannot have changed the text.
std::vector<std::int16_t> MakeNoHighlightKeys();

// The words of the language and their colours, before the configuration file replaces them.
std::vector<session::KeywordRec> DefaultKeywords();

}  // namespace editor
