#include "base/Text.h"
#include "front/Parser.h"
#include "front/Run.h"

namespace front {

bool AnalyseStage(Run& run) {
    run.Said.Status("Analysing");
    Parse(run.Source, run.Said, run.Syntax);
    run.Said.Info(std::to_string(run.Syntax.Statements.size()) + " statements");
    const bool inDesign = run.Device.empty() || run.Device == "&";
    run.Result().Device = base::Upper(inDesign ? run.Syntax.Head.Device() : run.Device);
    if (run.Result().Device.empty() || run.Result().Device == "VIRTUAL") run.Result().Device = "virtual";
    Analyse(run.Syntax, run.Options, run.Said, run.Analysis);
    return run.Ok();
}

}  // namespace front
