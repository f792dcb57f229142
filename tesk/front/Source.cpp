#include "front/Source.h"

namespace front {

bool IsWordChar(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v' || c == '\r' || c == '\n'; }

std::string_view TrimView(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view FirstWord(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && IsBlank(text[start])) ++start;
    std::size_t end = start;
    while (end < text.size() && IsWordChar(text[end])) ++end;
    return text.substr(start, end - start);
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
        const bool pair = end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n';
        start = end + (pair ? 2 : 1);
    }
    return lines;
}

void BlankComments(SourceFile& file) {
    bool inside = false;
    int opened = 0;
    for (std::string_view view : SplitLines(file.Bytes)) {
        std::string line(view);
        for (std::size_t i = 0; i < line.size(); ++i) {
            const bool pair = i + 1 < line.size();
            if (!inside && pair && line[i] == '/' && line[i + 1] == '*') {
                inside = true;
                opened = static_cast<int>(file.Code.size()) + 1;
                line[i] = line[i + 1] = ' ';
                ++i;
            } else if (inside && pair && line[i] == '*' && line[i + 1] == '/') {
                inside = false;
                line[i] = line[i + 1] = ' ';
                ++i;
            } else if (inside) {
                line[i] = ' ';
            }
        }
        file.Code.push_back(std::move(line));
    }
    file.OpenComment = inside ? opened : 0;
}

}  // namespace front
