#include "front/Analyser.h"

#include <algorithm>
#include <numeric>

#include "front/ComplexName.h"
#include "front/Limits.h"

namespace front {

void Analyse(const Syntax& syntax, const Options& options, Report& report, Analysis& analysis) {
    Analyser(syntax, options, report, analysis).Run();
}

void Analyser::Run() {
    analysis_.Result.Head = syntax_.Head;
    CheckHeader();
    for (const Statement& statement : syntax_.Statements) {
        if (const auto* declaration = std::get_if<Declaration>(&statement)) Declare(*declaration);
        if (const auto* field = std::get_if<FieldDeclaration>(&statement)) DeclareField(*field);
        if (const auto* function = std::get_if<FunctionStatement>(&statement)) DeclareFunction(*function);
    }
    for (const Statement& statement : syntax_.Statements) FindIntermediates(statement);
    ResolveFields();
    for (const Statement& statement : syntax_.Statements) {
        if (report_.Full()) return;
        try {
            Elaborate(statement);
        } catch (const MeaningFault&) {
            continue;  // reported; the next statement is looked at
        }
    }
    Finish();
    CheckRegisters();
    BuildFromD();
    SortSignals();
    CheckUse();
}

void Analyser::Elaborate(const Statement& statement) {
    std::visit([this](const auto& which) { Take(which); }, statement);
}

std::vector<Slot> Analyser::Slots(const Target& target, std::vector<int>* weights, bool* list) {
    std::vector<Slot> slots;
    std::vector<std::string> texts;
    for (const ListedName& name : names_.Members(target.Names)) {
        const auto variable = names_.FindVariable(name.Name);
        Slot slot{variable.value_or(-1), name.Ext, target.Complement != name.Inverted, name.At};
        if (!variable && name.Name != "NC") elaborator_.Fail(Code::NotAssignable, name.At, name.Name);
        if (name.Ext == Extension::IO || name.Ext == Extension::DQ)
            elaborator_.Fail(Code::BadExtension, name.At,
                             name.Name + "." + std::string(ExtensionName(name.Ext)) + " on the left side");
        const bool plain = variable && analysis_.Result.Variables[static_cast<std::size_t>(*variable)].Kind ==
                                           VariableKind::Intermediate;
        if (plain && name.Ext != Extension::None) {
            names_.ReportUnknown(name.Name, name.At);
            slot.Variable = -1;
        }
        slots.push_back(slot);
        texts.push_back(name.Name);
    }
    if (slots.empty()) throw MeaningFault{};
    *weights = WeightsOf(texts);
    const Expr& expr = syntax_.Exprs[static_cast<std::size_t>(target.Names)];
    const auto symbol = names_.Find(expr.Text);
    *list = expr.What == Op::List || (symbol && symbol->Kind == SymbolKind::Field);
    return slots;
}

Analyser::Gathered& Analyser::At(int variable, Extension to, Place at) {
    const auto [entry, fresh] = gathered_.try_emplace({variable, to});
    if (fresh) entry->second.At = at;
    return entry->second;
}

Analyser::Gathered& Analyser::Fresh(const Slot& slot) {
    Gathered& gathered = At(slot.Variable, slot.To, slot.At);
    if (gathered.Equation) {
        std::string name = analysis_.Result.Variables[static_cast<std::size_t>(slot.Variable)].Name;
        if (slot.To != Extension::None) name += "." + std::string(ExtensionName(slot.To));
        elaborator_.Fail(Code::SecondEquation, slot.At,
                         name + ", first in line " + std::to_string(gathered.At.Line));
    }
    gathered.Equation = true;
    gathered.Complement = slot.Complement;
    return gathered;
}

void Analyser::Take(const EquationStatement& equation) {
    std::vector<int> weights;
    bool list = false;
    const std::vector<Slot> slots = Slots(equation.To, &weights, &list);
    const Value value = elaborator_.Evaluate(equation.Value);
    const std::vector<NodeId> bits = elaborator_.Spread(value, weights, list, equation.At);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (slots[i].Variable < 0 || bits[i] == Network::noConnect) continue;
        if (!equation.Append) {
            Fresh(slots[i]).On.push_back(bits[i]);
            continue;
        }
        Gathered& gathered = At(slots[i].Variable, slots[i].To, slots[i].At);
        const bool first = gathered.On.empty() && gathered.Off.empty();
        if (first) gathered.Complement = slots[i].Complement;
        if (gathered.Complement != slots[i].Complement) elaborator_.Fail(Code::AppendSense, slots[i].At);
        gathered.On.push_back(bits[i]);
    }
}

