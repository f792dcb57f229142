#pragma once

#include <string_view>

#include "aids/MacroLibrary.h"

namespace aids {

// Takes the lines of a text one by one into a table. The words are found anywhere in a line and in any case.
class MacroGrammar {
  public:
    enum class State { Outside, Inside };  // of a definition

    MacroGrammar(MacroTable& table, State state) : table_(table), state_(state) {}

    enum class Line { Other, End };
    Line Take(std::string_view line);  // trimmed; End for `$MEND`

  private:
    MacroTable& table_;
    State state_;
};

std::string_view TrimBlanks(std::string_view text);  // blanks alone
// 0 or more; npos without a hit. ASCII case is ignored.
std::size_t FindNoCase(std::string_view text, std::string_view word, std::size_t from = 0);

}  // namespace aids
