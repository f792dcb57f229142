#include "front/Build.h"
#include "front/Run.h"

namespace front {

bool MinimiseStage(Run& run) {
    run.Said.Status("Minimising");
    Minimise(run.Result(), run.Options, run.Said);
    std::size_t terms = 0;
    for (const Equation& equation : run.Result().Equations) terms += equation.Chosen().Size();
    if (!run.Ok()) return false;
    run.Said.Add(Code::Reduced, {},
                 std::to_string(terms) + " product terms in " +
                     std::to_string(run.Result().Equations.size()) + " equations");
    return true;
}

}  // namespace front
