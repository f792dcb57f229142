#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "net/MessageTable.h"

// The VHDL front end behind its command line.
namespace net {

// What the flags behind the source's name say. Unknown ones are passed over.
struct Flags {
    bool Analyze = false;      // -a
    bool Pinnodes = false;     // -h
    bool NoSync = false;       // -j
    bool ClockEnable = false;  // -c
    bool ResetsOnly = false;   // -r
    int Product = 16;          // -p
    int And = 8;               // -s
    int Optimize = 0;          // -z
    bool CreateLog = false;    // -g
    bool Display = false;      // -v1
    int CloseWindow = 1;       // -x; this front end has no window

    static Flags Parse(std::string_view text);
};

struct Call {
    std::string WorkDir, Library;
    std::string Device = "&";  // "&" or empty: the pin file names it, or it is "virtual"
    std::string Source;        // as it was named, with its extension
    net::Flags Flags;
    std::string Top;   // empty: told by the pin file or by the source
    int Seconds = 60;  // for each call of a tool
};

// WORKDIR LIBRARY DEVICE SOURCE.VHD-flags, or SOURCE.VHD-flags alone, and before them the options of a
// shell's user. Names may hold blanks: a name that begins at the root of a drive or of the host goes on to
// the next one that does. Nothing if the call is not understood.
std::optional<Call> ParseCall(const std::vector<std::string>& arguments);

// Compiles a design for a device as the command line compiler does: its path without extension, the device,
// the letters and the library. Gives the lines of the list; false if there were errors.
using Compiler =
    std::function<bool(const std::string& base, const std::string& device, const std::string& letters,
                       const std::string& library, std::vector<std::string>& lines)>;

// Does what the call says; `analyzes`: as with -a. Gives the lines of the list, which stand in the source's
// .VLS too. False if there were errors.
bool RunFrontEnd(const Call& call, bool analyzes, const Compiler& compile, std::vector<std::string>& lines);

}  // namespace net
