#include "convert/Equations.h"

#include <algorithm>
#include <array>

#include "convert/Failure.h"

namespace convert {
namespace {

constexpr std::array<std::string_view, 8> RegisterInputs{"D", "T", "J", "K", "S", "R", "L", "LE"};
constexpr std::array<std::string_view, 7> OtherInputs{"CK", "CE", "AR", "AP", "SR", "SP", "OE"};

}  // namespace

bool IsExtension(std::string_view text) {
    return std::find(RegisterInputs.begin(), RegisterInputs.end(), text) != RegisterInputs.end() ||
           std::find(OtherInputs.begin(), OtherInputs.end(), text) != OtherInputs.end();
}

std::string EquationReader::Declare(std::string_view name) {
    const std::string key = base::Upper(name);
    if (known_.contains(key)) FailBehind(Shown(name) + " is declared twice");
    return known_[key] = names_.Of(key, name);
}

void EquationReader::DeclarePin(std::string_view name, int number, bool activeLow) {
    if (number > 0 && !numbers_.insert(number).second)
        FailBehind("pin " + std::to_string(number) + " is declared twice");
    file_.Pins.push_back({Declare(name), number, activeLow});
}

void EquationReader::DeclareNode(std::string_view name) { file_.Nodes.push_back(Declare(name)); }

std::string EquationReader::KnownName(std::string_view name) const {
    const auto at = known_.find(base::Upper(name));
    if (at == known_.end()) FailBehind(Shown(name) + " is not declared");
    return at->second;
}

void EquationReader::Assign(const std::string& name, const std::string& extension, bool complement,
                            const Formula& value, int line) {
    const std::string target = name + (extension.empty() ? "" : "." + extension);
    if (!assigned_.emplace(name, extension).second) Fail(line, "a second equation for " + Shown(target));
    file_.AddEquation((complement ? "!" : "") + target, value);
}

bool EquationReader::HasEquation(const std::string& name) const {
    const auto at = assigned_.lower_bound({name, {}});
    return at != assigned_.end() && at->first == name;
}

bool EquationReader::IsRegister(const std::string& name) const {
    return std::any_of(RegisterInputs.begin(), RegisterInputs.end(),
                       [&](std::string_view input) { return IsAssigned(name, std::string(input)); });
}

void EquationReader::Finish() const {
    if (assigned_.empty()) FailHere("there are no equations");
}

}  // namespace convert
