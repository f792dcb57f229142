#include "front/Outputs.h"
#include "front/Preprocessor.h"
#include "front/Run.h"

namespace front {

bool ExpandStage(Run& run) {
    run.Said.Status("Expanding");
    run.Said.Info(FileName(run.Output(".PLD")));
    Preprocess(run.Output(".PLD"), run.Disk, run.Said, run.Source);
    if (run.Options.Expanded) run.Write(run.Output(".MX"), ExpandedText(run.Source, run.Said));
    return run.Ok();
}

void WriteList(Run& run) {
    if (run.Options.List) run.WriteUnnoted(run.Output(".LST"), ListText(run.Source, run.Said));
}

}  // namespace front