NodeId Analyser::TableCondition(const TableRow& row, const Value& in) {
    if (row.In.High >= 0) return elaborator_.InRange(in, row.In.Low, row.In.High, row.At);
    return elaborator_.Equals(in, row.In.Low, row.At);
}

void Analyser::Take(const TableStatement& table) {
    std::vector<int> weights;
    bool list = false;
    const std::vector<Slot> slots = Slots(table.Out, &weights, &list);
    const Value in = elaborator_.List(table.In);
    std::vector<Gathered*> outputs;
    for (const Slot& slot : slots) outputs.push_back(slot.Variable < 0 ? nullptr : &Fresh(slot));
    for (const TableRow& row : table.Rows) {
        if (analysis_.Gates.Size() > Limits::Nodes) elaborator_.Fail(Code::DesignTooLarge, row.At);
        const NodeId condition = TableCondition(row, in);
        const Constant& out = syntax_.Constants[static_cast<std::size_t>(row.Out)];
        elaborator_.CheckOutside(out, weights, row.At);
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            const char digit = out.At(static_cast<std::size_t>(weights[i]));
            if (outputs[i] == nullptr || digit == '0') continue;
            (digit == 'X' ? outputs[i]->DontCare : outputs[i]->On).push_back(condition);
        }
    }
}

void Analyser::Take(const MinDeclaration& min) {
    for (const ListedName& name : names_.Members(min.Names)) {
        const auto variable = names_.FindVariable(name.Name);
        if (!variable) {
            names_.ReportUnknown(name.Name, name.At);
            continue;
        }
        analysis_.Result.Variables[static_cast<std::size_t>(*variable)].Minimization = min.Level;
    }
}

void Analyser::Take(const FuseStatement& fuse) {
    analysis_.Result.Fuses.push_back({fuse.Number, fuse.Value, fuse.At});
}

void Analyser::Take(const PropertyStatement& statement) {
    const std::string word(statement.Word);
    const PropertyRow* row = FindProperty(word);
    if (row == nullptr)
        return report_.Add(Code::PropertyUnknown, statement.At, word + ", known are " + PropertyWords());
    const auto value = PropertyValue(*row, statement.Value);
    if (!value) {
        const std::string values = row->Values[0].empty()
                                       ? "a hexadecimal number up to FFFF"
                                       : std::string(row->Values[0]) + " or " + std::string(row->Values[1]);
        const std::string what = word + " is " + values + ", not " + std::string(statement.Value);
        return report_.Add(Code::PropertyUnknown, statement.At, what);
    }
    if (!SplitComplex(analysis_.Result.Device))
        return report_.Add(Code::PropertyUnused, statement.At, word + ", " + analysis_.Result.Device);
    if (statement.Names >= 0 && !row->OfNames)
        return report_.Add(Code::PropertyUnknown, statement.At, word + " is one of the whole device");
    Property property{row->Kind, *value, {}, statement.At};
    if (statement.Names < 0) return analysis_.Result.Properties.push_back(property);
    for (const ListedName& name : names_.Members(statement.Names)) {
        const auto variable = names_.FindVariable(name.Name);
        if (variable)
            property.Variables.push_back(*variable);
        else
            names_.ReportUnknown(name.Name, name.At);
    }
    if (!property.Variables.empty()) analysis_.Result.Properties.push_back(std::move(property));
}

