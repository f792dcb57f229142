#include "kernel/StageGuard.h"

int TeskxStage(front::Run* run) {
    return kernel::Guarded(*run, [&] { return front::ExpandStage(*run); });
}
