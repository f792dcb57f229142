#include "toolchain/RunRecord.h"

#include <algorithm>
#include <cstring>

namespace toolchain {

RunRecord::Bytes RunRecord::ToBytes() const {
    Bytes bytes;
    bytes.fill(' ');
    std::size_t at = 0;
    for (const platform::WindowHandle handle : {hWndStatus, hWndMessages, hWndNotify}) {
        std::memcpy(&bytes[at], &handle, sizeof handle);
        at += sizeof handle;
    }
    for (const std::string* text : {&szProgramDir, &szOptions, &szLibrary, &szDevice, &szDesign, &szReserved1,
                                    &szReserved2, &szProgramPath}) {
        // c_str()'s own NUL is the one behind the text.
        std::memcpy(&bytes[at], text->c_str(), std::min(text->size() + 1, TextSize));
        at += TextSize;
    }
    return bytes;
}

}  // namespace toolchain
