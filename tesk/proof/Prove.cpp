#include "proof/Prove.h"

#include <algorithm>
#include <map>

#include "proof/Compare.h"

namespace proof {
namespace {

// What a key stands for.
enum What : std::size_t {
    OfName,     // a register, or the pin of a name without one; in asserted states
    OfNamePin,  // the pin of a register that is not always enabled; in asserted states
    OfPin,      // a pin without a name, its level
    OfCell,     // a macrocell without a name, its state
};

std::string Numbered(const char* what, std::size_t number) { return what + std::to_string(number); }

class Prover {
  public:
    Prover(const Equations& design, const Chip& chip, std::uint64_t bound)
        : design_(design), chip_(chip), bound_(bound), wanted_(design.Names.size()) {
        for (const Wanted& wanted : design.Functions) wanted_[wanted.Name][wanted.To] = &wanted;
        for (std::size_t i = 0; i < design.Names.size(); ++i)
            if (design.Names[i].Place != 0) nameAt_.emplace(design.Names[i].Place, i);
    }

    Verdict Run() {
        for (name_ = 0; name_ < design_.Names.size(); ++name_) {
            const Name& name = design_.Names[name_];
            if (name.Place == 0) {
                if (!name.Node && !wanted_[name_].empty()) verdict_.Open.push_back(name.Text);
                continue;
            }
            const auto cell = std::find_if(chip_.Cells.begin(), chip_.Cells.end(),
                                           [&](const Macrocell& c) { return c.Node == name.Place; });
            cell_ = cell == chip_.Cells.end() ? nullptr : &*cell;
            if (wanted_[name_].empty()) {
                ProveInput();
            } else {
                ProveDriven();
            }
        }
        return std::move(verdict_);
    }

  private:
    const Name& Current() const { return design_.Names[name_]; }
    const Wanted* Find(std::size_t name, Input to) const {
        const auto found = wanted_[name].find(to);
        return found == wanted_[name].end() ? nullptr : found->second;
    }
    bool IsRegister(std::size_t name) const { return design_.Names[name].Register != RegisterKind::None; }
    // Whether the cell's register, or its function, is 0 while the name is asserted.
    bool Sense() const { return cell_->PinInverted != Current().ActiveLow; }

    std::string Place() const {
        const bool isPin = cell_ == nullptr || cell_->Pin != 0;
        return (isPin ? "pin " : "node ") + std::to_string(Current().Place);
    }
    void Differ(const std::string& text) { verdict_.Differences.push_back({Current().Text, text}); }
    std::string Title(Input to) const {
        return Current().Text + (to == Input::Out ? "" : "." + std::string(model::InputWords.Of(to)));
    }

    void ProveInput() {
        if (Current().Node || cell_ == nullptr || !cell_->Drives()) return;
        Differ(Current().Text + ", " + Place() + ": an input of the equations, an output of the fuses");
    }

    void ProveDriven() {
        if (cell_ == nullptr)
            return Differ(Current().Text + ", " + Place() + ": the device has no macrocell there");
        if (!cell_->Known)
            return Differ(Current().Text + ", " + Place() +
                          ": the fuses of the macrocell fit none of its uses");
        const bool isRegister = cell_->Register != RegisterKind::None;
        if (isRegister != IsRegister(name_))
            return Differ(Current().Text + ", " + Place() + ": the fuses make it " +
                          (isRegister ? "a register" : "no register"));
        ProveData();
        // What a node in a macrocell without a register leads back passes its pin.
        if (!Current().Node || (!isRegister && cell_->Pin != 0)) ProveEnable();
        if (isRegister) ProveRegister();
    }

    // The keys of both sides

    bool HasOwnPin(std::size_t name) const { return IsRegister(name) && Find(name, Input::Oe) != nullptr; }

    Products ProductsOf(const Wanted& wanted, const logic::Cover& cover) const {
        Products products;
        for (std::size_t i = 0; i < cover.Size(); ++i) {
            Product& product = products.emplace_back();
            for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
                const Column& column = wanted.Columns[input];
                const bool isPin = column.Pin && HasOwnPin(column.Name);
                product.push_back({{isPin ? OfNamePin : OfName, column.Name}, negated});
            }
        }
        return products;
    }

