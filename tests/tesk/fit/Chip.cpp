#include "Chip.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace test {
namespace {

// Pins of the column pairs, from column 0 on, as the logic diagrams show them.
const std::vector<int> simple16{2, 1, 3, 19, 4, 18, 5, 17, 6, 14, 7, 13, 8, 12, 9, 11};
const std::vector<int> complex16{2, 1, 3, 18, 4, 17, 5, 16, 6, 15, 7, 14, 8, 13, 9, 11};
const std::vector<int> registered16{2, 19, 3, 18, 4, 17, 5, 16, 6, 15, 7, 14, 8, 13, 9, 12};
const std::vector<int> simple20{2, 1, 3, 23, 4, 22, 5, 21, 6, 20, 7, 17, 8, 16, 9, 15, 10, 14, 11, 13};
const std::vector<int> complex20{2, 1, 3, 23, 4, 21, 5, 20, 6, 19, 7, 18, 8, 17, 9, 16, 10, 14, 11, 13};
const std::vector<int> registered20{2, 23, 3, 22, 4, 21, 5, 20, 6, 19, 7, 18, 8, 17, 9, 16, 10, 15, 11, 14};
const std::vector<int> columns22{1,  23, 2,  22, 3,  21, 4,  20, 5,  19, 6,
                                 18, 7,  17, 8,  16, 9,  15, 10, 14, 11, 13};

unsigned Sum(const std::string& text, std::size_t first, std::size_t last) {
    unsigned sum = 0;
    for (auto i = first; i <= last; ++i) sum += static_cast<unsigned char>(text[i]);
    return sum & 0xFFFF;
}

void TakeField(const std::string& field, Jedec& jedec, unsigned& checksum) {
    switch (field[0]) {
        case 'Q':
            if (field[1] == 'P') jedec.Pins = std::stoi(field.substr(2));
            if (field[1] == 'F') jedec.Fuses.resize(std::stoul(field.substr(2)));
            break;
        case 'F':
            jedec.Fuses.assign(jedec.Fuses.size(), field[1] == '1');
            break;
        case 'G':
            jedec.Secure = field[1] == '1';
            break;
        case 'C':
            checksum = static_cast<unsigned>(std::stoul(field.substr(1), nullptr, 16));
            break;
        case 'L': {
            auto at = std::stoul(field.substr(1));
            for (auto i = field.find(' '); i < field.size(); ++i) {
                if (field[i] == '0' || field[i] == '1') jedec.Fuses.at(at++) = field[i] == '1';
            }
            break;
        }
        default:
            break;
    }
}

}  // namespace

Jedec ReadJedec(const std::string& text) {
    Jedec jedec;
    const auto start = text.find('\x02');
    const auto end = text.find('\x03');
    if (start != 0 || end == text.npos) return jedec;
    unsigned checksum = 0;
    auto at = text.find('*') + 1;  // behind the design specification
    for (auto star = text.find('*', at); star < end; star = text.find('*', at)) {
        at = text.find_first_not_of(" \r\n", at);
        TakeField(text.substr(at, star - at), jedec, checksum);
        at = star + 1;
    }
    unsigned sum = 0;
    for (std::size_t i = 0; i < jedec.Fuses.size(); i += 8) {
        for (std::size_t bit = 0; bit < 8 && i + bit < jedec.Fuses.size(); ++bit)
            sum += static_cast<unsigned>(jedec.Fuses[i + bit]) << bit;
    }
    jedec.Good =
        (sum & 0xFFFF) == checksum && Sum(text, start, end) == std::stoul(text.substr(end + 1), nullptr, 16);
    return jedec;
}

Chip::Chip(const std::string& kind, std::vector<bool> fuses) : kind_(kind), fuses_(std::move(fuses)) {
    if (kind == "16V8" || kind == "20V8") {
        DecodeGal8();
    } else if (kind == "22V10") {
        Decode22V10();
    } else if (kind == "20RA10") {
        Decode20Ra10();
    } else if (kind[2] == 'X') {
        DecodeXor();
    } else {
        DecodePal();
    }
}

void Chip::DecodeGal8() {
    const bool large = kind_ == "20V8";
    const std::size_t array = large ? 2560 : 2048;
    const bool syn = fuses_[array + 144];
    const bool ac0 = fuses_[array + 145];
    Mode = syn ? (ac0 ? "complex" : "simple") : "registered";
    if (!syn && !ac0) throw std::runtime_error("undefined mode");
    columns_ = Mode == "simple"    ? (large ? simple20 : simple16)
               : Mode == "complex" ? (large ? complex20 : complex16)
                                   : (large ? registered20 : registered16);
    for (std::size_t i = 0; i < 8; ++i) {
        const bool ac1 = fuses_[array + 72 + i];
        Macrocell cell;
        cell.Pin = (large ? 22 : 19) - static_cast<int>(i);
        cell.Inverts = !fuses_[array + i];
        cell.Registered = Mode == "registered" && !ac1;
        const bool hasEnable = Mode == "complex" || (Mode == "registered" && ac1);
        cell.FirstRow = 8 * i + (hasEnable ? 1 : 0);
        cell.Rows = hasEnable ? 7 : 8;
        cell.EnableRow = hasEnable ? static_cast<int>(8 * i) : cell.Registered ? -2 : ac1 ? -3 : -1;
        cells_.push_back(cell);
        for (std::size_t row = 8 * i; row < 8 * i + 8; ++row) {
            if (!fuses_[array + 80 + row]) throw std::runtime_error("product term disabled");
        }
    }
}

