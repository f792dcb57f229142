#include "cpld/ProofView.h"

#include <algorithm>

#include "cpld/Inline.h"
#include "logic/Minimize.h"

namespace cpld {
namespace {

using logic::Cover;
using logic::Intersection;
using model::Input;
using proof::Column;
using proof::Macrocell;
using proof::Wanted;

constexpr std::size_t mostCubes = 2000;

// Covers over the columns of several functions.
class Columns {
  public:
    Cover Spread(const Cover& from, const std::vector<Column>& columns) const {
        Cover result(static_cast<int>(All.size()), 1);
        for (std::size_t i = 0; i < from.Size(); ++i) {
            logic::Word* cube = result.Append();
            result.Form().SetOutput(cube, 0, true);
            for (std::size_t k = 0; k < columns.size(); ++k)
                result.Form().SetInput(cube, Of(columns[k]), from.Form().Input(from[i], static_cast<int>(k)));
        }
        return result;
    }
    Cover Single(const Column& column, bool value) const {
        Cover result = logic::Everything({static_cast<int>(All.size()), 1});
        result.Form().Restrict(result[0], Of(column), value);
        return result;
    }
    void Add(const std::vector<Column>& columns) {
        for (const Column& column : columns)
            if (Find(column) == All.end()) All.push_back(column);
    }

    std::vector<Column> All;

  private:
    std::vector<Column>::const_iterator Find(const Column& column) const {
        return std::find_if(All.begin(), All.end(), [&](const Column& other) {
            return other.Name == column.Name && other.Pin == column.Pin;
        });
    }
    int Of(const Column& column) const { return static_cast<int>(Find(column) - All.begin()); }
};

// What the register takes, with the enable in it; false if that is too large.
bool Hold(Wanted& data, const Wanted& enable) {
    Columns columns;
    const Column state{data.Name, false};
    columns.Add(data.Columns);
    columns.Add(enable.Columns);
    columns.Add({state});
    const Cover on = columns.Spread(enable.On, enable.Columns);
    const Cover open = columns.Spread(enable.DontCare, enable.Columns);
    Cover known = on;
    known.AddAll(open);
    const auto off = logic::Complement(known, mostCubes);
    if (!off) return false;
    Cover result = Intersection(on, columns.Spread(data.On, data.Columns));
    if (data.To != Input::T) result.AddAll(Intersection(*off, columns.Single(state, true)));
    data.DontCare = Intersection(on, columns.Spread(data.DontCare, data.Columns));
    data.DontCare.AddAll(open);
    data.On = std::move(result);
    data.Columns = columns.All;
    return true;
}

// What the register takes instead of when it changes; false if that is too large.
bool Store(Wanted& data) {
    Columns columns;
    const Column state{data.Name, false};
    columns.Add(data.Columns);
    columns.Add({state});
    const Cover on = columns.Spread(data.On, data.Columns);
    data.DontCare = columns.Spread(data.DontCare, data.Columns);
    Cover known = on;
    known.AddAll(data.DontCare);
    const auto off = logic::Complement(known, mostCubes);
    if (!off) return false;
    data.On = Intersection(on, columns.Single(state, false));
    data.On.AddAll(Intersection(*off, columns.Single(state, true)));
    data.Columns = columns.All;
    data.To = Input::D;
    return true;
}

void ReadElsewhere(Macrocell& cell, std::size_t from, std::size_t to) {
    for (proof::Sum* sum : SumsOf(cell))
        for (proof::Term& term : *sum)
            for (proof::Literal& literal : term)
                if (literal.Of == proof::Signal{proof::Signal::Kind::Cell, from}) literal.Of.At = to;
}

class Viewer {
  public:
    Viewer(proof::Equations design, const ChipOfParts& parts) : chip_(parts.Chip) {
        view_.Design = std::move(design);
        for (proof::Name& name : view_.Design.Names)
            if (name.Node && name.Place != 0) name.Place += chip_.Pins;
    }

    ProofView View() {
        for (Macrocell& cell : chip_.Cells)
            if (!cell.Drives()) Settle(cell);
        for (const proof::Name& name : view_.Design.Names) MoveRegister(name);
        Inline();
        for (std::size_t i = 0; i < view_.Design.Names.size(); ++i) HoldByData(i);
        for (Wanted& wanted : view_.Design.Functions) StoreExclusive(wanted);
        return std::move(view_);
    }

  private:
    std::size_t CellAt(int place) const {
        const auto found = std::find_if(chip_.Cells.begin(), chip_.Cells.end(),
                                        [&](const Macrocell& cell) { return cell.Node == place; });
        return static_cast<std::size_t>(found - chip_.Cells.begin());
    }
    bool IsNamed(const Macrocell& cell) const {
        const auto& names = view_.Design.Names;
        return std::any_of(names.begin(), names.end(), [&](const proof::Name& name) {
            return name.Place != 0 && name.Place == cell.Node;
        });
    }

