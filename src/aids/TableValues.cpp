#include "aids/TableValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace aids {
namespace {

using base::ValueToBits;

constexpr std::int32_t maxWidth = 32;    // bits of a value
constexpr std::int32_t maxRows = 32768;  // the row counters of this system have 16 bits
constexpr std::size_t maxHexDigits = 8;

struct WidthTexts {
    const char* NotNumeric;
    const char* NotPositive;
    const char* TooWide;
};
constexpr WidthTexts inputTexts = {"The input variable width must be numeric.",
                                   "The input width must be a positive value.",
                                   "The input width is limited to 32 bits."};
constexpr WidthTexts outputTexts = {"The output variable width must be numeric.",
                                    "The output variable width must be a positive value.",
                                    "The output variable width is limited to 32 bits."};

std::string Repeated(char bit, std::int32_t width) { return base::WidenRight("", bit, width); }

using Rows = std::span<std::string>;

// Kept: a one that moves left leaves the rows past the 32nd as they are, one that moves right leaves zeros.
void FillOneHot(Rows rows, std::int32_t width, bool movesRight) {
    std::uint32_t value = movesRight ? 1U << (width - 1) : 1U;
    for (std::string& row : rows) {
        row = ValueToBits(static_cast<std::int32_t>(value), width);
        value = movesRight ? value >> 1 : value << 1;
        if (value == 0 && !movesRight) return;
    }
}

// Ones grow from one end. Kept: rows after the full one stay as they are.
void FillGrowing(Rows rows, std::int32_t width, bool fromLeft) {
    std::string bits = Repeated('0', width);
    for (std::size_t i = 0; i < std::min(rows.size(), bits.size()); ++i) {
        bits[fromLeft ? i : bits.size() - 1 - i] = '1';
        rows[i] = bits;
    }
}

// A start between two integers can give one value more or less than there are rows.
void FillCounting(Rows rows, std::int32_t width, double from, bool isDown) {
    const std::int64_t first = base::RoundToInt32(from);
    const std::int64_t last = base::RoundToInt32(from + static_cast<double>(rows.size()) - 1);
    std::int64_t value = isDown ? last : first;
    for (std::string& row : rows) {
        if (value < first || value > last) return;
        row = ValueToBits(static_cast<std::int32_t>(value), width);
        value += isDown ? -1 : 1;
    }
}

// Gives why no row was written, or empty text.
std::string FillCounting(Rows rows, std::int32_t width, std::string_view from, bool isDown) {
    if (!base::IsNumericText(from)) return "The from value for setting the input must be numeric.";
    try {
        FillCounting(rows, width, base::LeadingNumber(from), isDown);
        return "";
    } catch (const base::RunTimeError& error) {
        return error.Description();
    }
}

}  // namespace

const std::string& TableValues::Row(Half half, std::int32_t row) const {
    const auto& rows = half == Half::Input ? InputValues : OutputValues;
    return rows.at(static_cast<std::size_t>(row));
}

std::optional<Refusal> TableValues::TakeWidth(Half half, std::string_view text) {
    std::int32_t& width = half == Half::Input ? InputWidth : OutputWidth;
    width = 0;
    if (text.empty()) return std::nullopt;
    const WidthTexts& texts = half == Half::Input ? inputTexts : outputTexts;
    if (!base::IsNumericText(text)) return Refusal{texts.NotNumeric};
    const double value = base::LeadingNumber(text);
    if (value <= 0) return Refusal{texts.NotPositive};
    if (value > maxWidth) return Refusal{texts.TooWide, std::to_string(maxWidth)};
    width = base::RoundToInt32(value);
    const std::int32_t cut = InputWidth;  // for both halves: kept
    for (std::string& row : Values(half)) {
        if (row.size() > static_cast<std::size_t>(width))
            row = base::Left(row, static_cast<std::size_t>(cut));
        row = base::WidenRight(row, '0', width);
    }
    return std::nullopt;
}

std::optional<Refusal> TableValues::TakeRows(std::string_view text) {
    RowCount = 0;
    if (text.empty()) return std::nullopt;
    if (!base::IsNumericText(text)) return Refusal{"The number of rows must be numeric."};
    const double value = base::LeadingNumber(text);
    if (value <= 0) return Refusal{"The number of rows must be a positive value."};
    // Kept: no limit at 500.
    if (value > maxRows + .5) return Refusal{base::StandardDescription(base::errOverflow)};
    RowCount = base::RoundToInt32(value);
    for (const Half half : {Half::Input, Half::Output}) {
        auto& rows = Values(half);
        rows.resize(static_cast<std::size_t>(RowCount));
        for (std::string& row : rows) {
            if (row.empty()) row = Repeated('0', Width(half));
        }
    }
    return std::nullopt;
}

std::string TableValues::FillInput(Fill mode, std::string_view from) {
    if (InputWidth < 1) return "";
    const Rows rows = Rows(InputValues).first(static_cast<std::size_t>(RowCount));
    std::string refusal;
    switch (mode) {
        case Fill::Inc:
        case Fill::Dec:
            refusal = FillCounting(rows, InputWidth, from, mode == Fill::Dec);
            break;
        case Fill::Zero:
        case Fill::Set:
            for (std::string& row : InputValues) row = Repeated(mode == Fill::Set ? '1' : '0', InputWidth);
            break;
        case Fill::OneHotL:
        case Fill::OneHotR:
            FillOneHot(rows, InputWidth, mode == Fill::OneHotR);
            break;
        case Fill::FillL:
        case Fill::FillR:
            FillGrowing(rows, InputWidth, mode == Fill::FillR);
            break;
    }
    if (refusal.empty()) InputFilled = true;
    return refusal;
}

void TableValues::Toggle(Half half, std::int32_t row, std::int32_t column) {
    char& bit = Values(half).at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    bit = bit == '0' ? '1' : '0';
}

std::string TableValues::EnterHex(Half half, std::int32_t row, std::string_view typed) {
    const std::string_view digits = base::TrimView(typed);
    if (digits.empty()) return "";
    if (digits.size() > maxHexDigits) return "The value must represent a number of 32 bits or less.";
    if (!base::IsHexText(digits))
        return "The value must be a hexadecimal number composed of the digits 0 - 9 and the letters A - F. ";
    const auto value = static_cast<std::int32_t>(base::LeadingNumber("&H" + std::string(digits)));
    Values(half).at(static_cast<std::size_t>(row)) = ValueToBits(value, Width(half));
    return "";
}

std::string TableValues::TableText(std::string_view input, std::string_view output) const {
    std::string text = "TABLE " + base::Trim(input) + " => " + base::Trim(output) + " {";
    for (std::int32_t row = 0; row < RowCount; ++row)
        text += "\r\n    'b'" + Row(Half::Input, row) + " => 'b'" + Row(Half::Output, row) + ";";
    return text + "}\r\n";
}

std::string HexText(std::string_view bits) {
    std::array<char, maxHexDigits> digits{};
    const auto value = static_cast<std::uint32_t>(base::BitsToValue(bits));
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    return base::Upper({digits.data(), end}) + "h";
}

}  // namespace aids