void Analyser::FinishOne(int variable, Extension to, const Gathered& gathered) {
    Network& gates = analysis_.Gates;
    NodeId on = gates.Or(gathered.On);
    if (!gathered.Off.empty()) {
        const NodeId off = gates.Not(gates.Or(gathered.Off));
        on = gathered.On.empty() ? off : gates.And(std::vector{on, off});
    }
    if (gathered.Complement) on = gates.Not(on);
    if (on == Network::noConnect) return;
    Variable& owner = analysis_.Result.Variables[static_cast<std::size_t>(variable)];
    if (to == Extension::None || IsRegisterInput(to)) owner.Assigned = true;
    if (owner.Kind == VariableKind::Intermediate)
        analysis_.Intermediates[static_cast<std::size_t>(variable)] = on;
    else
        analysis_.Definitions.push_back({variable, to, on, gates.Or(gathered.DontCare), gathered.At});
}

// Signals in the order of the declarations, so that outputs list them so.
void Analyser::SortSignals() {
    std::vector<Signal>& signals = analysis_.Result.Signals;
    std::vector<std::uint32_t> order(signals.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::pair(signals[a].Variable, signals[a].Pin) <
               std::pair(signals[b].Variable, signals[b].Pin);
    });
    std::vector<std::uint32_t> to(order.size());
    std::vector<Signal> sorted;
    for (std::uint32_t old : order) {
        to[old] = static_cast<std::uint32_t>(sorted.size());
        sorted.push_back(signals[old]);
    }
    signals = std::move(sorted);
    analysis_.Gates.Renumber(to);
}

void Analyser::Finish() {
    for (const OneHotMachine& hot : oneHots_) MoveControls(hot);
    analysis_.Intermediates.assign(analysis_.Result.Variables.size(), Network::zero);
    for (const auto& [key, gathered] : gathered_) FinishOne(key.first, key.second, gathered);
    if (analysis_.Definitions.empty() && report_.Errors() == 0) report_.Add(Code::NoOutputs, {0, 1, 0});
}

// Nodes without an equation and intermediate variables that nothing uses are most likely misspelled.
void Analyser::CheckUse() {
    if (report_.Errors() > 0) return;  // statements are missing
    std::vector<Variable>& variables = analysis_.Result.Variables;
    for (const Signal& signal : analysis_.Result.Signals) {
        const Variable& variable = analysis_.Result.Of(signal);
        if (variable.Kind != VariableKind::Pin && !variable.Assigned && !signal.Pin)
            report_.Add(Code::NodeUnassigned, variable.At, variable.Name);
    }
    const std::vector<bool> used = analysis_.Gates.UsedIntermediates(variables.size());
    for (std::size_t i = 0; i < variables.size(); ++i)
        if (variables[i].Kind == VariableKind::Intermediate && !used[i])
            report_.Add(Code::NeverUsed, variables[i].At, variables[i].Name);
}

// Which inputs a variable may have beside one another.
void Analyser::CheckRegisters() {
    for (const auto& [key, gathered] : gathered_) {
        const Variable& variable = analysis_.Result.Variables[static_cast<std::size_t>(key.first)];
        const Extension to = key.second;
        const std::string name = variable.Name + "." + std::string(ExtensionName(to));
        const bool latch = variable.Register == Extension::L;
        const bool flipFlop = variable.Register != Extension::None && !latch;
        if (to == Extension::None && variable.Register != Extension::None)
            report_.Add(Code::RegisterMix, gathered.At, variable.Name + " beside a register input");
        if (IsRegisterInput(to) && variable.Register != RegisterOf(to))
            report_.Add(Code::RegisterMix, gathered.At, name);
        const bool forFlipFlops =
            to == Extension::CK || to == Extension::CE || to == Extension::SR || to == Extension::SP;
        const bool forBoth = to == Extension::AR || to == Extension::AP;
        if ((forFlipFlops && !flipFlop) || (forBoth && !flipFlop && !latch) ||
            (to == Extension::LE && !latch))
            report_.Add(Code::BadExtension, gathered.At,
                        name + ", " + variable.Name + " has no such register");
    }
}

}  // namespace front