    // A macrocell whose pin it never drives is buried, unless the design has an output there that is always
    // off.
    void Settle(Macrocell& cell) const {
        const auto& names = view_.Design.Names;
        const auto& functions = view_.Design.Functions;
        const bool isOutput =
            cell.Pin != 0 && std::any_of(functions.begin(), functions.end(), [&](const Wanted& wanted) {
                const proof::Name& name = names[wanted.Name];
                return !name.Node && name.Place == cell.Pin;
            });
        (isOutput ? cell.Node : cell.Pin) = isOutput ? cell.Pin : 0;
    }

    // To the pin, where nothing but the register's state is.
    void MoveRegister(const proof::Name& name) {
        const std::size_t at = name.Place == 0 ? chip_.Cells.size() : CellAt(name.Place);
        if (name.Register == proof::RegisterKind::None || at == chip_.Cells.size()) return;
        Macrocell& pin = chip_.Cells[at];
        const bool isCopy = pin.Register == proof::RegisterKind::None && !pin.Rows2 && pin.Rows.size() == 1 &&
                            pin.Rows.front().size() == 1 &&
                            pin.Rows.front().front().Of.From == proof::Signal::Kind::Cell;
        if (!isCopy) return;
        const proof::Literal literal = pin.Rows.front().front();
        const std::size_t from = literal.Of.At;
        if (chip_.Cells[from].Register == proof::RegisterKind::None || IsNamed(chip_.Cells[from])) return;
        Macrocell moved = chip_.Cells[from];
        moved.Pin = pin.Pin;
        moved.Node = pin.Node;
        moved.Enable = pin.Enable;
        moved.PinInverted = pin.Inverted != literal.Negated;
        pin = std::move(moved);
        for (Macrocell& cell : chip_.Cells) ReadElsewhere(cell, from, at);
    }

    void Inline() {
        std::vector<bool> keep;
        for (const Macrocell& cell : chip_.Cells) keep.push_back(IsNamed(cell));
        std::vector<std::size_t> tooLarge;
        view_.Chip = Inlined(chip_, keep, tooLarge);
        for (const proof::Name& name : view_.Design.Names)
            for (const std::size_t cell : tooLarge)
                if (name.Place != 0 && chip_.Cells[cell].Node == name.Place)
                    view_.TooLarge.push_back(name.Text);
    }

    Wanted* Find(std::size_t name, Input to) {
        for (Wanted& wanted : view_.Design.Functions)
            if (wanted.Name == name && wanted.To == to) return &wanted;
        return nullptr;
    }

    void HoldByData(std::size_t index) {
        const proof::Name& name = view_.Design.Names[index];
        const Wanted* enable = Find(index, Input::Ce);
        if (enable == nullptr || name.Place == 0) return;
        const std::size_t at = CellAt(name.Place);
        const bool hasTerm =
            at < chip_.Cells.size() && chip_.Cells[at].ClockEnable.From != proof::Source::Device;
        if (hasTerm) return;
        Wanted* data = Find(index, name.Register == proof::RegisterKind::T ? Input::T : Input::D);
        if (data == nullptr || !Hold(*data, *enable)) return view_.TooLarge.push_back(name.Text);
        std::erase_if(view_.Design.Functions,
                      [&](const Wanted& one) { return one.Name == index && one.To == Input::Ce; });
    }

    // Of a register that takes an exclusive or the prover can't tell when it changes.
    void StoreExclusive(Wanted& wanted) {
        const proof::Name& name = view_.Design.Names[wanted.Name];
        const std::size_t at = name.Place == 0 ? chip_.Cells.size() : CellAt(name.Place);
        if (wanted.To != Input::T || at == chip_.Cells.size()) return;
        const Macrocell& cell = chip_.Cells[at];
        const bool isExclusive = cell.Register == proof::RegisterKind::D && cell.Rows2;
        if (isExclusive && !Store(wanted)) view_.TooLarge.push_back(name.Text);
    }

    proof::Chip chip_;
    ProofView view_;
};

}  // namespace

proof::Verdict ProofView::Prove() const {
    proof::Verdict verdict = proof::Prove(Design, Chip);
    const auto isOpen = [&](const std::string& name) {
        return std::find(TooLarge.begin(), TooLarge.end(), name) != TooLarge.end();
    };
    std::erase_if(verdict.Differences,
                  [&](const proof::Finding& finding) { return isOpen(finding.Subject); });
    verdict.Open.insert(verdict.Open.end(), TooLarge.begin(), TooLarge.end());
    return verdict;
}

ProofView ViewForProof(proof::Equations design, const ChipOfParts& parts) {
    return Viewer(std::move(design), parts).View();
}

}  // namespace cpld
