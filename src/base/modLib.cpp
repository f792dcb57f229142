#include "base/modLib.h"

#include <algorithm>

#include "base/Text.h"

namespace base {

std::string StripExtension(std::string_view name) { return std::string(name.substr(0, name.rfind('.'))); }

std::string FileExtension(std::string_view name) {
    const auto dot = name.rfind('.');
    return Upper(dot == name.npos ? name : name.substr(dot + 1, 3));
}

std::string BareName(std::string_view name) {
    const std::string stripped = StripExtension(name);
    return stripped.substr(stripped.rfind('\\') + 1);
}

std::string DirectoryPart(std::string_view name) {
    const auto slash = name.rfind('\\');
    return std::string(slash == name.npos ? name : name.substr(0, slash + 1));
}

std::string PrintableOnly(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c >= 33 && c <= 126) result += c;
    }
    return result;
}

bool IsWordChar(char c) {
    return c == '_' || IsDigitChar(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }
bool IsBlankChar(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 33 || code >= 127;
}
bool IsDigitChar(char c) { return c >= '0' && c <= '9'; }

std::string ValueToBits(std::int32_t value, std::int32_t width) {
    std::string bits;
    auto rest = static_cast<std::uint32_t>(value);
    for (int i = std::min(width, 32); i > 0; --i, rest >>= 1) bits += (rest & 1) != 0 ? '1' : '0';
    return {bits.rbegin(), bits.rend()};
}

std::int32_t BitsToValue(std::string_view text) {
    std::uint32_t value = 0;  // what is left of the last 32 characters leaves it at the top
    for (const char c : text) value = value << 1 | (c == '1' ? 1U : 0U);
    return static_cast<std::int32_t>(value);
}

std::string WidenRight(std::string_view text, char fill, std::int32_t width) {
    std::string wide(text);
    if (width > 0) wide.resize(std::max(wide.size(), static_cast<std::size_t>(width)), fill);
    return wide;
}

bool IsHexText(std::string_view text) {
    const std::string_view trimmed = TrimView(text);
    return std::all_of(trimmed.begin(), trimmed.end(), [](char c) {
        return (c >= '"' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'h');
    });
}

}  // namespace base
