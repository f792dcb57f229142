#include "kernel/StageGuard.h"

int TeskaStage(front::Run* run) {
    return kernel::Guarded(*run, [&] { return front::AnalyseStage(*run); });
}
