#include "kernel/CompilerSteps.h"

#include "kernel/Stages.h"

namespace kernel {

bool RunCompiler(front::Run& run) {
    return TeskxStage(&run) != 0 && TeskaStage(&run) != 0 && TeskbStage(&run) != 0 && TeskmStage(&run) != 0 &&
           TeskcStage(&run) != 0;
}

}  // namespace kernel
