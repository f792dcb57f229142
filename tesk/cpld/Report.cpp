#include "cpld/Report.h"

#include <algorithm>

#include "base/Text.h"
#include "cpld/Levels.h"

namespace cpld {
namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string Number(std::size_t value) { return std::to_string(value); }

// Where the five terms go, one character a term.
std::string TermPlaces(const Cell& cell) {
    const bool isEnable = cell.Func5 == Pt5Func::Oe, isClock = cell.Func4 == Pt4Func::Clk;
    const char places[] = {cell.Pt1 == Pt1Mux::Sum ? 'S' : 'F', cell.Pt2 == Pt2Mux::Sum ? 'S' : 'X',
                           cell.Pt3 == Pt3Mux::Sum ? 'S' : 'R',
                           cell.Pt4 == Pt4Mux::Sum ? 'S'
                           : isClock               ? 'C'
                                                   : 'E',
                           cell.Pt5 == Pt5Mux::Sum ? 'S'
                           : isEnable              ? 'O'
                                                   : 'P'};
    std::string text;
    for (std::size_t i = 0; i < CellTerms; ++i) text += cell.Terms[i].all() ? '.' : places[i];
    return text;
}

class Report {
  public:
    Report(const Device& device, const Configuration& from, const DesignNames& names)
        : device_(device),
          from_(from),
          names_(names),
          package_(*device.FindPackage(names.Package)),
          chip_(ReadBack(device, package_, from)) {
        for (std::size_t cell = 0; cell < from.Cells.size(); ++cell)
            if (IsUsed(cell)) used_.push_back(cell);
    }

    std::string Write() {
        Line(device_.Name + package_.Suffix + ": " + Number(used_.size()) + " of " +
             Number(from_.Cells.size()) + " macrocells, " + Number(PinsUsed()) + " of " +
             Number(PinsThere()) + " pins");
        Line("");
        (text_ += DrawPackage(package_, PinNames())) += lineEnd;
        AddCells();
        AddGlobals();
        AddSwitches();
        AddLeft();
        AddPath();
        return std::move(text_);
    }

  private:
    void Line(std::string line) {
        line.erase(line.find_last_not_of(' ') + 1);
        (text_ += line) += lineEnd;
    }

    bool IsUsed(std::size_t cell) const {
        const Cell& options = from_.Cells[cell];
        return options.TermPower == Switched::On || options.OutputEnable != Enable::Gnd ||
               !names_.Cells[cell].empty();
    }

    std::string JtagName(std::size_t pad) const {
        if (from_.Settings.Jtag == JtagPins::User || !device_.IsJtagPad(pad)) return {};
        const auto& special = device_.Special;
        return pad == special.Tdi ? "TDI" : pad == special.Tms ? "TMS" : pad == special.Tck ? "TCK" : "TDO";
    }
    std::string NameOfPad(std::size_t pad) const {
        return names_.Pads[pad].empty() ? JtagName(pad) : names_.Pads[pad];
    }
    std::string NameOfCell(std::size_t cell) const {
        const auto& name = names_.Cells[cell].empty() && chip_.Chip.Cells[cell].Drives() ? names_.Pads[cell]
                                                                                         : names_.Cells[cell];
        return name.empty() ? "MC" + Number(cell + 1) : name;
    }
    std::string NameOfSignal(const Signal& signal) const {
        if (signal.Is == Signal::Kind::Feedback) return NameOfCell(signal.Index);
        const bool hasName = signal.Is == Signal::Kind::Pad && !NameOfPad(signal.Index).empty();
        return hasName ? NameOfPad(signal.Index) : device_.NameOf(signal);
    }

    // By pin number.
    std::vector<std::string> PinNames() const {
        std::vector<std::string> pins(static_cast<std::size_t>(package_.PinCount) + 1, "-");
        for (std::size_t pad = 0; pad < device_.Pads.size(); ++pad)
            if (package_.Pins[pad] != 0) pins[static_cast<std::size_t>(package_.Pins[pad])] = NameOfPad(pad);
        return pins;
    }
    std::size_t PinsThere() const {
        return package_.Pins.size() -
               static_cast<std::size_t>(std::count(package_.Pins.begin(), package_.Pins.end(), 0));
    }
    std::size_t PinsUsed() const {
        std::size_t count = 0;
        for (std::size_t pad = 0; pad < device_.Pads.size(); ++pad)
            count += package_.Pins[pad] != 0 && !NameOfPad(pad).empty();
        return count;
    }

