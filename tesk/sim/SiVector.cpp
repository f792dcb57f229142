#include "sim/SiVector.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace sim {
namespace {

constexpr std::string_view testValues = "01CKLHZXNP*";

constexpr std::uint8_t none = 31;

// The place of a test value, for the bits of a mask; `none` for any other character.
std::uint8_t PlaceOf(char value) {
    static constexpr auto places = [] {
        std::array<std::uint8_t, 256> table{};
        table.fill(none);
        for (std::uint8_t i = 0; i < testValues.size(); ++i)
            table[static_cast<unsigned char>(testValues[i])] = i;
        return table;
    }();
    return places[static_cast<unsigned char>(value)];
}

bool Fits(char value, const Net& net, bool hasEnable, bool preload) {
    const bool driven = net.Kind == NetKind::Input || net.Kind == NetKind::Bidirectional;
    switch (value) {
        case '0':
        case '1':
            return driven || hasEnable || (preload && net.Register != RegisterKind::None);
        case 'C':
        case 'K':
            return driven;
        case 'L':
        case 'H':
            return net.Kind != NetKind::Input;
        default:
            return true;
    }
}

std::uint16_t Fitting(const Net& net, bool hasEnable, bool preload) {
    unsigned mask = 0;
    for (const char value : testValues)
        if (Fits(value, net, hasEnable, preload)) mask |= 1u << PlaceOf(value);
    return static_cast<std::uint16_t>(mask);
}

int DigitValue(char c) {
    const char u = base::UpperChar(c);
    if (u >= '0' && u <= '9') return u - '0';
    return u >= 'A' && u <= 'F' ? u - 'A' + 10 : 99;
}

// Multiplies a number of bits (least significant first) by the base and adds a digit.
void MultiplyAdd(std::vector<bool>& bits, unsigned base, unsigned digit) {
    unsigned carry = digit;
    for (std::size_t i = 0; i < bits.size(); ++i) {
        carry += bits[i] ? base : 0;
        bits[i] = (carry & 1) != 0;
        carry >>= 1;
    }
    for (; carry != 0; carry >>= 1) bits.push_back((carry & 1) != 0);
}

std::string DecimalBits(std::string_view digits, bool& good) {
    std::vector<bool> bits;
    for (const char c : digits) {
        if (DigitValue(c) > 9) good = false;
        if (!good) return {};
        MultiplyAdd(bits, 10, static_cast<unsigned>(DigitValue(c)));
    }
    std::string text;
    for (auto bit = bits.rbegin(); bit != bits.rend(); ++bit) text += *bit ? '1' : '0';
    return text;
}

std::string BinaryBits(std::string_view digits, unsigned width, bool& good) {
    std::string text;
    for (const char c : digits) {
        if (base::UpperChar(c) == 'X') {
            text.append(width, 'X');
            continue;
        }
        const int value = DigitValue(c);
        if (value >= (1 << width)) good = false;
        for (unsigned bit = width; bit-- > 0;) text += (value >> bit & 1) != 0 ? '1' : '0';
    }
    return text;
}

}  // namespace

struct VectorReader::Work {
    std::string_view Row;
    int Line;
    MessageLog& Log;
    std::string& Values;
    std::size_t At = 0;
    bool Good = true;

    void Fault(MessageCode code, std::string_view detail) {
        Log.Add(code, Line, base::DisplayUtf8(detail.substr(0, 80)));
        Good = false;
    }
};

VectorReader::VectorReader(const AbsDesign& design, const SiHead& head) : design_(design), base_(head.Base) {
    std::vector<bool> hasEnable(design.Nets.size());
    for (const auto& function : design.Functions)
        if (function.To == Input::Oe) hasEnable[function.Net] = true;
    for (const auto& item : head.Order) {
        for (const std::size_t place : item.Nets) {
            const Net& net = design.Nets[place];
            columns_.push_back({place, place == item.Nets.front() ? &item : nullptr,
                                Fitting(net, hasEnable[place], false), Fitting(net, hasEnable[place], true),
                                net.Kind == NetKind::Output || net.Kind == NetKind::Node,
                                net.Kind == NetKind::Bidirectional});
        }
    }
}

