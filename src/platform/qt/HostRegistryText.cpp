#include "platform/qt/HostRegistryText.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/Text.h"

namespace platform::qt {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view NumberMark = "number:";
constexpr std::string_view ClassName = "@class";
constexpr std::string_view HexDigits = "0123456789ABCDEF";
constexpr std::string_view Escaped = "\\\"\n\r\t";
constexpr std::string_view EscapeLetters = "\\\"nrt";

bool IsControl(char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }

std::string Quote(std::string_view text) {
    const bool isUtf8 = base::IsValidUtf8(text);
    std::string quoted = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        const auto escape = Escaped.find(c);
        if (escape != std::string_view::npos)
            quoted += {'\\', EscapeLetters[escape]};
        else if (IsControl(c) || (code >= 128 && !isUtf8))
            quoted += {'\\', 'x', HexDigits[code / 16], HexDigits[code % 16]};
        else
            quoted += c;
    }
    return quoted + "\"";
}

// Takes one escape, behind its backslash, off the head of `rest`.
std::optional<char> TakeEscape(std::string_view& rest) {
    if (rest.empty()) return std::nullopt;
    if (const auto letter = EscapeLetters.find(rest[0]); letter != std::string_view::npos) {
        rest.remove_prefix(1);
        return Escaped[letter];
    }
    unsigned code = 0;
    if (rest[0] != 'x' || rest.size() < 3) return std::nullopt;
    const auto [end, error] = std::from_chars(rest.data() + 1, rest.data() + 3, code, 16);
    if (error != std::errc() || end != rest.data() + 3) return std::nullopt;
    rest.remove_prefix(3);
    return static_cast<char>(code);
}

std::optional<RegistryValue> ParseText(std::string_view rest) {
    std::string text;
    rest.remove_prefix(1);
    while (!rest.empty() && rest[0] != '"') {
        char c = rest[0];
        rest.remove_prefix(1);
        if (c == '\\') {
            const auto escaped = TakeEscape(rest);
            if (!escaped) return std::nullopt;
            c = *escaped;
        }
        text += c;
    }
    if (rest != "\"") return std::nullopt;
    return text;
}

std::optional<RegistryValue> ParseNumber(std::string_view digits) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    if (number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

std::optional<RegistryValue> ParseValue(std::string_view text) {
    if (text.starts_with('"')) return ParseText(text);
    if (text.starts_with(NumberMark)) return ParseNumber(text.substr(NumberMark.size()));
    return std::nullopt;
}

}  // namespace

bool RegistryText::IsKey(std::string_view text) {
    return !text.empty() && base::Trim(text) == text && text.find(']') == text.npos &&
           std::none_of(text.begin(), text.end(), IsControl);
}

bool RegistryText::IsName(std::string_view text) {
    return !text.empty() && base::Trim(text) == text && text.find('=') == text.npos &&
           std::string_view("[;#@\"").find(text[0]) == std::string_view::npos &&
           std::none_of(text.begin(), text.end(), IsControl);
}

RegistryText::RegistryText(std::string_view bytes) : sections_{{}} {
    while (!bytes.empty()) {
        const auto end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view raw = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        std::string line = base::Trim(raw);
        if (line.starts_with(ByteOrderMark)) line = base::Trim(line.substr(ByteOrderMark.size()));
        if (line.size() > 2 && line.front() == '[' && line.back() == ']')
            sections_.push_back({base::Trim(line.substr(1, line.size() - 2))});
        sections_.back().Lines.push_back(ParseLine(raw));
    }
}

RegistryText::Line RegistryText::ParseLine(std::string_view raw) {
    Line line{std::string(raw)};
    const auto equals = raw.find('=');
    if (equals == raw.npos) return line;
    std::string name = base::Trim(raw.substr(0, equals));
    if (!IsName(name)) return line;
    line.Name = std::move(name);
    line.Value = ParseValue(base::Trim(raw.substr(equals + 1)));
    return line;
}

RegistryText::Line RegistryText::MakeLine(std::string_view name, RegistryValue value) {
    std::string raw = std::string(name) + "=";
    if (const auto* number = std::get_if<std::uint32_t>(&value))
        raw += std::string(NumberMark) + std::to_string(static_cast<std::int32_t>(*number));
    else
        raw += Quote(std::get<std::string>(value));
    return {raw, std::string(name), std::move(value)};
}

const RegistryText::Section* RegistryText::FindKey(std::string_view key) const {
    const auto found = std::find_if(sections_.begin() + 1, sections_.end(),
                                    [&](const Section& each) { return base::EqualNoCase(each.Key, key); });
    return found == sections_.end() ? nullptr : &*found;
}

void RegistryText::AddKey(std::string_view key, std::string_view className) {
    auto& before = sections_.back().Lines;
    if (!before.empty() && !base::Trim(before.back().Raw).empty()) before.push_back({""});
    Section section{std::string(key)};
    section.Lines.push_back({"[" + section.Key + "]"});
    if (!className.empty()) section.Lines.push_back({std::string(ClassName) + "=" + Quote(className)});
    sections_.push_back(std::move(section));
}

const RegistryValue* RegistryText::Find(std::string_view key, std::string_view name) const {
    const Section* section = FindKey(key);
    if (section == nullptr) return nullptr;
    for (const Line& line : section->Lines)
        if (base::EqualNoCase(line.Name, name)) return line.Value ? &*line.Value : nullptr;
    return nullptr;
}

void RegistryText::Set(std::string_view key, std::string_view name, RegistryValue value) {
    auto* section = const_cast<Section*>(FindKey(key));
    if (section == nullptr) return;
    auto& lines = section->Lines;
    const auto found = std::find_if(lines.begin(), lines.end(),
                                    [&](const Line& each) { return base::EqualNoCase(each.Name, name); });
    if (found != lines.end()) {
        *found = MakeLine(found->Name, std::move(value));
        return;
    }
    // Ahead of the blank lines that part this key from the next.
    auto end = lines.end();
    while (end != lines.begin() + 1 && base::Trim((end - 1)->Raw).empty()) --end;
    lines.insert(end, MakeLine(name, std::move(value)));
}

std::string RegistryText::Bytes() const {
    std::string bytes;
    for (const Section& section : sections_)
        for (const Line& line : section.Lines) bytes += line.Raw + "\n";
    return bytes;
}

}  // namespace platform::qt
