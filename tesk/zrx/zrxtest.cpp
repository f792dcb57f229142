#include "zrx/Library.h"

// Searches for partitions of the record's design. The result is their number.
extern "C" std::int32_t zrxtest(base::ZrxRecord* record) { return zrx::Run(record, zrx::FindSolutions); }