    void AddLiteral(Product& product, const Literal& literal) const {
        const bool isCell = literal.Of.From == Signal::Kind::Cell;
        const Macrocell* cell = isCell ? &chip_.Cells[literal.Of.At] : nullptr;
        const auto found = nameAt_.find(isCell ? cell->Node : static_cast<int>(literal.Of.At));
        if (found == nameAt_.end())
            return product.push_back({{isCell ? OfCell : OfPin, literal.Of.At}, literal.Negated});
        const std::size_t name = found->second;
        const bool low = design_.Names[name].ActiveLow != (isCell && cell->PinInverted);
        // Within a macrocell without a register its pin's enable has no say.
        const bool isEnabled = !isCell || IsRegister(name) || Find(name, Input::Oe) == nullptr;
        if (!isEnabled) return product.push_back({{OfCell, literal.Of.At}, literal.Negated});
        const bool isPin = !isCell && HasOwnPin(name);
        product.push_back({{isPin ? OfNamePin : OfName, name}, literal.Negated != low});
    }

    Products ProductsOf(const Sum& sum) const {
        Products products;
        for (const Term& term : sum) {
            Product& product = products.emplace_back();
            for (const Literal& literal : term) AddLiteral(product, literal);
        }
        return products;
    }

    std::string TextOf(const Key& key) const {
        switch (key.What) {
            case OfName:
                return design_.Names[key.At].Text;
            case OfNamePin:
                return design_.Names[key.At].Text + ".IO";
            case OfPin:
                return key.At == 0 ? "unknown_line" : Numbered("pin_", key.At);
            default:
                return Numbered("node_", static_cast<std::size_t>(chip_.Cells[key.At].Node));
        }
    }

    void Note(Input to, const Comparison& comparison) {
        if (comparison.Is == Comparison::Result::Same) return void(++verdict_.Compared);
        if (comparison.Is == Comparison::Result::Open) return verdict_.Open.push_back(Title(to));
        const char* fuses = comparison.At.Found ? "1" : "0";
        const char* equations = comparison.At.Found ? "0" : "1";
        std::string text =
            Title(to) + ", " + Place() + ": the fuses give " + fuses + ", the equations " + equations;
        const char* separator = " at ";
        for (const auto& [key, value] : comparison.At.Values) {
            text += separator + TextOf(key) + (value ? "=1" : "=0");
            separator = " ";
        }
        Differ(text);
    }

    // The functions

    void ProveSum(Input to, const Sum& sum, const Products* rows2, bool inverted, const Wanted& wanted) {
        Note(to, Compare(ProductsOf(sum), rows2, inverted, ProductsOf(wanted, wanted.On),
                         ProductsOf(wanted, wanted.DontCare), bound_));
    }
    void ProveControl(Input to, const Sum& sum, const Wanted& wanted) {
        ProveSum(to, sum, nullptr, false, wanted);
    }
    void ProveConstant(Input to, const Sum& sum, bool value) {
        const Products one{Product{}};
        Note(to, Compare(ProductsOf(sum), nullptr, false, value ? one : Products{}, {}, bound_));
    }

    void ProveData() {
        for (const Input to : {Input::Out, Input::D, Input::T, Input::L}) {
            const Wanted* wanted = Find(name_, to);
            if (wanted != nullptr) return ProveData(to, *wanted);
        }
        verdict_.Open.push_back(Current().Text);
    }

    void ProveData(Input to, const Wanted& wanted) {
        const bool toggles = cell_->Register == RegisterKind::T;
        if ((to == Input::L) != (cell_->Register == RegisterKind::Latch))
            return Differ(Title(to) + ", " + Place() + ": the fuses make it another kind of register");
        std::optional<Products> rows2;
        if (cell_->Rows2) rows2 = ProductsOf(*cell_->Rows2);
        // What toggles differs from what is stored by the state.
        if (toggles != (to == Input::T)) {
            if (rows2) return verdict_.Open.push_back(Title(to));
            Product state;
            AddLiteral(state,
                       {{Signal::Kind::Cell, static_cast<std::size_t>(cell_ - chip_.Cells.data())}, false});
            rows2 = Products{state};
        }
        // Both states change alike, whichever level they have.
        const bool inverted = cell_->Inverted != (to != Input::T && Sense());
        ProveSum(to, cell_->Rows, rows2 ? &*rows2 : nullptr, inverted, wanted);
    }

