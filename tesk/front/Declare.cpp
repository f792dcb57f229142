#include <algorithm>
#include <utility>

#include "front/Analyser.h"
#include "front/Limits.h"

namespace front {

void Analyser::CheckHeader() {
    const Header& head = syntax_.Head;
    std::string missing;
    for (std::size_t i = 1; i < headerWords.size(); ++i) {
        if (head.Given[i] || headerWords[i].Name == "Format") continue;  // few designs ask for a format
        missing += (missing.empty() ? "" : ", ") + std::string(headerWords[i].Name);
    }
    if (!head.Given[0] || head.Texts[0].empty()) report_.Add(Code::NameMissing, {0, 1, 0});
    if (!missing.empty()) report_.Add(Code::HeaderMissing, {0, 1, 0}, missing);
}

void Analyser::Declare(const Declaration& declaration) {
    const std::vector<ListedName> names = names_.Listed(declaration.Names);
    if (declaration.Numbered && declaration.Numbers.size() != names.size())
        report_.Add(Code::PinCount, declaration.At,
                    std::to_string(declaration.Numbers.size()) + " numbers, " + std::to_string(names.size()) +
                        " names");
    for (std::size_t i = 0; i < names.size(); ++i) {
        Variable variable;
        variable.Name = names[i].Name;
        variable.Kind = declaration.Kind;
        variable.ActiveLow = declaration.ActiveLow != names[i].Inverted;
        variable.At = names[i].At;
        if (names[i].Ext != Extension::None)
            report_.Add(Code::BadExtension, names[i].At, "a declaration takes the bare name");
        if (i < declaration.Numbers.size()) variable.Number = declaration.Numbers[i];
        const int key = declaration.Kind == VariableKind::PinNode ? -variable.Number : variable.Number;
        if (variable.Number != 0 && !pins_.emplace(key, variable.At).second)
            report_.Add(Code::PinTwice, declaration.At, std::to_string(variable.Number));
        names_.AddVariable(variable);
    }
}

void Analyser::DeclareField(const FieldDeclaration& field) {
    const int index = static_cast<int>(analysis_.Result.Fields.size());
    if (!names_.Declare(std::string(field.Name), {SymbolKind::Field, index}, field.At)) return;
    analysis_.Result.Fields.push_back({std::string(field.Name), {}});
}

void Analyser::DeclareFunction(const FunctionStatement& function) {
    if (!names_.Declare(std::string(function.Name), {SymbolKind::Function, 0}, function.At)) return;
    for (const EquationStatement& equation : function.Body) {
        const Expr& target = syntax_.Exprs[static_cast<std::size_t>(equation.To.Names)];
        if (target.What != Op::Name || target.Ext != Extension::None)
            report_.Add(Code::NotAssignable, equation.At, "a function assigns to plain names");
    }
    elaborator_.Functions.emplace(function.Name, &function);
}

Extension RegisterOf(Extension input) {
    if (input == Extension::K) return Extension::J;
    return input == Extension::S ? Extension::R : input;
}

void Analyser::NoteRegister(int variable, Extension extension) {
    Extension& kind = analysis_.Result.Variables[static_cast<std::size_t>(variable)].Register;
    if (IsRegisterInput(extension) && kind == Extension::None) kind = RegisterOf(extension);
}

// A name on the left that nothing declares is an intermediate variable.
void Analyser::AddTarget(ExprId names) {
    for (const ListedName& name : names_.Listed(names)) {
        const auto symbol = names_.Find(name.Name);
        if (!symbol && name.Name != "NC" && name.Ext == Extension::None) {
            Variable variable;
            variable.Name = name.Name;
            variable.At = name.At;
            names_.AddVariable(variable);
        } else if (symbol && symbol->Kind == SymbolKind::Variable) {
            NoteRegister(symbol->Index, name.Ext);
        } else if (symbol && symbol->Kind == SymbolKind::Field) {
            fieldTargets_.push_back({symbol->Index, name.Ext});
        }
    }
}

void Analyser::AddRuleTargets(const std::vector<Rule>& rules) {
    for (const Rule& rule : rules)
        for (const Target& target : rule.Out) AddTarget(target.Names);
}

void Analyser::FindIntermediates(const Statement& statement) {
    if (const auto* equation = std::get_if<EquationStatement>(&statement)) AddTarget(equation->To.Names);
    if (const auto* table = std::get_if<TableStatement>(&statement)) AddTarget(table->Out.Names);
    if (const auto* condition = std::get_if<ConditionStatement>(&statement)) AddRuleTargets(condition->Rules);
    if (const auto* machine = std::get_if<MachineStatement>(&statement)) {
        for (const State& state : machine->States) AddRuleTargets(state.Rules);
        if (options_.Onehot) return;  // its members are no registers
        for (const ListedName& name : names_.Listed(machine->Field)) {
            const auto symbol = names_.Find(name.Name);
            if (symbol && symbol->Kind == SymbolKind::Variable) NoteRegister(symbol->Index, machine->Kind);
            if (symbol && symbol->Kind == SymbolKind::Field)
                fieldTargets_.push_back({symbol->Index, machine->Kind});
        }
    }
}

// A field may name fields that are declared behind it; one that leads back to itself is an error.
void Analyser::ResolveField(int index, std::vector<const FieldDeclaration*>& open, std::size_t depth) {
    const FieldDeclaration* field = std::exchange(open[static_cast<std::size_t>(index)], nullptr);
    if (field == nullptr) return;
    fieldsInWork_.push_back(index);
    for (const ListedName& name : names_.Listed(field->Members)) {
        const auto symbol = names_.Find(name.Name);
        if (!symbol || symbol->Kind != SymbolKind::Field) continue;
        const bool inWork =
            std::find(fieldsInWork_.begin(), fieldsInWork_.end(), symbol->Index) != fieldsInWork_.end();
        if (inWork || depth >= Limits::Nesting)
            report_.Add(inWork ? Code::FieldLoop : Code::Nesting, name.At, name.Name);
        else
            ResolveField(symbol->Index, open, depth + 1);
    }
    fieldsInWork_.pop_back();
    for (const ListedName& name : names_.Members(field->Members)) {
        if (const auto variable = names_.FindVariable(name.Name))
            analysis_.Result.Fields[static_cast<std::size_t>(index)].Members.push_back(*variable);
        else
            names_.ReportUnknown(name.Name, name.At);
    }
}

void Analyser::ResolveFields() {
    std::vector<const FieldDeclaration*> open(analysis_.Result.Fields.size());
    for (const Statement& statement : syntax_.Statements) {
        const auto* field = std::get_if<FieldDeclaration>(&statement);
        const auto symbol = field != nullptr ? names_.Find(field->Name) : std::nullopt;
        if (!symbol || symbol->Kind != SymbolKind::Field) continue;
        const FieldDeclaration*& first = open[static_cast<std::size_t>(symbol->Index)];
        if (first == nullptr) first = field;  // a second one is reported already
    }
    for (std::size_t i = 0; i < open.size(); ++i) ResolveField(static_cast<int>(i), open, 0);
    for (const auto& [field, extension] : fieldTargets_)
        for (int member : analysis_.Result.Fields[static_cast<std::size_t>(field)].Members)
            NoteRegister(member, extension);
}

}  // namespace front
