#include <algorithm>

#include "base/Text.h"
#include "sim/AbsTokens.h"

namespace sim {
namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string OneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return (c >= 0 && c < 32) || c == 127; }, ' ');
    return base::Trim(line);
}

void Add(std::string& text, std::initializer_list<std::string_view> words) {
    const char* separator = "";
    for (const auto word : words) {
        text += separator;
        text += word;
        separator = " ";
    }
}

void AddHeader(std::string& text, const AbsDesign& design) {
    for (const auto& keyword : model::headerWords) {
        const auto it = design.Header.find(std::string(keyword.Name));
        if (it == design.Header.end()) continue;
        Add(text, {"HEADER", keyword.Name, OneLine(it->second)});
        text += lineEnd;
    }
}

void AddNet(std::string& text, const Net& net) {
    Add(text,
        {"NET", net.Name, std::to_string(net.Pin), NetWords.Of(net.Kind), net.ActiveLow ? "LOW" : "HIGH",
         model::RegisterWords.Of(net.Register), std::string_view(&net.PowerUp, 1)});
    text += lineEnd;
}

void AddField(std::string& text, const AbsDesign& design, const Field& field) {
    Add(text, {"FIELD", field.Name});
    for (const auto member : field.Members) text += " " + design.Nets.at(member).Name;
    text += lineEnd;
}

void AddTerm(std::string& text, const AbsDesign& design, const Term& term) {
    text += "TERM";
    for (const auto& literal : term) {
        text += literal.Negated ? " !" : " ";
        text += design.Nets.at(literal.Net).Name;
        if (literal.From == Feedback::Pin) text += ".IO";
        if (literal.From == Feedback::Register) text += ".DQ";
    }
    text += lineEnd;
}

void AddFunction(std::string& text, const AbsDesign& design, const Function& function) {
    Add(text, {"FUNCTION", design.Nets.at(function.Net).Name, model::InputWords.Of(function.To),
               function.Negative ? "NEGATIVE" : "POSITIVE"});
    text += lineEnd;
    for (const auto& term : function.Terms) AddTerm(text, design, term);
}

}  // namespace

std::string WriteAbs(const AbsDesign& design) {
    std::string text = "TESK-ABS 1\r\n";
    AddHeader(text, design);
    Add(text, {"DEVICE", design.Device.empty() ? "virtual" : std::string_view(design.Device),
               std::to_string(design.PinCount)});
    text += lineEnd;
    for (const auto& net : design.Nets) AddNet(text, net);
    for (const auto& field : design.Fields) AddField(text, design, field);
    for (const auto& function : design.Functions) AddFunction(text, design, function);
    text += "END\r\n";
    return text;
}

}  // namespace sim
