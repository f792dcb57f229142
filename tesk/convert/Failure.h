#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace convert {

// What stops a conversion: the line that is to blame (from 1, 0: the file as a whole) and the construct.
struct Failure {
    int Line = 0;
    std::string What;
};

[[noreturn]] inline void Fail(int line, std::string what) { throw Failure{line, std::move(what)}; }

// A design that was converted: the text of the .PLD, and what the reader left out without harm to the
// function.
struct Conversion {
    std::string Text;
    std::vector<std::string> Notes;
};

// What a message shows of a text from outside.
inline std::string Shown(std::string_view text) {
    constexpr std::size_t most = 40;
    return "\"" + std::string(text.substr(0, most)) + (text.size() > most ? "…" : "") + "\"";
}

}  // namespace convert