void VectorReader::Read(std::string_view row, int line, MessageLog& log, std::string& values) const {
    values.clear();
    Work work{row, line, log, values};
    while (work.Good && work.At < row.size()) {
        const char c = base::UpperChar(row[work.At]);
        if (work.Values.size() > columns_.size()) break;
        if (c == '\'' || c == '"') {
            TakeQuoted(work);
        } else {
            ++work.At;
            if (c == ' ' || c == '\t') continue;
            if (PlaceOf(c) == none) work.Fault("0208va", row.substr(work.At - 1, 1));
            work.Values += c;
        }
    }
    if (work.Good && work.Values.size() != columns_.size()) {
        const bool more = work.Values.size() > columns_.size();
        work.Fault("0211va", (more ? "more than " : std::to_string(work.Values.size()) + " of ") +
                                 std::to_string(columns_.size()) + " test values");
    }
    if (work.Good)
        CheckValues(work);
    else
        values.assign(columns_.size(), 'X');
}

void VectorReader::TakeQuoted(Work& work) const {
    const char quote = work.Row[work.At];
    const auto end = work.Row.find(quote, work.At + 1);
    const auto* item = work.Values.size() < columns_.size() ? columns_[work.Values.size()].Entry : nullptr;
    if (end == work.Row.npos || end == work.At + 1) return work.Fault("0212va", work.Row.substr(work.At));
    if (item == nullptr) return work.Fault("0212va", "no entry of ORDER begins here");
    const auto value = work.Row.substr(work.At + 1, end - work.At - 1);
    work.At = end + 1;
    constexpr std::string_view letters = "KLHZNP*";
    const char letter = base::UpperChar(value[0]);
    const bool repeats =
        value.size() == 1 && (letters.find(letter) != letters.npos || (letter == 'C' && base_ != 16));
    if (repeats) {
        work.Values.append(item->Nets.size(), letter);
        return;
    }
    bool good = true;
    const auto bits = Bits(value, item->Nets.size(), good);
    if (!good) return work.Fault("0212va", value);
    AddNumber(work, bits, quote == '\'');
}

// Exactly `width` characters 0, 1, X; not good if a digit is none of the base or a 1 does not fit.
std::string VectorReader::Bits(std::string_view digits, std::size_t width, bool& good) const {
    constexpr std::size_t longestValue = 100;
    good = digits.size() <= longestValue;
    if (!good) return {};
    if (base_ == 10 && base::Upper(digits) == "X") return std::string(width, 'X');
    auto bits = base_ == 10 ? DecimalBits(digits, good) : BinaryBits(digits, base_ == 8 ? 3 : 4, good);
    if (bits.size() < width) bits.insert(0, width - bits.size(), '0');
    const auto excess = bits.size() - width;
    if (bits.substr(0, excess).find('1') != bits.npos) good = false;
    return bits.substr(excess);
}

void VectorReader::AddNumber(Work& work, std::string_view bits, bool driving) const {
    for (const char bit : bits) {
        const Column& column = columns_[work.Values.size()];
        const bool expected = column.Expected || (column.Either && !driving);
        work.Values += !expected || bit == 'X' ? bit : bit == '1' ? 'H' : 'L';
    }
}

void VectorReader::CheckValues(Work& work) const {
    const bool preload = work.Values.find('P') != work.Values.npos;
    for (std::size_t i = 0; i < work.Values.size(); ++i) {
        const Column& column = columns_[i];
        char& value = work.Values[i];
        if (((preload ? column.Preloaded : column.Fitting) >> PlaceOf(value) & 1) != 0) continue;
        work.Log.Add("0213va", work.Line, design_.Nets[column.Net].Name + " " + value);
        value = 'X';
    }
}

}  // namespace sim
