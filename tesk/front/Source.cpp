#include "front/Source.h"

#include "base/Text.h"

#include "base/Text.h"

namespace front {

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

void BlankComments(SourceFile& file) {
    bool inside = false;
    int opened = 0;
    for (std::string_view view : base::LineViews(file.Bytes)) {
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
