#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kernel {

// The single argument of the kernels: 2,060 bytes, no padding. Texts are 8-bit, ended by a NUL and padded
// with blanks; a text that fills its field has no NUL.
struct RunRecord {
    using Text = std::array<char, 256>;
    std::uint32_t hWndStatus;
    std::uint32_t hWndMessages;
    std::uint32_t hWndNotify;
    Text szProgramDir;
    Text szOptions;
    Text szLibrary;
    Text szDevice;
    Text szDesign;  // the design's path without extension
    Text szReserved1;
    Text szReserved2;
    Text szProgramPath;
};
static_assert(sizeof(RunRecord) == 2060 && offsetof(RunRecord, szDesign) == 1036);

// The text up to its NUL, or the whole field without its trailing blanks.
std::string TextOf(const RunRecord::Text& field);
// Cut at 256 bytes.
void SetText(RunRecord::Text& field, std::string_view text);

}  // namespace kernel
