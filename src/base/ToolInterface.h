#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// What the desktop and a tool chain's libraries agree on: the record of a run, and the messages that a
// library sends to the windows of its record.
namespace base {

// The single argument of TeskkVB and VornkVB: 2,060 bytes, no padding, handles in the machine's byte order.
struct RunRecord {
    static constexpr std::size_t TextSize = 256;
    using Text = std::array<char, TextSize>;

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

    std::span<std::uint8_t> Bytes() { return {reinterpret_cast<std::uint8_t*>(this), sizeof *this}; }
};
static_assert(sizeof(RunRecord) == 2060 && offsetof(RunRecord, szDesign) == 1036);

RunRecord EmptyRecord();  // without windows, all texts empty
// One NUL behind the text, the rest filled up with blanks. A text of 256 bytes or more is cut there and has
// no NUL.
void SetText(RunRecord::Text& field, std::string_view text);
// The text up to its NUL, or the whole field without its trailing blanks.
std::string TextOf(const RunRecord::Text& field);

enum ToolMessageNumber : std::uint32_t {
    msgStatus = 101,     // first parameter: text, the phase
    msgDropped1 = 102,   // first parameter: text without effect
    msgInfo = 103,       // first parameter: text, a detail
    msgError = 104,      // one more error
    msgWarning = 105,    // one more warning
    msgDropped2 = 106,   // first parameter: text without effect
    msgAddString = 384,  // LB_ADDSTRING for a list (second parameter: the line); a box for frmStatus (both)
    msgResetContent = 388,  // LB_RESETCONTENT: the list becomes empty
};

}  // namespace base
