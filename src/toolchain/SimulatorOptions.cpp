#include "toolchain/SimulatorOptions.h"

namespace toolchain {
namespace {

using O = SimulatorOptions;

constexpr SimulatorOption table[] = {
    {'l', &O::Listing, "chkListing", "Listing File", "Create listing file with simulation results"},
    {'j', &O::Append, "chkAppend", "Append Vectors", "Append simulation results to jedec file"},
    // The run driver reads this letter too: the result goes to the waveform viewer.
    {'d', &O::Display, "chkDisplay", "Display Results", "Show simulation reults after compilation"},
};

}  // namespace

std::span<const SimulatorOption> SimulatorOptionTable() { return table; }

SimulatorOptions ParseSimulatorFlags(std::string_view flags) {
    SimulatorOptions options;
    for (const SimulatorOption& option : table) {
        if (flags.find(option.Token) != flags.npos) options.*option.Field = 1;
    }
    return options;
}

std::string WriteSimulatorFlags(const SimulatorOptions& options) {
    std::string flags;
    for (const SimulatorOption& option : table) {
        if (options.*option.Field == 1) flags += option.Token;
    }
    return flags;
}

}  // namespace toolchain
