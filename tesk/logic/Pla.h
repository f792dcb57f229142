#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "logic/Minimize.h"

// The Berkeley PLA format: .i .o .ilb .ob .p .type (f, fd, fr, fdr) .e/.end, comments from "#" to the line's
// end. In a row 0 1 - 2 ~ stand for inputs, 0 1 - 2 4 ~ for outputs; blanks and "|" between them mean
// nothing, a row may go over several lines. Text before .i and .o that can be no row is a title and skipped.
namespace logic {

struct Pla {
    // Largest file taken, so that a lying header can't ask for memory.
    static constexpr int maxInputs = 1024;
    static constexpr int maxOutputs = 1024;
    static constexpr std::size_t maxWords = std::size_t{1} << 19;  // of all cubes together

    std::string Type = "fd";
    Cover On, DontCare,
        Off;  // Off only with types fr and fdr; what is in none of them is then don't care (fr)
    std::vector<std::string> InputNames, OutputNames;  // one for each; empty if the list's length is wrong
};

// Raises error 13 (type mismatch) with "line N: ..." where the text is no such file.
Pla ReadPla(std::string_view text);

// The cover as type f with the names.
std::string WritePla(const Cover& cover, const std::vector<std::string>& inputNames,
                     const std::vector<std::string>& outputNames);

// Raises error 5 (invalid call) if an on-set and an off-set are given that meet.
MinimizeResult Minimize(const Pla& pla, Level level, const Options& options = {});

}  // namespace logic
