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

std::string Trim(std::string_view text) {
    constexpr std::string_view white = " \t\r\n";
    const auto first = text.find_first_not_of(white);
    if (first == text.npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(white) - first + 1));
}

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

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < text.size()) {
        const auto end = text.find_first_of("\r\n", at);
        lines.emplace_back(text.substr(at, end == text.npos ? text.npos : end - at));
        if (end == text.npos) break;
        at = end + (text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n' ? 2 : 1);
    }
    return lines;
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
