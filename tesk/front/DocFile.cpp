#include <algorithm>

#include "base/Text.h"
#include "fit/Document.h"
#include "front/Complex.h"
#include "front/Outputs.h"

namespace front {

namespace {

std::string Heading(std::string_view title) {
    const std::string line(79, '=');
    return "\r\n" + line + "\r\n" + std::string(27, ' ') + std::string(title) + "\r\n" + line + "\r\n\r\n";
}

std::string Padded(std::string text, std::size_t width) {
    return base::PadRight(std::move(text), width) + " ";
}

std::string TermText(const Design& design, const Equation& equation, std::size_t cube) {
    const logic::Cover& cover = equation.Chosen();
    std::string text;
    for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[cube])) {
        if (!text.empty()) text += " & ";
        text += (negated ? "!" : "") + design.SignalName(equation.Inputs[input]);
    }
    return text.empty() ? "'b'1" : text;
}

std::string SumText(const Design& design, const Equation& equation, const std::string& lead) {
    const logic::Cover& cover = equation.Chosen();
    if (cover.Empty()) return lead + "'b'0\r\n";
    std::string text;
    for (std::size_t i = 0; i < cover.Size(); ++i)
        text += (i == 0 ? lead : "  # ") + TermText(design, equation, i) + "\r\n";
    return text;
}

std::string EquationText(const Design& design, const Equation& equation) {
    std::string text = (equation.Inverted ? "!" : "") + design.EquationName(equation) + " =>\r\n";
    if (equation.Sides.empty())
        text += SumText(design, equation, "    ");
    else
        text += SumText(design, equation.Sides[0], "    ") + SumText(design, equation.Sides[1], "  $ ");
    return text + "\r\n";
}

// A device has D registers alone; what they stand for is told.
std::string BuiltText(const Variable& variable) {
    if (variable.BuiltFrom.empty()) return {};
    std::string inputs;
    for (const Extension input : variable.BuiltFrom)
        inputs += (inputs.empty() ? "." : ", .") + std::string(ExtensionName(input));
    return Padded("Register", 10) + variable.Name + " is a D register, built from " + inputs + "\r\n";
}

std::string FieldText(const Design& design, const Field& field) {
    std::string text = field.Name + " => ";
    for (std::size_t i = 0; i < field.Members.size(); ++i)
        text += (i == 0 ? "" : ", ") + design.Variables[static_cast<std::size_t>(field.Members[i])].Name;
    return text + "\r\n\r\n";
}

std::string_view KindName(VariableKind kind) {
    switch (kind) {
        case VariableKind::Pin:
            return "pin";
        case VariableKind::PinNode:
            return "pinnode";
        case VariableKind::Node:
            return "node";
        default:
            return "intermediate";
    }
}

std::string SymbolLine(const Variable& variable, const Equation* equation) {
    const bool extended = equation != nullptr && equation->To != Extension::None;
    std::string line = Padded(variable.ActiveLow ? "!" : "", 3) + Padded(variable.Name, 31) +
                       Padded(extended ? std::string(ExtensionName(equation->To)) : "", 4) +
                       Padded(variable.Number > 0 ? std::to_string(variable.Number) : "-", 4) +
                       Padded(std::string(KindName(variable.Kind)), 13);
    if (equation == nullptr) return line + "-     -      -\r\n";
    const std::string most = equation->Available < 0 ? "-" : std::to_string(equation->Available);
    return line + Padded(std::to_string(equation->Terms()), 5) + Padded(most, 6) +
           std::to_string(equation->Level) + "\r\n";
}

std::string SymbolTable(const Design& design) {
    std::string text = "Pol Name" + std::string(28, ' ') + "Ext  Pin  Kind          Used  Avail  Level\r\n";
    text += "--- " + std::string(31, '-') + " ---- ---- ------------- ----- ------ -----\r\n";
    std::size_t next = 0;
    for (std::size_t i = 0; i < design.Variables.size(); ++i) {
        const std::size_t first = next;
        while (next < design.Equations.size() && design.Equations[next].Variable == static_cast<int>(i))
            text += SymbolLine(design.Variables[i], &design.Equations[next++]);
        if (next == first) text += SymbolLine(design.Variables[i], nullptr);
    }
    for (const Field& field : design.Fields)
        text += Padded("", 3) + Padded(field.Name, 31) + Padded("", 4) + Padded("-", 4) + "field\r\n";
    return text;
}

}  // namespace

std::string DocumentText(const Design& design, const Options& options, const Fitted* fitted) {
    std::string text = Heading("Document");
    for (std::size_t i = 0; i < headerWords.size(); ++i)
        if (design.Head.Given[i])
            text += Padded(std::string(headerWords[i].Name), 10) + design.Head.Texts[i] + "\r\n";
    text += Padded("Compiled", 10) + "for " + design.Device +
            (fitted != nullptr && !fitted->Result.Mode.empty() ? ", mode " + fitted->Result.Mode : "") +
            "\r\n";
    for (const Variable& variable : design.Variables) text += BuiltText(variable);
    if (options.Equations) {
        text += Heading("Expanded Product Terms");
        for (const Field& field : design.Fields) text += FieldText(design, field);
        for (const Equation& equation : design.Equations) text += EquationText(design, equation);
    }
    text += Heading("Symbol Table") + SymbolTable(design);
    if (fitted == nullptr) return text;
    if (fitted->Complex) return text + Heading("Fitting Report") + ComplexReport(*fitted->Complex);
    if (options.Fuse) text += Heading("Fuse Plot") + fit::FusePlot(fitted->Device, fitted->Result);
    return text + Heading("Chip Diagram") + fit::ChipDiagram(fitted->Device, fitted->Input, fitted->Result);
}

}  // namespace front
