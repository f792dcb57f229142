#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

int TeskcStage(front::Run* run) {
    return kernel::Guarded(run->Said, "fit and write", [&] { return front::WriteStage(*run); }) ? 1 : 0;
}
