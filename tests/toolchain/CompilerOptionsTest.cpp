#include "toolchain/CompilerOptions.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"

namespace {

using toolchain::CompilerOptions;

CompilerOptions Parsed(const std::string& flags, CompilerOptions options = {}) {
    toolchain::ParseCompilerFlags(flags, options);
    return options;
}

TEST(CompilerOptions, ParserAndWriter) {
    const std::pair<const char*, const char*> cases[] = {
        {"jasxlbm4", "jxalbm4s"},  // the table's order
        {"", "m0"},                // the record starts at zero
        {"m2m3", "m3"},
        {"m9", "m9"},  // kept until the user chooses a button
        {"zxzq", "zxzqm0"},
        {"zmj", "jzqm0"},  // any other letter behind the z is swallowed
        {"z", "zqm0"},
        {"kbkdkskx", "xbm0ds"},  // the second letters alone
        {"J a?\xC3\xA9-n", "am0n"},
        {"hifeptcgwo", "hifepctm0gwo"},
    };
    for (const auto& [flags, written] : cases)
        EXPECT_EQ(toolchain::WriteCompilerFlags(Parsed(flags)), written) << flags;
    for (const char* flags : {"m", "jm", "mx", "m-1", "m "})
        EXPECT_EQ(doubles::ErrorOf([&] { Parsed(flags); }), 13) << flags;
}

TEST(CompilerOptions, WhatIsOnIsWrittenAndWhatIsGreyedIsNot) {
    for (const auto& row : toolchain::CompilerOptionTable()) {
        CompilerOptions one;
        one.*row.Field = 1;
        const std::size_t length = toolchain::WriteCompilerFlags(one).size();
        EXPECT_EQ(length, row.Token == "m" ? 2 : 2 + row.Token.size()) << row.Token;
    }
    for (std::int16_t value = 1; value <= 2; ++value) {
        CompilerOptions options;
        for (const auto& row : toolchain::CompilerOptionTable()) options.*row.Field = value;
        EXPECT_EQ(toolchain::WriteCompilerFlags(options),
                  value == 1 ? "jhifxalepbctzxzqm1kbkdkskxgdswon" : "m2");
    }
}

}  // namespace
