#include "model/Jedec.h"

#include <algorithm>

#include "base/Text.h"
#include "model/Number.h"

namespace model {
namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string Plain(std::string_view text) {
    std::string plain(text);
    std::replace_if(
        plain.begin(), plain.end(), [](char c) { return c < ' ' || c > '~' || c == '*'; }, '?');
    return plain;
}

std::string Specification(const JedecMap& map) {
    std::string text = "Tesk fuse map";
    text += lineEnd;
    for (const auto& [keyword, content] : map.Header) {
        text += base::PadRight(Plain(keyword), 10) + " " + Plain(content);
        text += lineEnd;
    }
    text += "Fitted to  " + Plain(map.Device);
    text += lineEnd;
    return text + "*" + std::string(lineEnd);
}

// The fuses from a number on, in lines of the array's width; lines of zeros are left to the default.
void AddFuses(std::string& text, const std::vector<bool>& fuses, std::size_t first, std::size_t end,
              std::size_t width) {
    for (std::size_t at = first; at < end; at += width) {
        const auto stop = std::min(at + width, end);
        std::string line;
        for (std::size_t i = at; i < stop; ++i) line += fuses[i] ? '1' : '0';
        if (line.find('1') == line.npos) continue;
        text += "L" + FuseNumber(at) + " " + line + "*";
        text += lineEnd;
    }
}

}  // namespace

std::string FuseNumber(std::size_t fuse) { return base::PadLeft(std::to_string(fuse), 5, '0'); }
std::string VectorNumber(std::size_t vector) { return base::PadLeft(std::to_string(vector), 4, '0'); }

std::string Checksum(unsigned sum) {
    std::string digits;
    for (int shift = 12; shift >= 0; shift -= 4) digits += "0123456789ABCDEF"[sum >> shift & 0xF];
    return digits;
}

std::string WritePlaceNote(const PlaceNote& note) {
    return (note.Node ? "NODE " : "PIN ") + std::to_string(note.Place) + (note.Low ? " !" : " ") + note.Name;
}

std::optional<PlaceNote> ReadPlaceNote(std::string_view text) {
    const auto words = base::Words(base::TrimView(text));
    if (words.size() != 3 || (words[0] != "PIN" && words[0] != "NODE")) return std::nullopt;
    PlaceNote note;
    note.Place = WholeNumber<int>(words[1]).value_or(-1);
    if (note.Place < 0) return std::nullopt;
    note.Node = words[0] == "NODE";
    note.Low = words[2][0] == '!';
    note.Name = words[2].substr(note.Low ? 1 : 0);
    return note;
}

std::string Transmission(std::string text) {
    unsigned sum = 0;
    for (const char c : text) sum += static_cast<unsigned char>(c);
    return std::move(text) + Checksum(sum) + "\r\n";
}

std::uint16_t FuseChecksum(const std::vector<bool>& fuses) {
    unsigned sum = 0;
    for (std::size_t i = 0; i < fuses.size(); ++i) sum += fuses[i] ? 1u << (i % 8) : 0u;
    return static_cast<std::uint16_t>(sum);
}

std::string WriteJedec(const JedecMap& map) {
    const auto line = [](const std::string& field) { return field + "*" + std::string(lineEnd); };
    std::string text = StartOfText + Specification(map);
    for (const auto& note : map.Notes) text += line("N " + Plain(note));
    text += line("QP" + std::to_string(map.Pins));
    text += line("QF" + std::to_string(map.Fuses.size()));
    text += line(map.Secure ? "G1" : "G0");
    text += line("F0");
    std::size_t told = 0;
    for (const auto& [end, width] : map.Lines) {
        AddFuses(text, map.Fuses, told, end, width);
        told = end;
    }
    AddFuses(text, map.Fuses, told, map.Fuses.size(), 64);
    text += line("C" + Checksum(FuseChecksum(map.Fuses)));
    text += EndOfText;
    return Transmission(std::move(text));
}

}  // namespace model
