#include "kernel/GnuLine.h"

#include <string_view>

#include "base/Text.h"

namespace kernel {
namespace {

// Takes "WORD 12" off the end of a text and gives the digits; empty without it.
std::string_view TakeNumber(std::string_view& text, std::string_view word) {
    const std::size_t at = text.rfind(word);
    if (at == text.npos) return {};
    const std::string_view digits = text.substr(at + word.size());
    if (digits.empty() || digits.find_first_not_of("0123456789") != digits.npos) return {};
    text = text.substr(0, at);
    return digits;
}

// Takes "(FILE line 5 column 9)" off the end of a message and gives it as "FILE:5:9: ".
std::string TakePlace(std::string_view& text, const std::string& folder) {
    const std::size_t open = text.rfind(" (");
    if (!text.ends_with(')') || open == text.npos) return "";
    std::string_view file = text.substr(open + 2, text.size() - open - 3);
    const std::string_view column = TakeNumber(file, " column ");
    const std::string_view line = TakeNumber(file, " line ");
    if (line.empty()) return "";
    text = text.substr(0, open);
    std::string place = file.starts_with('/') ? "" : folder;
    ((place += file) += ':') += line;
    if (!column.empty()) (place += ':') += column;
    return place + ": ";
}

}  // namespace

std::string GnuLine(const std::string& line, const std::string& folder) {
    const std::size_t end = line.find("] ");
    if (!line.starts_with('[') || end == line.npos) return line;
    std::string_view text = std::string_view(line).substr(end + 2);
    std::string_view level = "Note: ";
    for (const std::string_view each : {"Error: ", "Warning: "})
        if (text.starts_with(each)) level = each;
    if (text.starts_with(level)) text.remove_prefix(level.size());
    const std::string place = TakePlace(text, folder);
    return place + base::Lower(level) + std::string(text) + " " + line.substr(0, end + 1);
}

}  // namespace kernel
