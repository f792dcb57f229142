#include <algorithm>
#include <array>
#include <utility>

#include "front/Netlist.h"
#include "front/Outputs.h"

namespace front {

namespace {

// Header words of the two languages; this one has no other place for the rest.
constexpr std::array<std::pair<std::string_view, std::size_t>, 6> kHeader{
    {{"TITLE", 0}, {"PATTERN", 1}, {"REVISION", 3}, {"AUTHOR", 4}, {"COMPANY", 5}, {"DATE", 2}}};

struct Form {
    Extension To;
    std::string_view Suffix;
    std::string_view Assign;
};
constexpr std::array kForms{
    Form{Extension::None, "", "="},    Form{Extension::D, "", ":="},      Form{Extension::T, ".T", ":="},
    Form{Extension::J, ".J", ":="},    Form{Extension::K, ".K", ":="},    Form{Extension::S, ".S", ":="},
    Form{Extension::R, ".R", ":="},    Form{Extension::L, "", "*="},      Form{Extension::CK, ".CLKF", "="},
    Form{Extension::LE, ".CLKF", "="}, Form{Extension::AR, ".RSTF", "="}, Form{Extension::SR, ".RSTF", "="},
    Form{Extension::AP, ".SETF", "="}, Form{Extension::SP, ".SETF", "="}, Form{Extension::OE, ".TRST", "="},
    Form{Extension::CE, ".CE", "="},
};

const Form& FormOf(Extension to) {
    for (const Form& form : kForms)
        if (form.To == to) return form;
    return kForms.front();
}

std::string PinLine(const Variable& variable) {
    const bool pin = variable.Kind == VariableKind::Pin;
    const std::string number = pin && variable.Number > 0 ? std::to_string(variable.Number) : "?";
    const bool registered = variable.Register != Extension::None;
    std::string_view storage = registered ? "REGISTERED" : "COMBINATORIAL";
    if (variable.Register == Extension::L) storage = "LATCHED";
    return (pin ? "PIN  " : "NODE ") + number + "  " + (variable.ActiveLow ? "/" : "") + variable.Name +
           "  " + std::string(storage) + "\r\n";
}

std::string EquationText(const Design& design, const Equation& equation) {
    const Form& form = FormOf(equation.To);
    const logic::Cover& cover = equation.Chosen();
    std::string text = (equation.Inverted ? "/" : "") + design.Of(equation).Name + std::string(form.Suffix) +
                       " " + std::string(form.Assign);
    if (cover.Empty()) text += " GND";
    for (std::size_t i = 0; i < cover.Size(); ++i) {
        std::string term;
        for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
            if (!term.empty()) term += " * ";
            const Signal& signal = design.Signals[static_cast<std::size_t>(equation.Inputs[input])];
            term += (negated ? "/" : "") + design.Of(signal).Name;
        }
        text += (i == 0 ? " " : "\r\n    + ") + (term.empty() ? "VCC" : term);
    }
    return text + "\r\n";
}

bool Has(const Design& design, int variable, Extension to) {
    return std::any_of(design.Equations.begin(), design.Equations.end(), [&](const Equation& equation) {
        return equation.Variable == variable && equation.To == to;
    });
}

}  // namespace

std::string PdsObstacle(const Design& design) {
    for (const Equation& equation : design.Equations) {
        const bool reset = equation.To == Extension::AR && Has(design, equation.Variable, Extension::SR);
        const bool preset = equation.To == Extension::AP && Has(design, equation.Variable, Extension::SP);
        if (reset || preset)
            return "it has one " + std::string(reset ? "reset for .AR and .SR" : "preset for .AP and .SP") +
                   " of \"" + design.Of(equation).Name + "\"";
        for (int signal : equation.Inputs)
            if (design.Signals[static_cast<std::size_t>(signal)].Pin)
                return "it has no way to tell \"" + design.SignalName(signal) + "\" from the register";
    }
    return {};
}

std::string PdsText(const Design& design) {
    std::string text;
    for (const auto& [word, place] : kHeader)
        text += std::string(word) + "  " + design.Head.Texts[place] + "\r\n";
    text += "\r\nCHIP  " + IdentifierOf(design.Head.Name()) + "  " + design.Device + "\r\n\r\n";
    for (const Variable& variable : design.Variables)
        if (variable.Kind != VariableKind::Intermediate) text += PinLine(variable);
    text += "\r\nEQUATIONS\r\n\r\n";
    for (const Equation& equation : design.Equations) text += EquationText(design, equation);
    return text;
}

}  // namespace front
