#include "cpld/Assemble.h"

#include <algorithm>

namespace cpld {
namespace {

class Assembler {
  public:
    Assembler(const Device& device, const Plans& plans, const Globals& globals, const Problem& problem,
              const Layout& layout, Fit& fit)
        : device_(device),
          plans_(plans),
          globals_(globals),
          problem_(problem),
          layout_(layout),
          fit_(fit),
          freeFirst_(device.CellCount(), true) {}

    void Run() {
        fit_.Result = EmptyConfiguration(device_);
        for (std::size_t i = 0; i < plans_.All.size(); ++i) ReserveTerms(plans_.All[i], layout_.Cells[i]);
        PlaceFoldbacks();
        WriteSwitches();
        for (std::size_t i = 0; i < plans_.All.size(); ++i) WritePlan(plans_.All[i], layout_.Cells[i]);
        WriteFoldbacks();
        WriteGlobals();
    }

  private:
    using Slot = std::pair<std::size_t, std::size_t>;  // macrocell and term

    // The first term is taken last: it can be a foldback.
    static std::vector<std::size_t> SumSlots(const Plan& plan) {
        std::vector<std::size_t> slots;
        if (!plan.Set && !plan.Enable) slots.push_back(4);
        if (!plan.Clock && !plan.ClockEnable) slots.push_back(3);
        if (!plan.Clear) slots.push_back(2);
        if (plan.As != Shape::Exclusive) slots.push_back(1);
        slots.push_back(0);
        return slots;
    }

    // Where each term of the sum goes.
    static std::vector<Slot> SlotsOf(const Plan& plan, std::size_t last) {
        std::vector<Slot> slots;
        for (const auto term : SumSlots(plan)) slots.emplace_back(last, term);
        for (std::size_t i = 1; i < plan.Cells(); ++i)
            for (std::size_t term = CellTerms; term-- > 0;) slots.emplace_back(last - i, term);
        slots.resize(plan.Terms.size());
        return slots;
    }

    void ReserveTerms(const Plan& plan, std::size_t last) {
        for (const auto& [cell, term] : SlotsOf(plan, last))
            if (term == 0) freeFirst_[cell] = false;
    }

    void PlaceFoldbacks() {
        for (std::size_t block = 0; block < device_.Blocks.size(); ++block) {
            auto& hosts = hosts_.emplace_back();
            std::size_t next = block * BlockCells;
            for (std::size_t i = 0; i < plans_.All.size(); ++i) {
                if (layout_.Cells[i] / BlockCells != block) continue;
                for (const auto foldback : problem_.Units[i].Foldbacks) {
                    if (hosts.contains(foldback)) continue;
                    while (!freeFirst_[next]) ++next;
                    hosts[foldback] = next++;
                }
            }
        }
    }

    static Signal BroughtBy(const Switch& with, const Source& source, std::size_t at) {
        for (const auto& signal : with.Signals) {
            const bool pad = source.Pad && signal.Is == Signal::Kind::Pad;
            const bool feedback = source.Feedback && signal.Is == Signal::Kind::Feedback;
            if ((pad || feedback) && signal.Index == at) return signal;
        }
        return {};
    }

    std::size_t AtOf(const Source& source) const {
        return source.Input ? layout_.Pads[*source.Input] : layout_.Cells[*source.Unit];
    }

    void WriteSwitches() {
        for (std::size_t block = 0; block < device_.Blocks.size(); ++block) {
            auto& columns = columns_.emplace_back(problem_.Sources.size());
            for (std::size_t i = 0; i < BlockSwitches; ++i) {
                const auto& source = layout_.Switches[block][i];
                if (!source) continue;
                const auto& with = device_.Blocks[block].Switches[i];
                const auto signal =
                    BroughtBy(with, problem_.Sources[*source], AtOf(problem_.Sources[*source]));
                const auto found = std::find(with.Signals.begin(), with.Signals.end(), signal);
                fit_.Result.Switches[block][i] = static_cast<int>(found - with.Signals.begin());
                columns[*source] = &with;
            }
        }
    }

    // Whether the level that a source brings is the complement of its name's asserted state.
    bool LowAt(const Source& source) const {
        return source.Unit ? plans_.All[*source.Unit].Low : plans_.Names[source.Name].Low;
    }

    Term TermOf(const Product& product, std::size_t block) const {
        Term term;
        for (const auto& literal : product) {
            const auto index = problem_.SourceOf(literal);
            if (!index) {
                term.set(hosts_[block].at(literal.Signal - firstFoldback) % BlockCells);
                continue;
            }
            const auto* with = columns_[block][*index];
            const bool high = literal.Negated == LowAt(problem_.Sources[*index]);
            term.set(high ? with->TrueColumn : with->ComplementColumn());
        }
        return term;
    }

    void Write(std::size_t cell, std::size_t term, const Product& product) {
        fit_.Result.Cells[cell].Terms[term] = TermOf(product, cell / BlockCells);
        fit_.Result.Cells[cell].TermPower = Switched::On;
    }

