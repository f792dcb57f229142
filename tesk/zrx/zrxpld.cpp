#include "zrx/Library.h"

// Writes the chosen solution: a design a chip, and the report.
extern "C" std::int32_t zrxpld(base::ZrxRecord* record) {
    return zrx::Run(record, [](const zrx::Call& call) {
        zrx::WriteSolution(call);
        return std::size_t{0};
    });
}
