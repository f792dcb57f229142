#include "front/Netlist.h"

#include <array>
#include <set>

#include "base/Text.h"
#include "front/Source.h"

namespace front {

namespace {

struct RegisterCell {
    Extension Kind;
    std::string_view Name;
};
constexpr std::array kRegisters{RegisterCell{Extension::D, "DFF"}, RegisterCell{Extension::T, "TFF"},
                                RegisterCell{Extension::J, "JKFF"}, RegisterCell{Extension::R, "SRFF"},
                                RegisterCell{Extension::L, "LATCH"}};

class Maker {
  public:
    Maker(const Design& design, bool onlyD) : design_(design), onlyD_(onlyD) {
        for (const Equation& equation : design.Equations)
            equations_[{equation.Variable, equation.To}] = &equation;
        for (const Variable& variable : design.Variables)
            names_.push_back(Unique(IdentifierOf(variable.Name)));
    }

    Netlist Run() {
        result_.Name = IdentifierOf(design_.Head.Name());
        for (std::size_t i = 0; i < design_.Variables.size(); ++i)
            if (design_.Variables[i].Kind != VariableKind::Intermediate) AddVariable(static_cast<int>(i));
        return std::move(result_);
    }

  private:
    const Equation* Find(int variable, Extension to) const {
        const auto entry = equations_.find({variable, to});
        return entry == equations_.end() ? nullptr : entry->second;
    }
    std::string Fresh() { return Unique("N" + std::to_string(++nets_)); }
    // Readers of netlists do not tell upper from lower case; a pin's net takes a suffix.
    std::string Unique(std::string name) {
        while (used_.contains(base::Upper(name)) || used_.contains(base::Upper(name) + "_PIN")) name += "_";
        used_.insert(base::Upper(name));
        used_.insert(base::Upper(name) + "_PIN");
        return name;
    }
    const std::string& NameOf(int variable) const { return names_[static_cast<std::size_t>(variable)]; }

    // Gates; each gives the net of its output.
    std::string AddCell(const std::string& kind, std::vector<std::pair<std::string, std::string>> inputs,
                        const std::string& port, const std::string& output) {
        result_.Cells.push_back(
            {kind, "U" + std::to_string(result_.Cells.size() + 1), std::move(inputs), port, output});
        return output;
    }
    std::string AddGate(std::string_view kind, const std::vector<std::string>& inputs) {
        if (inputs.size() == 1) return inputs[0];
        std::vector<std::pair<std::string, std::string>> ports;
        for (std::size_t i = 0; i < inputs.size(); ++i)
            ports.emplace_back("I" + std::to_string(i), inputs[i]);
        return AddCell(std::string(kind) + std::to_string(inputs.size()), std::move(ports), "O", Fresh());
    }
    std::string Inverted(const std::string& net) {
        std::string& known = inverses_[net];
        if (known.empty()) known = AddCell("INV", {{"I", net}}, "O", Fresh());
        return known;
    }
    std::string Constant(bool one) {
        std::string& known = constants_[one ? 1 : 0];
        if (known.empty()) known = AddCell(one ? "VCC" : "GND", {}, "O", Fresh());
        return known;
    }

    // What is driven outside, if the pin can be: an input, or an output that can be switched off.
    std::string PinNet(int variable) {
        const Variable& entry = design_.Variables[static_cast<std::size_t>(variable)];
        const std::string net = NameOf(variable) + "_PIN";
        return entry.ActiveLow ? Inverted(net) : net;
    }
    std::string SignalNet(int signal) {
        const Signal& entry = design_.Signals[static_cast<std::size_t>(signal)];
        const Variable& variable = design_.Of(entry);
        const bool pin = variable.Kind == VariableKind::Pin;
        const bool switched = Find(entry.Variable, Extension::OE) != nullptr;
        const bool outside =
            !variable.Assigned || (switched && (entry.Pin || variable.Register == Extension::None));
        return pin && outside ? PinNet(entry.Variable) : NameOf(entry.Variable);
    }
    std::string Sum(const Equation& equation) {
        const logic::Cover& cover = equation.Chosen();
        std::vector<std::string> terms;
        for (std::size_t i = 0; i < cover.Size(); ++i) {
            std::vector<std::string> factors;
            for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
                const std::string net = SignalNet(equation.Inputs[input]);
                factors.push_back(negated ? Inverted(net) : net);
            }
            terms.push_back(factors.empty() ? Constant(true) : AddGate("AND", factors));
        }
        const std::string sum = terms.empty() ? Constant(false) : AddGate("OR", terms);
        return equation.Inverted ? Inverted(sum) : sum;
    }
    std::string Input(int variable, Extension to) {
        const Equation* equation = Find(variable, to);
        return equation != nullptr ? Sum(*equation) : Constant(false);
    }

