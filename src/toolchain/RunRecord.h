#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/ToolLibraries.h"

namespace toolchain {

// The single argument of TeskkVB and VornkVB.
struct RunRecord {
    static constexpr std::size_t TextSize = 256;  // bytes of a text field
    static constexpr std::size_t Size = 2060;     // bytes: three handles and eight texts
    using Bytes = std::array<std::uint8_t, Size>;

    platform::WindowHandle hWndStatus = 0;
    platform::WindowHandle hWndMessages = 0;
    platform::WindowHandle hWndNotify = 0;
    std::string szProgramDir;
    std::string szOptions;
    std::string szLibrary;
    std::string szDevice;
    std::string szDesign;
    std::string szReserved1;
    std::string szReserved2;
    std::string szProgramPath;

    // The wire format, in the order of the fields: handles in the machine's byte order; each text with one
    // NUL behind it, filled up with blanks. A text of TextSize bytes or more is cut there and has no NUL.
    Bytes ToBytes() const;
};

}  // namespace toolchain
