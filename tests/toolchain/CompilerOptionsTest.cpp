#include "toolchain/CompilerOptions.h"

#include <gtest/gtest.h>

#include <random>

#include "base/RunTimeError.h"

namespace {

using toolchain::CompilerOptions;

CompilerOptions Parsed(const std::string& flags, CompilerOptions options = {}) {
    toolchain::ParseCompilerFlags(flags, options);
    return options;
}

std::vector<int> Values(const CompilerOptions& options) {
    std::vector<int> values;
    for (const auto& row : toolchain::CompilerOptionTable()) values.push_back(options.*row.Field);
    return values;
}

TEST(CompilerOptions, ParserAndWriter) {
    const struct {
        const char* Flags;
        const char* Written;
    } cases[] = {
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
    for (const auto& c : cases)
        EXPECT_EQ(toolchain::WriteCompilerFlags(Parsed(c.Flags)), c.Written) << c.Flags;
    for (const char* flags : {"m", "jm", "mx", "m-1", "m "}) {
        try {
            Parsed(flags);
            ADD_FAILURE() << flags;
        } catch (const base::RunTimeError& error) {
            EXPECT_EQ(error.Number(), 13) << flags;
        }
    }
}

TEST(CompilerOptions, WhatIsWrittenReadsBackButForTheKTokens) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        CompilerOptions options;
        for (const auto& row : toolchain::CompilerOptionTable()) {
            options.*row.Field = static_cast<std::int16_t>(random() % 3);  // 2, greyed, does not count
        }
        const CompilerOptions read = Parsed(toolchain::WriteCompilerFlags(options));
        CompilerOptions expected = options;
        const auto takes = [](std::int16_t& field, std::int16_t& k) {
            if (k == 1) field = 1;
            k = 0;
        };
        takes(expected.Pla, expected.Best);
        takes(expected.Deactivate, expected.Demorgan);
        takes(expected.Simulate, expected.Share);
        takes(expected.Equations, expected.Keep);
        for (const auto& row : toolchain::CompilerOptionTable()) {
            const bool greyed = row.Token != "m" && expected.*row.Field == 2;
            if (greyed) expected.*row.Field = 0;
        }
        ASSERT_EQ(Values(read), Values(expected)) << toolchain::WriteCompilerFlags(options);
        ASSERT_TRUE(read.MinimizationSeen);
    }
}

}  // namespace
