#pragma once

#include <exception>

#include "kernel/Stages.h"

namespace kernel {

// Runs a stage; what it could not foresee (memory above all) becomes an error of the run.
template <typename AnyRun, typename Stage>
int Guarded(AnyRun& run, Stage stage) {
    try {
        return stage() ? 1 : 0;
    } catch (const std::exception& failure) {
        run.Said.Add(front::Code::DesignTooLarge, {}, failure.what());
        return 0;
    }
}

}  // namespace kernel