    void WriteRegister(const Plan& plan, std::size_t at) {
        auto& cell = fit_.Result.Cells[at];
        cell.Register = plan.Register == RegisterKind::Latch ? Storage::Latch : Storage::Dff;
        cell.Output = cell.Feedback = Path::Sync;
        cell.Func4 = plan.Clock ? Pt4Func::Clk : Pt4Func::Ce;
        if (plan.GlobalClock) cell.GlobalClock = static_cast<Clock>(*plan.GlobalClock);
        if (plan.Clock || plan.ClockEnable) {
            cell.Pt4 = Pt4Mux::ClkCe;
            Write(at, 3, plan.Clock ? *plan.Clock : *plan.ClockEnable);
        }
        if (plan.GlobalClear) cell.GlobalClear = Switched::On;
        if (plan.Clear) {
            cell.Pt3 = Pt3Mux::Ar;
            Write(at, 2, *plan.Clear);
        }
        if (plan.Set) {
            cell.Pt5 = Pt5Mux::AsOe;
            Write(at, 4, *plan.Set);
        }
    }

    void WriteOutput(const Plan& plan, std::size_t at) {
        auto& cell = fit_.Result.Cells[at];
        if (!plans_.Names[plan.Owner].Drives || plan.Never) return;
        cell.OutputEnable = Enable::VccPt5;
        if (plan.GlobalEnable)
            cell.OutputEnable =
                static_cast<Enable>(static_cast<std::size_t>(Enable::Goe1) + *plan.GlobalEnable);
        if (!plan.Enable) return;
        cell.Pt5 = Pt5Mux::AsOe;
        cell.Func5 = Pt5Func::Oe;
        Write(at, 4, *plan.Enable);
    }

    void WriteShape(const Plan& plan, std::size_t at) {
        auto& cell = fit_.Result.Cells[at];
        const bool toggle = plan.As == Shape::Toggle || plan.As == Shape::ToggleComplement;
        cell.B = toggle ? XorB::FfQn : XorB::VccPt12;
        cell.Invert = plan.StartsHigh() ? Switched::Off : Switched::On;
        if (plan.As != Shape::Exclusive) return;
        cell.Pt2 = Pt2Mux::Xor;
        Write(at, 1, plan.Xor);
    }

    void WritePlan(const Plan& plan, std::size_t at) {
        const auto slots = SlotsOf(plan, at);
        for (std::size_t i = 0; i < slots.size(); ++i) Write(slots[i].first, slots[i].second, plan.Terms[i]);
        for (std::size_t i = 1; i < plan.Cells(); ++i) {
            fit_.Result.Cells[at - i].A = XorA::VccPt2;
            fit_.Names.Cells[at - i] = plans_.Names[plan.Owner].Text;
        }
        WriteShape(plan, at);
        if (plan.Register != RegisterKind::None) WriteRegister(plan, at);
        WriteOutput(plan, at);
        fit_.Names.Cells[at] = plans_.Names[plan.Owner].Text;
        const auto own = std::min(plan.Terms.size(), plan.OwnTerms());
        fit_.Cells.push_back(
            {at, plans_.Names[plan.Owner].Text, plan.Terms.size(), own, plan.Cells(), plan.Low});
    }

    void WriteFoldbacks() {
        for (const auto& block : hosts_)
            for (const auto& [foldback, cell] : block) {
                fit_.Result.Cells[cell].Pt1 = Pt1Mux::Flb;
                Write(cell, 0, plans_.Foldbacks[foldback]);
            }
    }

    template <std::size_t count>
    void WriteGlobals(const std::array<std::optional<GlobalNet>, count>& nets,
                      const std::array<Global, count>& lines, std::array<GlobalUse, count>& uses) {
        for (std::size_t i = 0; i < count; ++i) {
            if (!nets[i]) continue;
            const Signal pad{Signal::Kind::Pad, static_cast<std::uint16_t>(nets[i]->Pad)};
            const auto found = std::find(lines[i].Signals.begin(), lines[i].Signals.end(), pad);
            uses[i] = {static_cast<int>(found - lines[i].Signals.begin()), Inverted(*nets[i])};
        }
    }
    bool Inverted(const GlobalNet& net) const {
        return net.From.Negated != plans_.Names[net.From.Signal].Low;
    }

    void WriteGlobals() {
        WriteGlobals(globals_.Clocks, device_.Clocks, fit_.Result.Clocks);
        WriteGlobals(globals_.Enables, device_.Enables, fit_.Result.Enables);
        if (globals_.Clear) fit_.Result.InvertClear = Inverted(*globals_.Clear);
    }

    const Device& device_;
    const Plans& plans_;
    const Globals& globals_;
    const Problem& problem_;
    const Layout& layout_;
    Fit& fit_;
    std::vector<bool> freeFirst_;                            // of each macrocell: no sum takes its first term
    std::vector<std::map<std::size_t, std::size_t>> hosts_;  // of each block: macrocells by foldback
    std::vector<std::vector<const Switch*>> columns_;        // of each block and source
};

}  // namespace

void Assemble(const Device& device, const Plans& plans, const Globals& globals, const Problem& problem,
              const Layout& layout, Fit& fit) {
    Assembler(device, plans, globals, problem, layout, fit).Run();
}

}  // namespace cpld
