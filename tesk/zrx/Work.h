#pragma once

#include <functional>
#include <memory>
#include <string>

#include "front/Files.h"
#include "zrx/Database.h"
#include "zrx/Document.h"
#include "zrx/Options.h"
#include "zrx/SolutionFile.h"

namespace zrx {

// One call of a library of the partitioner.
struct Call {
    front::Files& Disk;
    std::string Design;      // path without extension
    std::string DeviceFile;  // candidate devices, or the chosen solution
    std::string Directory;   // of zrxlib.db, with its final separator
    zrx::Options Options;
    std::function<void(const std::string& line)> Say;   // running messages
    std::function<void(const std::string& line)> List;  // entries of the list
    GoOn Proceed;                                       // false when the time is over
};

// Each tells in a line why it did nothing.
std::size_t FindSolutions(const Call& call);  // how many, kept beside the design
void ListSolutions(const Call& call);
void WriteSolution(const Call& call);

}  // namespace zrx
