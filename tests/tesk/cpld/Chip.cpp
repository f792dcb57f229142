#include "Chip.h"

namespace test {

using namespace cpld;

Chip::Chip(const Device& device, const Configuration& configuration)
    : Given(device.Pads.size()),
      States(device.CellCount()),
      device_(device),
      configuration_(configuration),
      outputs_(device.CellCount()) {}

bool Chip::Level(std::size_t pad) const {
    const bool driven = pad < outputs_.size() && outputs_[pad].OutputEnabled;
    return driven ? outputs_[pad].Output : Given[pad];
}

bool Chip::ValueOf(const Signal& signal) const {
    if (signal.Is == Signal::Kind::Ground) return false;
    return signal.Is == Signal::Kind::Pad ? Level(signal.Index) : outputs_[signal.Index].Feedback;
}

bool Chip::Holds(const Term& term, const Block& block, std::size_t index) const {
    for (std::size_t i = 0; i < BlockCells; ++i)
        if (term[i] && !outputs_[block.FirstCell + i].Foldback) return false;
    for (std::size_t i = 0; i < BlockSwitches; ++i) {
        const auto& with = block.Switches[i];
        const int chosen = configuration_.Switches[index][i];
        const bool value = chosen >= 0 && ValueOf(with.Signals[static_cast<std::size_t>(chosen)]);
        if (term[with.TrueColumn] && !value) return false;
        if (term[with.ComplementColumn()] && value) return false;
    }
    return true;
}

CellInputs Chip::InputsOf(std::size_t cell) const {
    CellInputs in;
    const auto& block = device_.BlockOf(cell);
    const auto& what = configuration_.Cells[cell];
    for (std::size_t i = 0; i < CellTerms; ++i)
        in.Terms[i] = what.TermPower == Switched::On && Holds(what.Terms[i], block, cell / BlockCells);
    in.Cascade = cell % BlockCells != 0 && outputs_[cell - 1].Cascade;
    in.State = States[cell];
    in.Pad = Level(cell);
    in.GlobalClear = Level(device_.Special.Clear) != configuration_.InvertClear;
    const auto global = [&](const Global& line, const GlobalUse& use) {
        return (use.Signal >= 0 && ValueOf(line.Signals[static_cast<std::size_t>(use.Signal)])) != use.Invert;
    };
    for (std::size_t i = 0; i < ClockCount; ++i)
        in.Clocks[i] = global(device_.Clocks[i], configuration_.Clocks[i]);
    for (std::size_t i = 0; i < EnableCount; ++i)
        in.Enables[i] = global(device_.Enables[i], configuration_.Enables[i]);
    return in;
}

bool Chip::Settle() {
    for (std::size_t round = 0; round < 4 * outputs_.size(); ++round) {
        bool still = true;
        for (std::size_t cell = 0; cell < outputs_.size(); ++cell) {
            const auto now = Evaluate(configuration_.Cells[cell], InputsOf(cell));
            const auto& was = outputs_[cell];
            still = still && now.Output == was.Output && now.OutputEnabled == was.OutputEnabled &&
                    now.Feedback == was.Feedback && now.Cascade == was.Cascade &&
                    now.Foldback == was.Foldback;
            outputs_[cell] = now;
        }
        if (still) return true;
    }
    return false;
}

}  // namespace test