    std::string RegisterText(std::size_t cell) const {
        const auto& part = chip_.Chip.Cells[cell];
        if (part.Register == proof::RegisterKind::None) return "-";
        const Cell& options = from_.Cells[cell];
        std::string text(model::RegisterWords.Of(part.Register));
        const bool isTerm = options.Pt4 == Pt4Mux::ClkCe, isClock = options.Func4 == Pt4Func::Clk;
        if (isClock) return text + (isTerm ? " PT4" : " open");
        text += " GCLK" + Number(static_cast<std::size_t>(options.GlobalClock) + 1);
        return text + (isTerm ? " if PT4" : "");
    }

    std::string CascadeText(std::size_t cell) const {
        const bool isIn = cell % BlockCells != 0 && from_.Cells[cell - 1].A == XorA::VccPt2;
        const bool isOut = from_.Cells[cell].A == XorA::VccPt2;
        return isIn && isOut ? "in out" : isIn ? "in" : isOut ? "out" : "-";
    }

    void Row(const std::vector<std::string>& columns) {
        constexpr std::size_t widths[] = {6, 5, 7, 9, 15, 0};
        std::string line;
        for (std::size_t i = 0; i < columns.size(); ++i) line += base::PadRight(columns[i], widths[i]);
        Line(line);
    }

    void AddCells() {
        Line(
            "Terms PT1 to PT5: S sum, X exclusive or, F foldback, R reset, P preset, C clock, E clock "
            "enable,");
        Line("O output enable, . not used");
        for (std::size_t block = 0; block < device_.Blocks.size(); ++block) {
            Line("");
            const auto isHere = [&](std::size_t cell) { return cell / BlockCells == block; };
            const bool hasCells = std::any_of(used_.begin(), used_.end(), isHere);
            Line(std::string("Block ") + device_.Blocks[block].Name + (hasCells ? "" : ": none"));
            if (hasCells) Row({"Cell", "Pin", "Terms", "Cascade", "Register", "Signal"});
            for (const std::size_t cell : used_)
                if (isHere(cell)) AddCell(cell);
        }
        Line("");
    }

    void AddCell(std::size_t cell) {
        const bool drives = chip_.Chip.Cells[cell].Drives() && package_.Pins[cell] != 0;
        Row({"MC" + Number(cell + 1), drives ? std::to_string(package_.Pins[cell]) : "-",
             TermPlaces(from_.Cells[cell]), CascadeText(cell), RegisterText(cell), NameOfCell(cell)});
    }

    bool IsClockUsed(std::size_t clock) const {
        return std::any_of(used_.begin(), used_.end(), [&](std::size_t cell) {
            const Cell& options = from_.Cells[cell];
            return chip_.Chip.Cells[cell].Register != proof::RegisterKind::None &&
                   options.Func4 == Pt4Func::Ce && static_cast<std::size_t>(options.GlobalClock) == clock;
        });
    }
    template <typename Test>
    bool AnyUsed(Test test) const {
        return std::any_of(used_.begin(), used_.end(),
                           [&](std::size_t cell) { return test(from_.Cells[cell]); });
    }

    void AddGlobal(const std::string& name, const Global& global, const GlobalUse& use) {
        const Signal signal =
            use.Signal == NoSignal ? Signal{} : global.Signals[static_cast<std::size_t>(use.Signal)];
        Line(base::PadRight(name, 6) + (use.Invert ? "!" : "") + NameOfSignal(signal));
    }

