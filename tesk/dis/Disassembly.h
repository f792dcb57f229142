#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dis/Names.h"
#include "proof/JedecFile.h"

// Source out of a fuse map.
namespace dis {

struct Request {
    std::string Device;  // mnemonic; empty: as the file tells
    std::string Name;    // of the design, where the file tells none
    PinNames Names;
    bool Minimize = false;
    std::string ComplexLibrary{};  // text of the library of complex devices
};

struct Disassembly {
    std::string Pld;  // empty with errors
    std::string Si;   // empty if the file has no vectors
    std::string Device;
    std::vector<Message> Messages;

    bool Ok() const { return !model::HasErrors(Messages); }
};

// The text compiles to the fuses of the map in each row that has an effect, and in those outside of the rows;
// with `Minimize` it is proved to do the same. Both are tried on the text; a warning tells where it fails. To
// disassemble what was compiled from it gives the same text. `library` is the text of a device library.
Disassembly Disassemble(const proof::JedecFile& file, std::string_view library, const Request& request);

}  // namespace dis
