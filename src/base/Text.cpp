#include "base/Text.h"

#include <algorithm>

namespace base {
namespace {

char LowerChar(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The length of the UTF-8 sequence at the head of `text`, 0 if there is none.
std::size_t SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF5 ? 0 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (length == 0 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
    }
    const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
    const bool surrogate = lead == 0xED && byte(1) > 0x9F;
    const bool tooLarge = lead == 0xF4 && byte(1) > 0x8F;
    return overlong || surrogate || tooLarge ? 0 : length;
}

template <typename Change>
std::string Map(std::string_view text, Change change) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), change);
    return result;
}

}  // namespace

char UpperChar(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
std::string Upper(std::string_view text) { return Map(text, UpperChar); }
std::string Lower(std::string_view text) { return Map(text, LowerChar); }

bool EqualNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return UpperChar(x) == UpperChar(y); });
}

bool StartsWith(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }
bool Contains(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

std::string Mid(std::string_view text, std::size_t start, std::size_t count) {
    if (start == 0 || start > text.size()) return {};
    return std::string(text.substr(start - 1, count));
}

std::string Left(std::string_view text, std::size_t count) { return std::string(text.substr(0, count)); }

std::string Right(std::string_view text, std::size_t count) {
    return std::string(text.substr(text.size() - std::min(count, text.size())));
}

std::string_view TrimView(std::string_view text) {
    constexpr std::string_view white = " \t\r\n";
    const auto first = std::min(text.find_first_not_of(white), text.size());
    return text.substr(first, text.find_last_not_of(white) + 1 - first);
}

std::string Trim(std::string_view text) { return std::string(TrimView(text)); }

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    std::size_t at = 0;
    while (!from.empty()) {
        const auto hit = text.find(from, at);
        if (hit == text.npos) break;
        result.append(text.substr(at, hit - at)).append(to);
        at = hit + from.size();
    }
    return result.append(text.substr(at));
}

std::string PadLeft(std::string text, std::size_t width, char fill) {
    if (text.size() < width) text.insert(0, width - text.size(), fill);
    return text;
}

std::string PadRight(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

std::string_view TakeLine(std::string_view& rest) {
    const auto end = std::min(rest.find_first_of("\r\n"), rest.size());
    const auto line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + (rest.substr(end, 2) == "\r\n" ? 2 : 1), rest.size()));
    return line;
}

std::vector<std::string_view> LineViews(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(TakeLine(text));
    return lines;
}

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) lines.emplace_back(TakeLine(text));
    return lines;
}

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t at = 0; (at = text.find_first_not_of(" \t", at)) != text.npos;) {
        const auto end = std::min(text.find_first_of(" \t", at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

std::string ToCrLf(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
            result += "\r\n";
        } else {
            result += c;
        }
    }
    return result;
}

bool IsValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto length = SequenceLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string DisplayUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto length = SequenceLength(text);
        if (length == 0) {
            result += "\xEF\xBF\xBD";
            text.remove_prefix(1);
        } else {
            result += text.substr(0, length);
            text.remove_prefix(length);
        }
    }
    return result;
}

}  // namespace base
