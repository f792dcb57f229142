#include "base/modLib.h"

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

}  // namespace base
