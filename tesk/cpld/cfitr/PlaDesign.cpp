#include "PlaDesign.h"

#include <algorithm>
#include <optional>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "logic/Pla.h"
#include "model/Jedec.h"

namespace {

using front::Extension;

[[noreturn]] void Refuse(const std::string& why) { throw base::RunTimeError(base::errTypeMismatch, why); }

class Reader {
  public:
    explicit Reader(std::string_view text) : pla_(logic::ReadPla(text)) {
        if (pla_.OutputNames.empty() || (pla_.InputNames.empty() && pla_.On.Inputs() > 0))
            Refuse("it has no names, .ilb and .ob");
        ReadComments(text);
    }

    front::Design Run() {
        for (const std::string& name : pla_.InputNames) {
            const auto [variable, extension] = Split(name);
            if (extension != Extension::None && extension != Extension::IO) Refuse(name + " as an input");
            design_.Signals.push_back({variable, extension == Extension::IO});
        }
        for (std::size_t i = 0; i < pla_.OutputNames.size(); ++i) AddEquation(static_cast<int>(i));
        std::sort(design_.Equations.begin(), design_.Equations.end(), [](const auto& a, const auto& b) {
            return std::pair(a.Variable, a.To) < std::pair(b.Variable, b.To);
        });
        return std::move(design_);
    }

  private:
    // The first comment is the design's name.
    void ReadComments(std::string_view text) {
        for (const auto line : base::LineViews(text)) {
            if (!line.starts_with('#')) continue;
            const auto comment = base::TrimView(line.substr(1));
            const auto words = base::Words(comment);
            if (words.size() == 2 && words[0] == "DEVICE") {
                design_.Device = base::Upper(words[1]);
            } else if (const auto note = model::ReadPlaceNote(comment)) {
                auto& variable = design_.Variables[static_cast<std::size_t>(IndexOf(note->Name))];
                variable.Kind = note->Node ? front::VariableKind::PinNode : front::VariableKind::Pin;
                variable.Number = note->Place;
                variable.ActiveLow = note->Low;
            } else if (!design_.Head.Given[0]) {
                design_.Head.Texts[0] = comment;
                design_.Head.Given[0] = true;
            }
        }
    }

    int IndexOf(std::string_view name) {
        auto& all = design_.Variables;
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const auto& variable) { return variable.Name == name; });
        const auto index = static_cast<int>(found - all.begin());
        if (found != all.end()) return index;
        auto& variable = all.emplace_back();
        variable.Name = name;
        variable.Kind = front::VariableKind::Pin;
        return index;
    }

    std::pair<int, Extension> Split(std::string_view name) {
        const auto dot = name.find('.');
        const auto index = IndexOf(name.substr(0, dot));
        if (dot == name.npos) return {index, Extension::None};
        const auto extension = front::ExtensionOf(name.substr(dot + 1));
        if (!extension) Refuse("unknown extension: " + std::string(name));
        return {index, *extension};
    }

    void AddEquation(int output) {
        const std::string& name = pla_.OutputNames[static_cast<std::size_t>(output)];
        const auto [variable, to] = Split(name);
        if (to == Extension::IO || to == Extension::DQ) Refuse(name + " as an output");
        const bool isTwice = std::any_of(
            design_.Equations.begin(), design_.Equations.end(),
            [&, v = variable, e = to](const auto& other) { return other.Variable == v && other.To == e; });
        if (isTwice) Refuse("two outputs " + name);
        auto& owner = design_.Variables[static_cast<std::size_t>(variable)];
        if (front::IsRegisterInput(to)) {
            const auto kind = to == Extension::K ? Extension::J : to == Extension::S ? Extension::R : to;
            if (owner.Register != Extension::None && owner.Register != kind)
                Refuse("two kinds of register: " + name);
            owner.Register = kind;
        }
        owner.Assigned = owner.Assigned || to == Extension::None || front::IsRegisterInput(to);
        front::Equation equation;
        equation.Variable = variable;
        equation.To = to;
        for (int i = 0; i < pla_.On.Inputs(); ++i) equation.Inputs.push_back(i);
        equation.On = logic::OutputOf(pla_.On, output);
        equation.DontCare = logic::OutputOf(pla_.DontCare, output);
        design_.Equations.push_back(std::move(equation));
    }

    logic::Pla pla_;
    front::Design design_;
};

}  // namespace

front::Design ReadPlaDesign(std::string_view text) { return Reader(text).Run(); }
