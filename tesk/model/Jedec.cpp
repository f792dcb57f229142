#include "model/Jedec.h"

#include <charconv>

#include "base/Text.h"

namespace model {

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
    const auto [end, error] = std::from_chars(words[1].data(), words[1].data() + words[1].size(), note.Place);
    if (error != std::errc{} || end != words[1].data() + words[1].size() || note.Place <= 0)
        return std::nullopt;
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

}  // namespace model
