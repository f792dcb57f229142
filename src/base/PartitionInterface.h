#pragma once

#include "base/ToolInterface.h"

// What the desktop and the partitioner's libraries agree on. Lines go by `msgAddString` in the second
// parameter.
namespace base {

// The single argument of zrxtest, zrxlist and zrxpld: 1,032 bytes, no padding, handles in the machine's byte
// order, texts as SetText and TextOf have them.
struct ZrxRecord {
    std::uint32_t hWndMessages;   // running messages
    std::uint32_t hWndSolutions;  // the list of solutions; a line's last character is not shown
    RunRecord::Text szOptions;
    RunRecord::Text szDesign;      // the design's path without extension
    RunRecord::Text szDeviceFile;  // candidate devices, or the chosen solution
    RunRecord::Text szDirectory;   // the partitioner's folder with its final backslash

    std::span<std::uint8_t> Bytes() { return {reinterpret_cast<std::uint8_t*>(this), sizeof *this}; }
};
static_assert(sizeof(ZrxRecord) == 1032 && offsetof(ZrxRecord, szDirectory) == 776);

}  // namespace base
