#include "kernel/StageGuard.h"

int TeskcStage(front::Run* run) {
    return kernel::Guarded(*run, [&] { return front::WriteStage(*run); });
}
