#include <gtest/gtest.h>

#include <algorithm>

#include "partitioner/PartitionOptions.h"
#include "support/Doubles.h"

namespace partitioner {
namespace {

std::string Rewritten(const std::string& flags) {
    PartitionOptions options;
    ParsePartitionFlags(flags, options);
    PartitionParts parts;
    for (const auto tab : {PartitionTab::Priority, PartitionTab::Files, PartitionTab::Fitting})
        parts.Make(tab, options);
    return parts.Flags();
}

TEST(PartitionOptions, ParserAndWriter) {
    const std::pair<const char*, const char*> cases[] = {
        // nothing written: error 13
        {"-nfProojTsa1N1c2p3u100m005l025t00:00:55", "a1sm005l025u100t00:00:55roc2p3N1"},
        {"hm012l001u030t00:00:10c1p2N3", "hm012l001u030t00:00:55c1p2N3"},  // the time is not read
        {"a2a1m1234l -5u 7 rdrdc1p2N3", "a1m123l0-5u007t00:00:55rdc1p2N3"},
        {"012a2m3l4u5", ""},                    // "3l4" is no number
        {"7", "hm007l007u007t00:00:55c2p3N1"},  // a letter that lacks: the first characters
        {"roc2p3N1", ""},
    };
    for (const auto& [flags, expected] : cases) {
        std::string written;
        EXPECT_EQ(doubles::ErrorOf([&] { written = Rewritten(flags); }), *expected == '\0' ? 13 : 0) << flags;
        EXPECT_EQ(written, expected) << flags;
    }
}

TEST(PartitionOptions, ArrowsOfNumbers) {
    const struct {
        std::size_t Row;
        const char* Typed;
        const char* Down;
        const char* Up;
    } cases[] = {{0, "1", "1", "1"},     {0, "2", "1", "2"},    {0, "10", "9", "10"},
                 {0, "011", "10", "12"}, {1, "1", "1", "2"},    {1, "50", "49", "50"},
                 {1, "-3", "-3", "-2"},  {2, "30", "30", "31"}, {2, "100", "99", "100"},
                 {3, "60", "59", "60"},  {3, "55", "54", "56"}};
    for (const auto& c : cases) {
        const PartitionNumber& number = NumberTable()[c.Row];
        EXPECT_EQ(StepPartitionNumber(number, c.Typed, -1), c.Down) << number.Control << " " << c.Typed;
        EXPECT_EQ(StepPartitionNumber(number, c.Typed, 1), c.Up) << number.Control << " " << c.Typed;
    }
    EXPECT_THROW(StepPartitionNumber(NumberTable()[0], "many", 1), base::RunTimeError);
}

// From every permutation, each arrow moves its field by one within 1 to 3 and leaves a permutation.
TEST(PartitionOptions, ArrowsOfPrioritiesKeepAPermutation) {
    std::string start = "123";
    do {
        for (std::size_t row = 0; row < 3; ++row) {
            for (const int step : {-1, 1}) {
                PartitionOptions options;
                std::string* const fields[] = {&options.Cost, &options.Power, &options.Devices};
                for (std::size_t i = 0; i < 3; ++i) *fields[i] = start[i];
                StepPriority(options, row, step);
                EXPECT_EQ(fields[row]->front(), std::clamp(start[row] + step, '1' + 0, '3' + 0)) << start;
                std::string after = options.Cost + options.Power + options.Devices;
                std::sort(after.begin(), after.end());
                EXPECT_EQ(after, "123") << start << row << step;
            }
        }
    } while (std::next_permutation(start.begin(), start.end()));
    PartitionOptions typed;
    typed.Cost = typed.Devices = "2";
    StepPriority(typed, 1, -1);  // the power at 3 takes the devices first
    EXPECT_EQ(typed.Cost + typed.Power + typed.Devices, "223");
}

}  // namespace
}  // namespace partitioner
