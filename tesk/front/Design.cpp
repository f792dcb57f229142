#include "front/Design.h"

namespace front {

std::string Design::SignalName(int signal) const {
    const Signal& entry = Signals[static_cast<std::size_t>(signal)];
    return Of(entry).Name + (entry.Pin ? ".IO" : "");
}

std::string Design::EquationName(const Equation& equation) const {
    std::string name = Of(equation).Name;
    if (equation.To != Extension::None) name += "." + std::string(ExtensionName(equation.To));
    return name;
}

}  // namespace front
