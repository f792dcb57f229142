#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

int TeskmStage(front::Run* run) {
    return kernel::Guarded(run->Said, "minimise", [&] { return front::MinimiseStage(*run); }) ? 1 : 0;
}
