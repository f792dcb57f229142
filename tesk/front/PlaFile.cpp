#include <algorithm>
#include <map>

#include "front/ComplexName.h"
#include "front/Limits.h"
#include "front/Outputs.h"
#include "model/Jedec.h"

namespace front {

namespace {

// The columns of the whole design: the signals that any equation uses.
std::vector<int> UsedSignals(const Design& design) {
    std::vector<int> used;
    for (const Equation& equation : design.Equations)
        used.insert(used.end(), equation.Inputs.begin(), equation.Inputs.end());
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    return used;
}

class Rows {
  public:
    Rows(const std::vector<int>& columns, std::size_t outputs) : columns_(columns), outputs_(outputs) {}

    void Add(const Equation& equation, const logic::Cover& cover, std::size_t output, char mark) {
        for (std::size_t i = 0; i < cover.Size(); ++i) {
            std::string inputs(columns_.size(), '-');
            for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
                const auto column =
                    std::lower_bound(columns_.begin(), columns_.end(), equation.Inputs[input]);
                inputs[static_cast<std::size_t>(column - columns_.begin())] = negated ? '0' : '1';
            }
            const auto [place, fresh] = index_.try_emplace(inputs, rows_.size());
            if (fresh) rows_.push_back({inputs, std::string(outputs_, '0')});
            rows_[place->second].second[output] = mark;
        }
    }

    bool TooLarge() const { return rows_.size() * (columns_.size() + outputs_ + 3) > Limits::PlaBytes; }

    std::string Text() const {
        std::string text;
        for (const auto& [inputs, outputs] : rows_) text += inputs + " " + outputs + "\r\n";
        return text;
    }
    std::size_t Size() const { return rows_.size(); }

  private:
    const std::vector<int>& columns_;
    std::size_t outputs_;
    std::map<std::string, std::size_t> index_;
    std::vector<std::pair<std::string, std::string>> rows_;
};

// The fitter of the complex devices reads where names are, or are to be, from comments.
std::string PlacesText(const Design& design) {
    if (!SplitComplex(design.Device)) return {};
    std::string text = "# DEVICE " + design.Device + "\r\n";
    for (const Variable& variable : design.Variables) {
        if (variable.Kind == VariableKind::Intermediate) continue;
        const bool isNode = variable.Kind != VariableKind::Pin;
        const bool isLow = variable.ActiveLow && !isNode;
        text += "# " + model::WritePlaceNote({variable.Number, isNode, isLow, variable.Name}) + "\r\n";
    }
    return text;
}

}  // namespace

std::optional<std::string> PlaText(const Design& design) {
    const std::vector<int> columns = UsedSignals(design);
    Rows rows(columns, design.Equations.size());
    for (std::size_t i = 0; i < design.Equations.size(); ++i) {
        rows.Add(design.Equations[i], design.Equations[i].DontCare, i, '-');
        rows.Add(design.Equations[i], design.Equations[i].On, i, '1');
        if (rows.TooLarge()) return std::nullopt;
    }
    std::string text = "# " + design.Head.Name() + "\r\n" + PlacesText(design);
    text +=
        ".i " + std::to_string(columns.size()) + "\r\n.o " + std::to_string(design.Equations.size()) + "\r\n";
    text += ".ilb";
    for (int signal : columns) text += " " + design.SignalName(signal);
    text += "\r\n.ob";
    for (const Equation& equation : design.Equations) text += " " + design.EquationName(equation);
    text += "\r\n.type fd\r\n.p " + std::to_string(rows.Size()) + "\r\n";
    return text + rows.Text() + ".e\r\n";
}

}  // namespace front
