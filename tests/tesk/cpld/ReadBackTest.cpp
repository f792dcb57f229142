#include <gtest/gtest.h>

#include <map>

#include "Support.h"
#include "cpld/Macrocell.h"
#include "cpld/ReadBack.h"

namespace {

using namespace cpld;

// A moment of a device: any levels of pads, states, and values of exclusive ors and foldbacks, as if each
// came from elsewhere. What the chip's functions say of it is compared with the macrocell's.
class Moment {
  public:
    Moment(const Device& device, const Package& package, const Configuration& from, std::mt19937& random)
        : device_(device), package_(package), from_(from) {
        for (auto* values : {&pads_, &states_, &exclusives_, &foldbacks_})
            for (std::size_t i = 0; i < device.Pads.size(); ++i) values->push_back(random() % 2 == 0);
        for (std::size_t i = 0; i < from.Cells.size(); ++i) {
            const Cell& cell = from.Cells[i];
            const bool isCut =
                cell.A == XorA::VccPt2 && cell.B == XorB::VccPt12 && cell.Invert == Switched::Off;
            if (cell.Pt1 == Pt1Mux::Sum || isCut) foldbacks_[i] = true;
        }
    }

    CellInputs InputsOf(std::size_t cell, bool cascade) const {
        CellInputs in;
        for (std::size_t i = 0; i < CellTerms; ++i)
            in.Terms[i] = ValueOf(from_.Cells[cell].Terms[i], cell / BlockCells);
        in.Cascade = cascade;
        in.State = states_[cell];
        in.Pad = pads_[cell];
        in.GlobalClear = pads_[device_.Special.Clear] != from_.InvertClear;
        for (std::size_t i = 0; i < ClockCount; ++i)
            in.Clocks[i] = ValueOf(device_.Clocks[i], from_.Clocks[i]);
        for (std::size_t i = 0; i < EnableCount; ++i)
            in.Enables[i] = ValueOf(device_.Enables[i], from_.Enables[i]);
        return in;
    }

    bool ValueOf(const proof::Sum& sum, const std::vector<CellPart>& parts) const {
        return std::any_of(sum.begin(), sum.end(), [&](const proof::Term& term) {
            return std::all_of(term.begin(), term.end(), [&](const proof::Literal& literal) {
                return ValueOf(literal.Of, parts) != literal.Negated;
            });
        });
    }
    bool StateOf(std::size_t cell) const { return states_[cell]; }

  private:
    bool ValueOf(const Signal& signal) const {
        if (signal.Is == Signal::Kind::Ground) return false;
        if (signal.Is == Signal::Kind::Pad) return pads_[signal.Index];
        const bool isState = from_.Cells[signal.Index].Feedback == Path::Sync;
        return isState ? states_[signal.Index] : exclusives_[signal.Index];
    }
    bool ValueOf(const Global& global, const GlobalUse& use) const {
        return ValueOf(use.Signal == NoSignal
                           ? Signal{}
                           : global.Signals.at(static_cast<std::size_t>(use.Signal))) != use.Invert;
    }
    bool ValueOf(const Term& term, std::size_t block) const {
        for (std::size_t i = 0; i < BlockCells; ++i)
            if (term[i] && !foldbacks_[block * BlockCells + i]) return false;
        for (std::size_t i = 0; i < BlockSwitches; ++i) {
            const Switch& from = device_.Blocks[block].Switches[i];
            const int chosen = from_.Switches[block][i];
            const bool value =
                ValueOf(chosen == NoSignal ? Signal{} : from.Signals[static_cast<std::size_t>(chosen)]);
            if (term[from.TrueColumn] && !value) return false;
            if (term[from.ComplementColumn()] && value) return false;
        }
        return true;
    }
    bool ValueOf(const proof::Signal& signal, const std::vector<CellPart>& parts) const {
        if (signal.From == proof::Signal::Kind::Cell) {
            const CellPart part = parts.at(signal.At);
            const auto& values = part.Of == Part::Register    ? states_
                                 : part.Of == Part::Exclusive ? exclusives_
                                                              : foldbacks_;
            return values[part.Macrocell];
        }
        const int pad = package_.PadAt(static_cast<int>(signal.At));
        return pads_.at(pad >= 0
                            ? static_cast<std::size_t>(pad)
                            : signal.At - static_cast<std::size_t>(NodeOf(package_, from_.Cells.size())));
    }

