#include "cpld/Fitter.h"

#include <gtest/gtest.h>

#include "Designs.h"
#include "Support.h"

namespace {

using test::Devices;

std::string Text(const cpld::Fit& fit) {
    std::string text;
    for (const auto& message : fit.Messages) text += message.Text + "\n";
    return text;
}

TEST(CpldFitter, ChipsDoWhatRandomDesignsSay) {
    std::mt19937 random(7);
    std::size_t fitted = 0;
    for (int i = 0; i < 60; ++i) {
        const auto& device = Devices()[static_cast<std::size_t>(i % 2)];
        const auto functions = 4 + random() % (i % 2 == 0 ? 10 : 22);
        const auto design = test::RandomDesign(random, {functions, 8, 3, 3, 0, false});
        const auto fit = cpld::FitDesign(device, {}, design, {});
        if (!fit.Ok()) {
            std::printf("%d: %zu: %s", i, functions, Text(fit).c_str());
            continue;
        }
        ++fitted;
        ASSERT_EQ(test::Compare(device, design, fit, random), "") << i;
    }
    EXPECT_GT(fitted, 50u);
}

}  // namespace