    // Where the device enables nothing the equation may have any value.
    void ProveEnable() {
        const Wanted* wanted = Find(name_, Input::Oe);
        if (wanted == nullptr && cell_->Enable.From == Source::Device) return;
        Products open = wanted == nullptr ? Products{} : ProductsOf(*wanted, wanted->DontCare);
        for (Literal literal : cell_->EnableWith) {
            literal.Negated = !literal.Negated;
            AddLiteral(open.emplace_back(), literal);
        }
        Note(Input::Oe, Compare(ProductsOf(cell_->Enable.When), nullptr, false,
                                wanted == nullptr ? Products{Product{}} : ProductsOf(*wanted, wanted->On),
                                open, bound_));
    }

    void ProveRegister() {
        const Input clock = cell_->Register == RegisterKind::Latch ? Input::Le : Input::Ck;
        if (const Wanted* wanted = Find(name_, clock)) ProveControl(clock, cell_->Clock.When, *wanted);
        if (const Wanted* wanted = Find(name_, Input::Ce)) {
            ProveControl(Input::Ce, cell_->ClockEnable.When, *wanted);
        } else if (cell_->ClockEnable.From != Source::Device) {
            ProveConstant(Input::Ce, cell_->ClockEnable.When, true);
        }
        ProveForced(Input::Ar, Input::Ap, cell_->Reset, cell_->Preset);
        ProveForced(Input::Sr, Input::Sp, cell_->SyncReset, cell_->SyncPreset);
    }

    // Reset makes the register 0, which is the name asserted if they differ.
    void ProveForced(Input reset, Input preset, const Control& toZero, const Control& toOne) {
        ProveForced(reset, Sense() ? toOne : toZero, reset, preset);
        ProveForced(preset, Sense() ? toZero : toOne, reset, preset);
    }
    void ProveForced(Input to, const Control& control, Input reset, Input preset) {
        if (const Wanted* wanted = Find(name_, to)) return ProveControl(to, control.When, *wanted);
        const auto asks = [&](const Wanted& other) { return other.To == reset || other.To == preset; };
        const bool isOthers = control.From == Source::Shared &&
                              std::any_of(design_.Functions.begin(), design_.Functions.end(), asks);
        if (!isOthers && !control.When.empty()) ProveConstant(to, control.When, false);
    }

    const Equations& design_;
    const Chip& chip_;
    std::uint64_t bound_;
    std::vector<std::map<Input, const Wanted*>> wanted_;  // of each name
    std::map<int, std::size_t> nameAt_;                   // name of each pin and node
    std::size_t name_ = 0;
    const Macrocell* cell_ = nullptr;
    Verdict verdict_;
};

}  // namespace

Verdict Prove(const Equations& design, const Chip& chip, std::uint64_t bound) {
    return Prover(design, chip, bound).Run();
}

void SettleNodes(Equations& design, const Chip& chip) {
    std::size_t least = Prove(design, chip).Differences.size();
    for (int round = 0; round < 2 && least > 0; ++round) {
        for (Name& name : design.Names) {
            if (!name.Node || name.Place == 0 || least == 0) continue;
            name.ActiveLow = !name.ActiveLow;
            const std::size_t left = Prove(design, chip).Differences.size();
            if (left >= least) name.ActiveLow = !name.ActiveLow;
            least = std::min(least, left);
        }
    }
}

std::vector<Message> Tell(const Verdict& verdict, const Chip& chip, bool setsFuses) {
    constexpr std::size_t shown = 8;
    std::vector<Message> messages;
    const MessageCode differs = setsFuses ? MessageCode("7503tc") : MessageCode("7501tc");
    for (const Finding& finding : verdict.Differences) {
        if (messages.size() == shown) {
            const auto more = std::to_string(verdict.Differences.size() - shown) + " more";
            messages.push_back(model::MakeMessage(differs.Entry(), {}, more));
            break;
        }
        messages.push_back(model::MakeMessage(differs.Entry(), {}, finding.Text, finding.Subject));
    }
    std::string open;
    for (std::size_t i = 0; i < verdict.Open.size() && i < shown; ++i)
        open += (i == 0 ? "" : ", ") + verdict.Open[i];
    if (verdict.Open.size() > shown) open += " and " + std::to_string(verdict.Open.size() - shown) + " more";
    if (!open.empty()) messages.push_back(model::MakeMessage(MessageCode("7502tc").Entry(), {}, open));
    if (verdict.Proved())
        messages.push_back(model::MakeMessage(
            MessageCode("7500tc").Entry(), {},
            std::to_string(verdict.Compared) + (verdict.Compared == 1 ? " function of " : " functions of ") +
                chip.Device));
    return messages;
}

}  // namespace proof
