#include "kernel/StageGuard.h"

int TeskmStage(front::Run* run) {
    return kernel::Guarded(*run, [&] { return front::MinimiseStage(*run); });
}
