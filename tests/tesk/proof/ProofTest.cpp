#include <gtest/gtest.h>

#include <algorithm>

#include "../fit/Designs.h"
#include "fit/Jedec.h"
#include "proof/JedecFile.h"
#include "proof/Prove.h"

namespace {

proof::Equations EquationsOf(const fit::Design& design) {
    proof::Equations result;
    for (const auto& signal : design.Signals)
        result.Names.push_back({signal.Name, signal.Pin, signal.Node, signal.ActiveLow, signal.Register});
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

proof::Equations EquationsOf(const fit::Design& design, const fit::Fit& fit) {
    auto result = EquationsOf(design);
    for (std::size_t i = 0; i < result.Names.size(); ++i) {
        result.Names[i].Place = fit.Placements[i].Pin;
        if (result.Names[i].Node) result.Names[i].ActiveLow = test::LowAt(design, fit, i);
    }
    return result;
}

// Each output the product of two inputs, a register where the mode has them: then each fuse of its first row
// matters, and none of its others.
fit::Design Products(const fit::Device& device) {
    const auto& mode = device.Modes.back();
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
        signal.Node = cell.Pin > device.Pins;
        signal.ActiveLow = cell.Polarity == fit::PolarityKind::Low && !signal.Node;
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
    const auto setRow = [&](std::size_t row) {
        set(mode.FirstFuse(row), mode.Columns);
        if (mode.RowSwitch) set(*mode.RowSwitch + row, 1);
    };
    for (const auto& run : mode.Fuses)
        if (!mode.IsRowSwitch(run.First)) set(run.First, run.Count);
    for (const auto& cell : mode.Cells) {
        const auto& use = cell.Uses.back();
        setRow(use.FirstRow);
        if (use.Enable == fit::EnableKind::Row) setRow(use.EnableRow);
        if (cell.Polarity == fit::PolarityKind::Fuse) set(cell.PolarityFuse, 1);
        if (use.OrFuse >= 0) set(static_cast<std::size_t>(use.OrFuse), 1);
        for (const auto& run : use.Fuses) set(run.First, run.Count);
    }
    return decisive;
}

void ProveRandomDesigns(const fit::Device& device) {
    std::mt19937 random(7);
    int proved = 0;
    for (int i = 0; i < 60; ++i) {
        const auto design = test::RandomDesign(random, device);
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
    const auto design = Products(device);
    const auto fit = fit::FitDesign(device, design, {});
    ASSERT_TRUE(fit.Ok()) << fit.Messages[0].Text;
    ASSERT_EQ(fit.Mode, mode.Name);
    const auto equations = EquationsOf(design, fit);
    const auto decisive = Decisive(device, mode);
    std::size_t array = 0;
    for (const auto& cell : mode.Cells) array = std::max(array, cell.Uses.back().EndRow() * mode.Columns);
    for (std::size_t fuse = 0; fuse < device.Fuses; fuse += fuse < array ? 7 : 1) {
        auto fuses = fit.Fuses;
        fuses[fuse] = !fuses[fuse];
        const auto chip = proof::ReadBack(device, fuses).Found;
        EXPECT_EQ(!chip || !proof::Prove(equations, *chip).Proved(), decisive[fuse]) << fuse;
    }
}

// "A !B + Q": pins 2 to 4, the state of the only macrocell.
proof::Sum SumOf(const std::string& text) {
    proof::Sum sum(1);
    bool negated = false;
    for (const char c : text) {
        if (c == '+') sum.emplace_back();
        if (c == 'Q') sum.back().push_back({{proof::Signal::Kind::Cell, 0}, negated});
        if (c >= 'A' && c <= 'C') sum.back().push_back({{proof::Signal::Kind::Pin, c - 'A' + 2u}, negated});
        negated = c == '!';
    }
    return sum;
}

}  // namespace

TEST(Proof, EachDevice) {
    auto devices = fit::ReadLibrary(test::BuriedText()).Devices;
    ASSERT_EQ(devices.size(), 1u);
    for (const auto& family : test::Families()) devices.push_back(test::DeviceOf(family.Mnemonic));
    for (const auto& device : devices) {
        SCOPED_TRACE(device.Mnemonic);
        ProveRandomDesigns(device);
        ProveFlippedFuses(device);
    }
}

// A macrocell at pin 19 with what no device of the library has, or with a fault.
TEST(Proof, MacrocellsOfEveryKind) {
    using Cell = proof::Macrocell;
    constexpr auto own = proof::Source::Own;
    constexpr auto d = proof::RegisterKind::D;
    constexpr auto t = proof::RegisterKind::T;
    const struct {
        const char* Equations;
        proof::RegisterKind Register;
        const char* Rows;
        void (*Change)(Cell&);
        const char* Differences;
    } cases[] = {
        {"19 Y\nY = A !B + !A B", {}, "A", [](Cell& c) { c.Rows2 = SumOf("B"); }, ""},
        {"19 !Y\nY = A !B + !A B",
         {},
         "A",
         [](Cell& c) {
             c.Rows2 = SumOf("!B");
             c.PinInverted = true;
             c.Inverted = true;
         },
         ""},
        {"19 Y\nY = A", {}, "A B", [](Cell&) {}, "Y, pin 19: the fuses give 0, the equations 1 at A=1 B=0"},
        {"19 !Y\nY = A",
         {},
         "!A + C",
         [](Cell&) {},
         "Y, pin 19: the fuses give 0, the equations 1 at A=1 pin_4=1"},
        {"19 Y\nY = 1", {}, "A + !A", [](Cell&) {}, ""},
        {"19 Y\nY = A", {}, "A A + B !B", [](Cell&) {}, ""},
        {"19 Y D\nY.D = A !Y + !A Y", t, "A", [](Cell&) {}, ""},
        {"19 !Y T\nY.T = A", d, "A !Q + !A Q", [](Cell&) {}, ""},
        {"19 Y T\nY.T = A", t, "A", [](Cell& c) { c.PinInverted = true; }, ""},
        {"19 Y D\nY.D = A", t, "A", [](Cell&) {},
         "Y.D, pin 19: the fuses give 0, the equations 1 at A=1 Y=1"},
        {"19 Y D\nY.D = A\nY.CE = B\nY.CK = !A", d, "A",
         [](Cell& c) {
             c.ClockEnable = {SumOf("B"), own};
             c.Clock = {SumOf("!A"), own};
         },
         ""},
        {"19 Y D\nY.D = A\nY.CK = A", d, "A",
         [](Cell& c) {
             c.ClockEnable = {SumOf("B"), own};
             c.Clock = {SumOf("!A"), own};
         },
         "Y.CK, pin 19: the fuses give 0, the equations 1 at A=1;Y.CE, pin 19: the fuses give 0, the "
         "equations 1 at B=0"},
        {"19 !Y D\nY.D = !A\nY.AP = B\nY.SR = A", d, "A",
         [](Cell& c) {
             c.Reset = {SumOf("B"), own};
             c.SyncPreset = {SumOf("A"), own};
         },
         ""},
        {"19 Y D\nY.D = A", d, "A",
         [](Cell& c) {
             c.Reset = {SumOf("B"), proof::Source::Shared};
         },
         "Y.AR, pin 19: the fuses give 1, the equations 0 at B=1"},
        {"19 Y LATCH\nY.L = A\nY.LE = B", proof::RegisterKind::Latch, "A",
         [](Cell& c) {
             c.Clock = {SumOf("B"), own};
         },
         ""},
        {"19 Y LATCH\nY.L = A", d, "A", [](Cell&) {},
         "Y.L, pin 19: the fuses make it another kind of register"},
        {"19 Y D\nY.D = A", {}, "A", [](Cell&) {}, "Y, pin 19: the fuses make it no register"},
        {"19 Y", {}, "A", [](Cell&) {}, "Y, pin 19: an input of the equations, an output of the fuses"},
        {"18 Y\nY = A", {}, "A", [](Cell&) {}, "Y, pin 18: the device has no macrocell there"},
        {"19 Y\nY = A\nY.OE = B",
         {},
         "A",
         [](Cell& c) {
             c.Enable = {SumOf("B + C"), own};
         },
         "Y.OE, pin 19: the fuses give 1, the equations 0 at B=0 pin_4=1"},
        {"19 Y D\nY.D = Y.IO A\nY.OE = B", d, "Q A",
         [](Cell& c) {
             c.Enable = {SumOf("B"), own};
         },
         "Y.D, pin 19: the fuses give 0, the equations 1 at A=1 Y=0 Y.IO=1"},
    };
    for (const auto& one : cases) {
        proof::Chip chip;
        Cell cell;
        cell.Pin = cell.Node = 19;
        cell.Register = one.Register;
        cell.Rows = SumOf(one.Rows);
        cell.Enable.When = proof::Always();
        one.Change(cell);
        chip.Cells = {cell};
        const auto design = EquationsOf(test::MakeDesign("2 A\n3 B\n" + std::string(one.Equations)));
        std::string differences;
        const auto verdict = proof::Prove(design, chip);
        for (const auto& finding : verdict.Differences)
            differences += (differences.empty() ? "" : ";") + finding.Text;
        EXPECT_EQ(differences, one.Differences) << one.Equations;
        EXPECT_TRUE(verdict.Open.empty()) << one.Equations;
        const auto bounded = proof::Prove(design, chip, 1);
        EXPECT_FALSE(chip.Cells[0].Rows2 && bounded.Proved()) << one.Equations;
    }
}

// Node 25 stores A's complement.
TEST(Proof, SettlesNodesAndNoPins) {
    auto design = EquationsOf(test::MakeDesign("2 A\nnode N D\n19 Y\nN.D = A\nY = N"));
    design.Names[1].Place = 25;
    for (const bool isRight : {true, false}) {
        proof::Chip chip;
        chip.Cells.resize(2);
        chip.Cells[0].Node = 25;
        chip.Cells[0].Register = proof::RegisterKind::D;
        chip.Cells[0].Rows = SumOf("!A");
        chip.Cells[1].Pin = chip.Cells[1].Node = 19;
        chip.Cells[1].Rows = SumOf(isRight ? "!Q" : "Q");
        chip.Cells[1].Enable.When = proof::Always();
        auto settled = design;
        proof::SettleNodes(settled, chip);
        EXPECT_EQ(proof::Prove(settled, chip).Proved(), isRight);
        EXPECT_EQ(settled.Names[1].ActiveLow, isRight);
        EXPECT_FALSE(settled.Names[2].ActiveLow);
    }
}
