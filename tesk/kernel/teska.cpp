#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

int TeskaStage(front::Run* run) {
    return kernel::Guarded(run->Said, "analyse", [&] { return front::AnalyseStage(*run); }) ? 1 : 0;
}
