#include "front/Build.h"
#include "front/Run.h"

namespace front {

bool BuildStage(Run& run) {
    run.Said.Status("Building");
    Build(run.Analysis, run.Options, run.Said);
    std::size_t terms = 0;
    for (const Equation& equation : run.Result().Equations) terms += equation.On.Size();
    run.Said.Info(std::to_string(terms) + " product terms");
    return run.Ok();
}

}  // namespace front