    const Device& device_;
    const Package& package_;
    const Configuration& from_;
    std::vector<bool> pads_, states_, exclusives_, foldbacks_;
};

struct Value {
    const char* Of;
    bool Chip, Macrocell;
};

void Compare(const proof::Macrocell& cell, const CellPart& part, const CellOutputs& out, const Moment& moment,
             const std::vector<CellPart>& parts) {
    const auto value = [&](const proof::Sum& sum) { return moment.ValueOf(sum, parts); };
    bool function = value(cell.Rows) != (cell.Rows2 && value(*cell.Rows2));
    function = function != cell.Inverted;
    if (cell.Register == proof::RegisterKind::T) function = function != moment.StateOf(part.Macrocell);
    std::vector<Value> values{{"function", function,
                               part.Of == Part::Register    ? out.Data
                               : part.Of == Part::Exclusive ? out.Exclusive
                                                            : out.Foldback}};
    if (part.Of == Part::Register)
        values.insert(values.end(), {{"clock", value(cell.Clock.When), out.Clock},
                                     {"clock enable", value(cell.ClockEnable.When), out.ClockEnable},
                                     {"reset", value(cell.Reset.When), out.Reset},
                                     {"preset", value(cell.Preset.When), out.Set}});
    if (cell.Pin != 0) values.push_back({"enable", value(cell.Enable.When), out.OutputEnabled});
    for (const auto& [of, chip, macrocell] : values)
        ASSERT_EQ(chip, macrocell) << of << " of MC" << part.Macrocell + 1;
}

TEST(CpldReadBack, TellsTheFunctionsOfAnyConfiguration) {
    std::mt19937 random(21);
    for (const Device& device : test::Devices()) {
        for (int round = 0; round < 12; ++round) {
            auto from = test::RandomConfiguration(device, random);
            from.Settings.Jtag = JtagPins::User;
            for (Cell& cell : from.Cells) {
                cell.TermPower = Switched::On;
                if (cell.Pt5 == Pt5Mux::Sum) cell.Func5 = Pt5Func::As;
            }
            const Package& package = device.Packages[random() % device.Packages.size()];
            const auto [chip, parts] = ReadBack(device, package, from);
            ASSERT_GE(parts.size(), device.CellCount());
            for (int i = 0; i < 20; ++i) {
                const Moment moment(device, package, from, random);
                std::vector<CellOutputs> outputs;
                for (std::size_t cell = 0; cell < from.Cells.size(); ++cell) {
                    const bool cascade = cell % BlockCells != 0 && outputs.back().Cascade;
                    outputs.push_back(Evaluate(from.Cells[cell], moment.InputsOf(cell, cascade)));
                }
                for (std::size_t k = 0; k < parts.size(); ++k)
                    Compare(chip.Cells[k], parts[k], outputs[parts[k].Macrocell], moment, parts);
            }
        }
    }
}

TEST(CpldReadBack, LeavesJtagPinsAndUnknownEnablesUndriven) {
    const Device& device = test::Devices()[0];
    Configuration from = EmptyConfiguration(device);
    const std::size_t tdi = device.Special.Tdi, free = 0, odd = 1;
    for (const std::size_t cell : {tdi, free, odd}) from.Cells[cell].OutputEnable = Enable::VccPt5;
    from.Cells[odd].Func5 = Pt5Func::Oe;
    const auto chip = ReadBack(device, device.Packages[0], from).Chip;
    EXPECT_TRUE(chip.Cells[free].Drives());
    EXPECT_FALSE(chip.Cells[tdi].Drives());
    EXPECT_FALSE(chip.Cells[odd].Drives());
    EXPECT_FALSE(chip.Cells[odd].Known);
    EXPECT_EQ(chip.Cells[free].Node, 4);
    EXPECT_EQ(chip.Cells[tdi].Node, 44 + 4);
    EXPECT_EQ(chip.Cells[free].PowerUp, 'X');
}

}  // namespace
