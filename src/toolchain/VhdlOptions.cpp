#include "toolchain/VhdlOptions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "base/Number.h"

namespace toolchain {
namespace {

using O = VhdlOptions;
using enum VhdlKind;
using enum VhdlTab;

constexpr VhdlOption table[] = {
    {"-a", Box, &O::Analyze, Synthesis, "chkAnalyze", "", "Analyze Only",
     "Test vhdl file for syntax. Do not generate pld file", 0},
    {"-h", Box, &O::Pinnodes, Synthesis, "chkPinnodes", "", "Use Pinnodes",
     "Create a hierarchical design. Pins become pinnodes", 0},
    {"-j", Box, &O::Sync, Synthesis, "chkSync", "", "No synchronous Presets or Resets",
     "Registers use asynchronous presets and resets", 0},
    {"-c", Box, &O::Clock, Synthesis, "chkClock", "", "Use Clock Enable", "Allow clock enable on flip flops",
     0},
    {"-r", Box, &O::Force, Synthesis, "chkForce", "", "Force Registers with Presets to use Resets",
     "Changes preset to reset", 0},
    {"-p", Number, &O::Product, Synthesis, "txtProduct", "UpDownProduct", "Maximum Product Terms",
     "Limit the number of product terms for each variable", 16},
    {"-s", Number, &O::And, Synthesis, "txtAnd", "UpDownAnd", "Maximum AND Inputs",
     "Maximum number of AND terms on each variable", 8},
    {"-z", Level, &O::Optimize, Synthesis, "txtOptimize", "UpDownOptimization", "Optimization Level",
     "Set the VHDL compiler optimization level", 0},
    {"-g", Box, &O::CreateLog, Debug, "chkCreate", "", "Create Log File", "Create an error report file", 0},
    {"-v1", Box, &O::Display, Debug, "chkDisplay", "", "Display Register and Macrocell Inference",
     "Display register and pin synthesis information", 0},
    {"-x", Choice, &O::CloseWindow, Debug, "Frame2", "", "Window", "", 1},
};

constexpr char Letter(const VhdlOption& option) { return option.Flag[1]; }

// Kept: two characters unless a blank or "-" comes second, so of a third digit nothing is taken.
std::size_t NumberLength(std::string_view text) {
    return text.size() > 1 && (text[1] == ' ' || text[1] == '-') ? 1 : 2;
}

// Kept: a typed level that is none of the three stays.
std::string StepLevel(const std::string& text, std::int32_t value, int step) {
    constexpr std::int32_t levels[] = {0, 3, 5};
    const auto* level = std::find(std::begin(levels), std::end(levels), value);
    if (level == std::end(levels)) return text;
    const std::ptrdiff_t next = std::distance(std::begin(levels), level) + step;
    return std::to_string(levels[std::clamp<std::ptrdiff_t>(next, 0, std::ssize(levels) - 1)]);
}

}  // namespace

std::span<const VhdlOption> VhdlOptionTable() { return table; }

void ParseVhdlFlags(std::string_view flags, VhdlOptions& options) {
    for (const VhdlOption& option : table) {
        if (option.Kind != Box) options.*option.Field = option.Start;
    }
    while (!flags.empty()) {
        const auto option = std::find_if(std::begin(table), std::end(table),
                                         [&](const VhdlOption& row) { return Letter(row) == flags.front(); });
        flags.remove_prefix(1);
        if (option == std::end(table)) continue;
        std::size_t length = option->Flag.size() - 2;  // what follows the letter is stepped over unseen
        if (option->Kind == Box) {
            options.*option->Field = 1;
        } else {
            length = option->Kind == Number ? NumberLength(flags) : 1;
            options.*option->Field = base::TextToInt16(flags.substr(0, length));
        }
        flags.remove_prefix(std::min(length, flags.size()));
    }
}

std::string WriteVhdlFlags(const VhdlOptions& options) {
    std::string flags;
    for (const VhdlOption& option : table) {
        const std::int16_t value = options.*option.Field;
        if (option.Kind == Box && value != 1) continue;
        flags += option.Flag;
        if (option.Kind != Box) flags += std::to_string(value);
    }
    return flags;
}

std::string StepVhdlNumber(VhdlKind kind, const std::string& text, int step) {
    constexpr std::int32_t least = 2;  // of the arrows; what is typed may be less
    const std::int32_t value = base::TextToInt32(text);
    if (kind == Level) return StepLevel(text, value, step);
    if (step < 0 && value <= least) return text;
    return std::to_string(std::int64_t{value} + step);
}

}  // namespace toolchain
