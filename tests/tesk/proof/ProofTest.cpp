#include <gtest/gtest.h>

#include <algorithm>

#include "../fit/Designs.h"
#include "fit/Jedec.h"
#include "proof/JedecFile.h"
#include "proof/Prove.h"

namespace {

proof::Equations EquationsOf(const fit::Design& design, const fit::Fit& fit) {
    proof::Equations result;
    for (std::size_t i = 0; i < design.Signals.size(); ++i) {
        const auto& signal = design.Signals[i];
        const bool low = signal.Node ? test::LowAt(design, fit, i) : signal.ActiveLow;
        result.Names.push_back({signal.Name, fit.Placements[i].Pin, signal.Node, low, signal.Register});
    }
    for (const auto& function : design.Functions) {
        auto& wanted = result.Functions.emplace_back();
        wanted.Name = function.Signal;
        wanted.To = function.To;
        std::vector<std::pair<std::size_t, bool>> columns;
        for (const auto& term : *function.True)
            for (const auto& literal : term) columns.emplace_back(literal.Signal, literal.Pin);
        std::sort(columns.begin(), columns.end());
        columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
        for (const auto& [name, pin] : columns) wanted.Columns.push_back({name, pin});
        wanted.On = wanted.DontCare = logic::Cover(static_cast<int>(columns.size()), 1);
        for (const auto& term : *function.True) {
            std::string text(columns.size(), '-');
            for (const auto& literal : term) {
                const auto at =
                    std::lower_bound(columns.begin(), columns.end(), std::pair(literal.Signal, literal.Pin));
                text[static_cast<std::size_t>(at - columns.begin())] = literal.Negated ? '0' : '1';
            }
            wanted.On.Add(text, "1");
        }
    }
    return result;
}

// Each output the product of two inputs, a register where the mode has them: then each fuse of its first row
// matters, and none of its others.
fit::Design Products(const fit::Mode& mode) {
    fit::Design design;
    for (std::size_t i = 0; i < 2; ++i) {
        fit::Signal signal;
        signal.Name = "I" + std::to_string(i);
        signal.Pin = mode.Inputs[i].first;
        design.Signals.push_back(signal);
    }
    for (const auto& cell : mode.Cells) {
        fit::Signal signal;
        signal.Name = "O" + std::to_string(cell.Pin);
        signal.Pin = cell.Pin;
        signal.ActiveLow = cell.Polarity == fit::PolarityKind::Low;
        if (cell.Uses.back().Kind == fit::UseKind::Register) signal.Register = fit::RegisterKind::D;
        const bool isRegister = signal.Register == fit::RegisterKind::D;
        fit::Function function;
        function.Signal = design.Signals.size();
        function.To = isRegister ? fit::Input::D : fit::Input::Out;
        function.True = fit::Sum{{{0, false, false}, {1, true, false}}};
        design.Functions.push_back(function);
        design.Signals.push_back(signal);
    }
    return design;
}

// The fuses that Products depends on.
std::vector<bool> Decisive(const fit::Device& device, const fit::Mode& mode) {
    std::vector<bool> decisive(device.Fuses, false);
    const auto set = [&](std::size_t first, std::size_t count) {
        std::fill_n(decisive.begin() + static_cast<std::ptrdiff_t>(first), count, true);
    };
    for (const auto& run : mode.Fuses) set(run.First, run.Count);
    for (const auto& cell : mode.Cells) {
        const auto& use = cell.Uses.back();
        set(use.FirstRow * mode.Columns, mode.Columns);
        if (use.Enable == fit::EnableKind::Row) set(use.EnableRow * mode.Columns, mode.Columns);
        if (cell.Polarity == fit::PolarityKind::Fuse) set(cell.PolarityFuse, 1);
        for (const auto& run : use.Fuses) set(run.First, run.Count);
    }
    return decisive;
}

void ProveRandomDesigns(const test::Family& family) {
    const auto& device = test::DeviceOf(family.Mnemonic);
    std::mt19937 random(7);
    int proved = 0;
    for (int i = 0; i < 60; ++i) {
        const auto design = test::RandomDesign(random, family);
        const auto fit = fit::FitDesign(device, design, {});
        if (!fit.Ok()) continue;
        const auto file = proof::ReadJedec(fit::WriteJedec(device, fit, {}));
        ASSERT_TRUE(file.Messages.empty()) << file.Messages[0].Text;
        const auto chip = proof::ReadBack(device, file.Fuses).Found;
        ASSERT_TRUE(chip && chip->Mode == fit.Mode);
        const auto equations = EquationsOf(design, fit);
        const auto verdict = proof::Prove(equations, *chip);
        for (const auto& finding : verdict.Differences) ADD_FAILURE() << finding.Text;
        EXPECT_TRUE(verdict.Proved());
        ++proved;
    }
    EXPECT_GE(proved, 5);
}

// Every fuse of another class than the array, and every seventh of that.
void ProveFlippedFuses(const fit::Device& device) {
    const auto& mode = device.Modes.back();
    const auto design = Products(mode);
    const auto fit = fit::FitDesign(device, design, {});
    ASSERT_TRUE(fit.Ok()) << fit.Messages[0].Text;
    ASSERT_EQ(fit.Mode, mode.Name);
    const auto equations = EquationsOf(design, fit);
    const auto decisive = Decisive(device, mode);
    std::size_t array = 0;
    for (const auto& cell : mode.Cells)
        array = std::max(array, (cell.Uses.back().FirstRow + cell.Uses.back().Terms) * mode.Columns);
    for (std::size_t fuse = 0; fuse < device.Fuses; fuse += fuse < array ? 7 : 1) {
        auto fuses = fit.Fuses;
        fuses[fuse] = !fuses[fuse];
        const auto chip = proof::ReadBack(device, fuses).Found;
        EXPECT_EQ(!chip || !proof::Prove(equations, *chip).Proved(), decisive[fuse]) << fuse;
    }
}

}  // namespace

TEST(Proof, EachDevice) {
    for (const auto& family : test::Families()) {
        SCOPED_TRACE(family.Mnemonic);
        ProveRandomDesigns(family);
        ProveFlippedFuses(test::DeviceOf(family.Mnemonic));
    }
}
