#include <gtest/gtest.h>

#include <random>

#include "cpld/Inline.h"

namespace {

using proof::Signal;
using proof::Sum;

constexpr std::size_t pins = 5, cells = 9;

// Cells that read pins and the cells before them.
proof::Chip AnyChip(std::mt19937& random) {
    proof::Chip chip;
    for (std::size_t i = 0; i < cells; ++i) {
        const auto anySum = [&] {
            Sum sum(random() % 3);
            for (auto& term : sum)
                for (std::size_t k = random() % 4; k > 0; --k) {
                    const std::size_t at = random() % (pins + i);
                    const auto kind = at < pins ? Signal::Kind::Pin : Signal::Kind::Cell;
                    term.push_back({{kind, at < pins ? at : at - pins}, random() % 2 == 0});
                }
            return sum;
        };
        proof::Macrocell cell;
        cell.Rows = anySum();
        if (random() % 3 == 0) cell.Rows2 = anySum();
        cell.Inverted = random() % 2 == 0;
        cell.Enable.When = anySum();
        chip.Cells.push_back(std::move(cell));
    }
    return chip;
}

bool ValueOf(const Sum& sum, unsigned levels, const std::vector<bool>& values) {
    return std::any_of(sum.begin(), sum.end(), [&](const proof::Term& term) {
        return std::all_of(term.begin(), term.end(), [&](const proof::Literal& literal) {
            const bool isPin = literal.Of.From == Signal::Kind::Pin;
            return (isPin ? (levels >> literal.Of.At & 1) != 0 : values[literal.Of.At]) != literal.Negated;
        });
    });
}

bool ValueOf(const proof::Macrocell& cell, unsigned levels, const std::vector<bool>& values) {
    const bool second = cell.Rows2 && ValueOf(*cell.Rows2, levels, values);
    return (ValueOf(cell.Rows, levels, values) != second) != cell.Inverted;
}

TEST(CpldInline, LeavesTheFunctionsAndTheKeptCells) {
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        const auto chip = AnyChip(random);
        std::vector<bool> keep(cells);
        for (std::size_t i = 0; i < cells; ++i) keep[i] = random() % 3 == 0;
        std::vector<std::size_t> tooLarge;
        const auto inlined = cpld::Inlined(chip, keep, tooLarge);
        ASSERT_TRUE(tooLarge.empty());
        for (unsigned levels = 0; levels < 1u << pins; ++levels) {
            std::vector<bool> values, readable;  // what is not kept reads as its complement: nobody may ask
            for (std::size_t i = 0; i < cells; ++i) {
                values.push_back(ValueOf(chip.Cells[i], levels, values));
                readable.push_back(values[i] == keep[i]);
                ASSERT_EQ(ValueOf(inlined.Cells[i], levels, readable), values[i]) << round << " cell " << i;
                ASSERT_EQ(ValueOf(inlined.Cells[i].Enable.When, levels, readable),
                          ValueOf(chip.Cells[i].Enable.When, levels, values));
            }
        }
    }
}

TEST(CpldInline, EndsAtLoopsAndAtWhatIsTooLarge) {
    proof::Chip chip;
    chip.Cells.resize(3);
    const auto cell = [](std::size_t at) { return proof::Literal{{Signal::Kind::Cell, at}, true}; };
    chip.Cells[0].Rows = {{cell(1)}};
    chip.Cells[1].Rows = {{cell(0)}};
    for (std::size_t i = 0; i < 12; ++i)  // a product of sums
        chip.Cells[2].Rows.push_back(
            {{{Signal::Kind::Pin, 2 * i}, false}, {{Signal::Kind::Pin, 2 * i + 1}, false}});
    chip.Cells.push_back({});
    chip.Cells[3].Rows = {{cell(2)}};
    std::vector<std::size_t> tooLarge;
    const auto inlined = cpld::Inlined(chip, std::vector<bool>(4), tooLarge);
    EXPECT_EQ(tooLarge, std::vector<std::size_t>{3});
    EXPECT_EQ(inlined.Cells[3].Rows, chip.Cells[3].Rows);
    EXPECT_EQ(inlined.Cells[0].Rows.size(), 1u);
}

}  // namespace
