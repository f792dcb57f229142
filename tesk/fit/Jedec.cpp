#include "fit/Jedec.h"

#include <algorithm>

#include "base/Text.h"
#include "model/Jedec.h"

namespace fit {
namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string Plain(std::string_view text) {
    std::string plain(text);
    std::replace_if(
        plain.begin(), plain.end(), [](char c) { return c < ' ' || c > '~' || c == '*'; }, '?');
    return plain;
}

std::string Specification(const Fit& fit, const JedecNotes& notes) {
    std::string text = "Tesk fuse map";
    text += lineEnd;
    for (const auto& [keyword, content] : notes.Header) {
        text += base::PadRight(Plain(keyword), 10) + " " + Plain(content);
        text += lineEnd;
    }
    text += "Fitted to  " + Plain(fit.Mnemonic) + (fit.Mode.empty() ? "" : ", mode " + Plain(fit.Mode));
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
        text += "L" + model::FuseNumber(at) + " " + line + "*";
        text += lineEnd;
    }
}

std::size_t ColumnsOf(const Device& device, const Fit& fit) {
    for (const auto& mode : device.Modes) {
        if (mode.Name == fit.Mode) return mode.Columns;
    }
    return 32;
}

std::size_t RowsOf(const Device& device, const Fit& fit) {
    std::size_t rows = 0;
    for (const auto& mode : device.Modes) {
        if (mode.Name != fit.Mode) continue;
        for (const int row : {mode.ResetRow, mode.PresetRow}) {
            if (row >= 0) rows = std::max(rows, static_cast<std::size_t>(row) + 1);
        }
        for (const auto& cell : mode.Cells) {
            for (const auto& use : cell.Uses) rows = std::max(rows, use.FirstRow + use.Terms);
        }
    }
    return rows;
}

}  // namespace

std::uint16_t FuseChecksum(const std::vector<bool>& fuses) {
    unsigned sum = 0;
    for (std::size_t i = 0; i < fuses.size(); ++i) sum += fuses[i] ? 1u << (i % 8) : 0u;
    return static_cast<std::uint16_t>(sum);
}

std::string WriteJedec(const Device& device, const Fit& fit, const JedecNotes& notes) {
    if (fit.Fuses.empty()) return {};
    const auto line = [](const std::string& field) { return field + "*" + std::string(lineEnd); };
    std::string text = model::StartOfText + Specification(fit, notes);
    text += line("QP" + std::to_string(device.Pins));
    text += line("QF" + std::to_string(fit.Fuses.size()));
    for (const auto& place : notes.Places) text += line("N " + Plain(place));
    text += line(notes.Secure ? "G1" : "G0");
    text += line("F0");
    const auto columns = ColumnsOf(device, fit);
    const auto array = std::min(RowsOf(device, fit) * columns, fit.Fuses.size());
    AddFuses(text, fit.Fuses, 0, array, columns);
    AddFuses(text, fit.Fuses, array, fit.Fuses.size(), 64);
    text += line("C" + model::Checksum(FuseChecksum(fit.Fuses)));
    text += model::EndOfText;
    return model::Transmission(std::move(text));
}

}  // namespace fit