    // The data input of a D flip-flop that does what another kind does.
    std::string AsD(int variable, Extension kind) {
        const std::string q = NameOf(variable);
        if (kind == Extension::T) {
            const std::string t = Input(variable, Extension::T);
            return AddGate("OR", {AddGate("AND", {t, Inverted(q)}), AddGate("AND", {Inverted(t), q})});
        }
        const bool jk = kind == Extension::J;
        const std::string set = Input(variable, jk ? Extension::J : Extension::S);
        const std::string clear = Input(variable, jk ? Extension::K : Extension::R);
        const std::string hold = AddGate("AND", {Inverted(clear), q});
        return AddGate("OR", {jk ? AddGate("AND", {set, Inverted(q)}) : set, hold});
    }

    void AddRegister(int variable, Extension kind) {
        std::string name;
        std::vector<std::pair<std::string, std::string>> inputs;
        const bool plain = kind == Extension::D || kind == Extension::L;
        if (onlyD_ && !plain) {
            name = "DFF";
            inputs.emplace_back("D", AsD(variable, kind));
        } else {
            for (const RegisterCell& cell : kRegisters)
                if (cell.Kind == kind) name = cell.Name;
            for (Extension to : {Extension::D, Extension::T, Extension::J, Extension::K, Extension::S,
                                 Extension::R, Extension::L})
                if (Find(variable, to) != nullptr)
                    inputs.emplace_back(to == Extension::L ? "D" : ExtensionName(to), Input(variable, to));
        }
        for (Extension to : {Extension::CK, Extension::CE, Extension::LE, Extension::AR, Extension::AP,
                             Extension::SR, Extension::SP}) {
            if (Find(variable, to) == nullptr) continue;
            name += "_" + std::string(ExtensionName(to));
            inputs.emplace_back(ExtensionName(to), Input(variable, to));
        }
        AddCell(name, std::move(inputs), "Q", NameOf(variable));
    }

    void AddVariable(int index) {
        const Variable& variable = design_.Variables[static_cast<std::size_t>(index)];
        const std::string name = NameOf(index);
        const bool pin = variable.Kind == VariableKind::Pin;
        const bool switched = Find(index, Extension::OE) != nullptr;
        if (!variable.Assigned) {
            if (pin) result_.Ports.push_back({name, name + "_PIN", PortDirection::In, variable.Number});
            return;
        }
        if (variable.Register != Extension::None)
            AddRegister(index, variable.Register);
        else
            AddCell("BUF", {{"I", Input(index, Extension::None)}}, "O", name);
        if (!pin) return;
        const std::string level = variable.ActiveLow ? Inverted(name) : name;
        if (switched)
            AddCell("TRI", {{"I", level}, {"OE", Input(index, Extension::OE)}}, "O", name + "_PIN");
        else
            AddCell("BUF", {{"I", level}}, "O", name + "_PIN");
        result_.Ports.push_back(
            {name, name + "_PIN", switched ? PortDirection::InOut : PortDirection::Out, variable.Number});
    }

    const Design& design_;
    bool onlyD_;
    Netlist result_;
    std::map<std::pair<int, Extension>, const Equation*> equations_;
    std::map<std::string, std::string> inverses_;
    std::array<std::string, 2> constants_;
    std::vector<std::string> names_;  // of the variables' nets
    std::set<std::string> used_;
    std::size_t nets_ = 0;
};

}  // namespace

std::string IdentifierOf(std::string_view name) {
    std::string result;
    for (char c : name) result += IsWordChar(c) ? c : '_';
    if (result.empty() || (result[0] >= '0' && result[0] <= '9') || result[0] == '_') result.insert(0, "N");
    return result;
}

Netlist MakeNetlist(const Design& design, bool onlyD) { return Maker(design, onlyD).Run(); }

}  // namespace front
