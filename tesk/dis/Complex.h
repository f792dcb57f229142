#pragma once

#include <optional>

#include "convert/PldFile.h"
#include "cpld/ReadBack.h"
#include "dis/Disassembly.h"

// Source out of the fuse maps of complex devices.
namespace dis {

struct ComplexMap {
    cpld::Device Device;
    std::string Package;
    cpld::Configuration From;
};

// The complex device that a file is for, and what its fuses say. Nothing if it is another device's, or, with
// messages, if they say nothing that is known.
std::optional<ComplexMap> ReadComplexMap(const proof::JedecFile& file, const Request& request,
                                         std::vector<Message>& messages);

// Completes a design whose header is given. Names are those of pins and macrocells; with `places` nodes are
// at their macrocells.
std::string ComplexText(convert::PldFile file, const ComplexMap& map, const PinNames& names, bool places);

}  // namespace dis
