#pragma once

#include <cstddef>

// What the compiler takes of a design. More is reported as an error; nothing grows beyond these.
namespace front {

struct Limits {
    static constexpr std::size_t FileBytes = 16u << 20;
    static constexpr std::size_t LineBytes = 2u << 20;       // after replacement too
    static constexpr std::size_t ExpandedBytes = 48u << 20;  // all lines after the preprocessor
    static constexpr std::size_t ExpandedLines = 400'000;
    static constexpr std::size_t IncludeDepth = 16;
    static constexpr std::size_t SourceBytes = 64u << 20;     // of all files read in one run
    static constexpr std::size_t ProcessedLines = 2'000'000;  // repetitions counted each time
    static constexpr std::size_t MacroDepth = 16;             // calls and $REPEATs inside one another
    static constexpr std::size_t RepeatCount = 4096;
    static constexpr std::size_t Replacements = 100'000;  // by $DEFINE in one line
    static constexpr std::size_t Statements = 200'000;
    static constexpr std::size_t Nesting = 128;  // parentheses and "!" inside one another
    static constexpr std::size_t CallDepth = 16;
    static constexpr std::size_t NameLength = 31;
    static constexpr std::size_t ListMembers = 256;
    static constexpr std::size_t ConstantDigits = 256;   // binary digits
    static constexpr std::size_t Nodes = 4'000'000;      // of all expressions together
    static constexpr std::size_t Terms = 32768;          // product terms of one equation
    static constexpr std::size_t Product = 8192;         // terms that multiplying out may give
    static constexpr std::size_t Literals = 20'000'000;  // of all product terms together
    static constexpr std::size_t TermWork = 1u << 27;    // comparisons of terms, whole design
    static constexpr std::size_t SharedOutputs = 256;    // of one group with shared terms, else each alone
    static constexpr std::size_t SharedTerms = 8192;
    static constexpr std::size_t PlaBytes = 64u << 20;
    static constexpr std::size_t Errors = 100;
};

}  // namespace front
