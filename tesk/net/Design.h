#pragma once

#include <map>
#include <string>
#include <vector>

#include "convert/PldFile.h"
#include "net/Blif.h"
#include "net/MessageTable.h"

namespace net {

// Which synchronous resets and presets a device has.
enum class SyncControls {
    None,    // they go into the data
    Shared,  // one for all registers: taken if all have the same and none has another reset
    Each,
};
SyncControls SyncControlsOf(std::string_view device);

struct Wishes {
    std::string Name = {};
    std::string Device = "virtual";
    std::string Origin = {};  // one line for the head of the design
    bool IsVhdl = true;       // how the source writes an index: q(3), else q[3]
    bool PinsAreNodes = false;
    SyncControls Sync = SyncControls::Each;
    std::size_t MaxTerms = 16;
    std::size_t MaxInputs = 8;                          // of a term, for the description
    bool Describe = false;                              // registers and pins in the notes
    std::map<std::string, std::vector<int>> Pins = {};  // by port in lower case, vectors with all bits or one
    std::map<std::string, std::string> SignalNames = {};  // of nets that the synthesis named anew
};

struct Design {
    convert::PldFile File;
    std::map<std::string, std::string> SourceNames;  // by name in the design, where they differ
    std::vector<Message> Notes;
};

// Makes the design of a netlist: ports become pins, registers that a port shows its pin, all else nodes.
// Throws convert::Failure for what has no words in the language.
Design MakeDesign(Netlist netlist, const Wishes& wishes);

}  // namespace net
