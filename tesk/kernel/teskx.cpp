#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

int TeskxStage(front::Run* run) {
    return kernel::Guarded(run->Said, "expand", [&] { return front::ExpandStage(*run); }) ? 1 : 0;
}
