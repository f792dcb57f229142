#include "zrx/Library.h"

// Lists the solutions of the last search.
extern "C" std::int32_t zrxlist(base::ZrxRecord* record) {
    return zrx::Run(record, [](const zrx::Call& call) {
        zrx::ListSolutions(call);
        return std::size_t{0};
    });
}