void Chip::Decode22V10() {
    columns_ = columns22;
    const std::size_t rows[] = {8, 10, 12, 14, 16, 16, 14, 12, 10, 8};
    std::size_t row = 1;
    for (std::size_t i = 0; i < 10; ++i) {
        const bool s0 = fuses_[5808 + 2 * i];
        const bool s1 = fuses_[5809 + 2 * i];
        cells_.push_back({23 - static_cast<int>(i), row + 1, rows[i], static_cast<int>(row), !s0, !s1});
        row += rows[i] + 1;
    }
}

void Chip::Decode20Ra10() {
    columns_ = {2, 23, 3, 22, 4, 21, 5, 20, 6, 19, 7, 18, 8, 17, 9, 16, 10, 15, 11, 14};
    for (std::size_t i = 0; i < 10; ++i) {
        const bool bypass = IsBlank(8 * i + 2, true) && IsBlank(8 * i + 3, true);
        cells_.push_back(
            {23 - static_cast<int>(i), 8 * i + 4, 4, static_cast<int>(8 * i), !fuses_[3200 + i], !bypass});
    }
}

bool Chip::IsBlank(std::size_t row, bool value) const {
    const auto width = static_cast<std::ptrdiff_t>(2 * columns_.size());
    const auto first = fuses_.begin() + static_cast<std::ptrdiff_t>(row) * width;
    return std::all_of(first, first + width, [&](bool fuse) { return fuse == value; });
}

void Chip::DecodePal() {
    const bool large = kind_[0] == '2';
    const bool plain = kind_[2] == 'L';
    columns_ = plain ? (large ? complex20 : complex16) : (large ? registered20 : registered16);
    const int registers = plain ? 0 : kind_[3] - '0';
    for (int i = 0; i < 8; ++i) {
        const bool registered = i >= (8 - registers) / 2 && i < 8 - (8 - registers) / 2;
        const auto first = static_cast<std::size_t>(8 * i);
        const int pin = (large ? 22 : 19) - i;
        cells_.push_back({pin, registered ? first : first + 1, registered ? std::size_t{8} : std::size_t{7},
                          registered ? -2 : 8 * i, true, registered});
    }
}

void Chip::DecodeXor() {
    columns_ = registered20;
    const int plain = (10 - std::stoi(kind_.substr(3))) / 2;  // at each end
    for (int i = 0; i < 10; ++i) {
        const auto first = static_cast<std::size_t>(4 * i);
        if (i < plain || i >= 10 - plain)
            cells_.push_back({23 - i, first + 1, 3, 4 * i, true, false});
        else
            cells_.push_back({23 - i, first, 2, -2, true, true, 2});
    }
}

const Chip::Macrocell& Chip::At(int pin) const {
    return *std::find_if(cells_.begin(), cells_.end(), [&](const Macrocell& c) { return c.Pin == pin; });
}

// The true line of a pair of columns: the level of its pin, of a 22V10 register the inverted register.
bool Chip::ColumnLevel(std::size_t pair, const std::vector<bool>& levels) const {
    const int pin = columns_[pair];
    const bool level = levels[static_cast<std::size_t>(pin)];
    if (kind_ != "22V10" || pin < 14 || pin > 23 || !At(pin).Registered) return level;
    const bool stored = At(pin).Inverts ? !level : level;
    return !stored;
}

bool Chip::Row(std::size_t row, const std::vector<bool>& levels) const {
    const auto width = 2 * columns_.size();
    bool product = true;
    for (std::size_t pair = 0; pair < columns_.size(); ++pair) {
        const bool line = ColumnLevel(pair, levels);
        if (!fuses_[row * width + 2 * pair]) product = product && line;
        if (!fuses_[row * width + 2 * pair + 1]) product = product && !line;
    }
    return product;
}

std::vector<Chip::Output> Chip::Outputs() const {
    std::vector<Output> outputs;
    for (const auto& cell : cells_) {
        bool off = cell.EnableRow == -3;
        if (cell.EnableRow >= 0) off = IsBlank(static_cast<std::size_t>(cell.EnableRow), false);
        outputs.push_back({cell.Pin, cell.Registered, !off});
    }
    return outputs;
}

bool Chip::SumOf(std::size_t first, std::size_t rows, const std::vector<bool>& levels) const {
    bool sum = false;
    for (std::size_t i = 0; i < rows; ++i) sum = sum || Row(first + i, levels);
    return sum;
}

bool Chip::Next(int pin, const std::vector<bool>& levels) const {
    const auto& cell = At(pin);
    const bool sum = SumOf(cell.FirstRow, cell.Rows, levels);
    return (sum != SumOf(cell.FirstRow + cell.Rows, cell.XorRows, levels)) != cell.Inverts;
}

bool Chip::Enabled(int pin, const std::vector<bool>& levels) const {
    const auto& cell = At(pin);
    const bool common = kind_ != "20RA10" || !levels[13];
    if (cell.EnableRow >= 0) return common && Row(static_cast<std::size_t>(cell.EnableRow), levels);
    return cell.EnableRow == -2 ? !levels[kind_[0] == '2' ? 13 : 11] : cell.EnableRow == -1;
}

}  // namespace test
