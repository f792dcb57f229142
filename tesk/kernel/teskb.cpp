#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

int TeskbStage(front::Run* run) {
    return kernel::Guarded(run->Said, "build", [&] { return front::BuildStage(*run); }) ? 1 : 0;
}