    void AddGlobals() {
        const std::size_t start = text_.size();
        for (std::size_t i = 0; i < ClockCount; ++i)
            if (IsClockUsed(i)) AddGlobal("GCLK" + Number(i + 1), device_.Clocks[i], from_.Clocks[i]);
        const Signal clear{Signal::Kind::Pad, static_cast<std::uint16_t>(device_.Special.Clear)};
        if (AnyUsed([](const Cell& cell) { return cell.GlobalClear == Switched::On; }))
            Line(std::string("GCLR  ") + (from_.InvertClear ? "!" : "") + NameOfSignal(clear));
        for (std::size_t i = 0; i < EnableCount; ++i) {
            const auto enable = static_cast<Enable>(static_cast<std::size_t>(Enable::Goe1) + i);
            if (AnyUsed([&](const Cell& cell) { return cell.OutputEnable == enable; }))
                AddGlobal("GOE" + Number(i + 1), device_.Enables[i], from_.Enables[i]);
        }
        if (text_.size() > start) Line("");
    }

    static std::size_t SwitchesUsed(const std::vector<int>& switches) {
        return switches.size() -
               static_cast<std::size_t>(std::count(switches.begin(), switches.end(), NoSignal));
    }

    void AddSwitches() {
        for (std::size_t block = 0; block < device_.Blocks.size(); ++block) {
            const auto& switches = from_.Switches[block];
            std::string line = std::string("Switches of block ") + device_.Blocks[block].Name + ":";
            for (std::size_t i = 0; i < switches.size(); ++i) {
                if (switches[i] == NoSignal) continue;
                const auto& signals = device_.Blocks[block].Switches[i].Signals;
                const std::string entry =
                    " " + Number(i + 1) + "=" + NameOfSignal(signals[static_cast<std::size_t>(switches[i])]);
                if (line.size() + entry.size() > 100) {
                    Line(line);
                    line = "   ";
                }
                line += entry;
            }
            Line(SwitchesUsed(switches) == 0 ? line + " none" : line);
        }
        Line("");
    }

    void AddLeft() {
        Line("Left: " + Number(from_.Cells.size() - used_.size()) + " macrocells, " +
             Number(PinsThere() - PinsUsed()) + " pins");
        for (std::size_t block = 0; block < device_.Blocks.size(); ++block) {
            const auto isHere = [&](std::size_t cell) { return cell / BlockCells == block; };
            const auto cells = static_cast<std::size_t>(std::count_if(used_.begin(), used_.end(), isHere));
            std::size_t terms = 0;
            for (std::size_t i = 0; i < BlockCells; ++i)
                for (const Term& term : from_.Cells[block * BlockCells + i].Terms) terms += term.all();
            Line(std::string("  block ") + device_.Blocks[block].Name + ": " + Number(BlockCells - cells) +
                 " macrocells, " + Number(terms) + " terms, " +
                 Number(BlockSwitches - SwitchesUsed(from_.Switches[block])) + " switches");
        }
        Line("");
    }

    std::string NameOfPart(std::size_t index) const {
        const CellPart part = chip_.Parts[index];
        return part.Of == Part::Foldback ? "foldback of MC" + Number(part.Macrocell + 1)
                                         : NameOfCell(part.Macrocell);
    }

    void AddPath() {
        const WorstPath path = FindWorstPath(chip_, used_);
        if (path.Cells.empty()) return Line("Worst path: 0 levels");
        std::string line =
            "Worst path: " + Number(path.Cells.size()) + (path.Cells.size() == 1 ? " level" : " levels");
        std::string from = "constant";
        if (path.From.From == proof::Signal::Kind::Cell) from = NameOfPart(path.From.At);
        const int pad = package_.PadAt(static_cast<int>(path.From.At));
        if (path.From.From == proof::Signal::Kind::Pin && pad >= 0)
            from = NameOfSignal({Signal::Kind::Pad, static_cast<std::uint16_t>(pad)});
        line += ", " + from;
        for (const std::size_t cell : path.Cells) line += " > " + NameOfPart(cell);
        Line(line);
        if (path.HasLoop) Line("The logic reads itself without a register; the path is cut there.");
    }

    const Device& device_;
    const Configuration& from_;
    const DesignNames& names_;
    const Package& package_;
    const ChipOfParts chip_;
    std::vector<std::size_t> used_;
    std::string text_;
};

}  // namespace

std::string WriteReport(const Device& device, const Configuration& configuration, const DesignNames& names) {
    return Report(device, configuration, names).Write();
}

}  // namespace cpld
