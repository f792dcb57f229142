#include "kernel/StageGuard.h"

int TeskbStage(front::Run* run) {
    return kernel::Guarded(*run, [&] { return front::BuildStage(*run); });
}
