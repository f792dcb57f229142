#include "sim/AbsFile.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace {

sim::AbsDesign Sample() {
    sim::AbsDesign design;
    design.Header = {{"Name", "Sample one"}, {"Partno", ""}, {"Date", "1/1/99"}};
    design.Device = "G16V8";
    design.PinCount = 20;
    design.Nets = {{"CLK", 1, sim::NetKind::Input, false, sim::RegisterKind::None, '0'},
                   {"Q0", 19, sim::NetKind::Output, true, sim::RegisterKind::D, '1'},
                   {"B", 18, sim::NetKind::Bidirectional, false, sim::RegisterKind::None, 'X'},
                   {"N", 0, sim::NetKind::Node, false, sim::RegisterKind::Latch, '0'}};
    design.Fields = {{"F", {1, 2}}};
    using enum sim::Feedback;
    design.Functions = {{1, sim::Input::D, false, {{{1, Register, true}, {0, Default, false}}, {}}},
                        {1, sim::Input::Ck, false, {{{0, Default, false}}}},
                        {2, sim::Input::Out, true, {{{1, Pin, true}}}},
                        {2, sim::Input::Oe, false, {}}};
    return design;
}

TEST(AbsFile, WhatIsWrittenComesBack) {
    const auto text = sim::WriteAbs(Sample());
    const auto result = sim::ReadAbs(text);
    ASSERT_TRUE(result.Ok()) << result.Messages.Items()[0].Text;
    EXPECT_EQ(result.Design, Sample());
    EXPECT_EQ(base::ReplaceAll(base::ReplaceAll(text, "\r\n", "\n"), "\n", "\r\n"), text);
    EXPECT_EQ(sim::ReadAbs(base::ReplaceAll(text, "\r\n", "\n")).Design, Sample());

    auto multiLine = Sample();
    multiLine.Header["Name"] = "two\r\nlines";
    EXPECT_EQ(sim::ReadAbs(sim::WriteAbs(multiLine)).Design.Header["Name"], "two  lines");
}

TEST(AbsFile, FaultsAreToldWithCodeAndLine) {
    const std::string head = "TESK-ABS 1\nNET A 1 INPUT HIGH NONE 0\nNET Y 2 OUTPUT HIGH NONE 0\n";
    const struct {
        std::string text;
        const char* code;
        int line;
    } cases[] = {
        {"", "0107va", 0},
        {"TESK-ABS 2\nWHAT\n", "0101va", 1},
        {head, "0107va", 3},
        {head + "WHAT\nEND\n", "0102va", 4},
        {head + "TERM A\nEND\n", "0102va", 4},
        {head + "NET B -1 INPUT HIGH NONE 0\nEND\n", "0102va", 4},
        {head + "NET B 3 INPUT HIGH NONE 2\nEND\n", "0102va", 4},
        {head + "NET B 1 INPUT HIGH NONE 0\nEND\n", "0104va", 4},
        {head + "NET A 4 INPUT HIGH NONE 0\nEND\n", "0104va", 4},
        {head + "NET A-B 4 INPUT HIGH NONE 0\nEND\n", "0103va", 4},
        {head + "FIELD A Y\nEND\n", "0104va", 4},
        {head + "FIELD F Q\nEND\n", "0103va", 4},
        {head + "FUNCTION Y OUT POSITIVE\nTERM A.DQ\nEND\n", "0103va", 5},
        {head + "FUNCTION Y OUT POSITIVE\nTERM !\nEND\n", "0103va", 5},
        {head + "FUNCTION Y D POSITIVE\nEND\n", "0105va", 4},
        {head + "FUNCTION A OUT POSITIVE\nEND\n", "0105va", 4},
        {head + "FUNCTION Y OUT POSITIVE\nFUNCTION Y OUT NEGATIVE\nEND\n", "0104va", 5},
    };
    for (const auto& c : cases) {
        const auto result = sim::ReadAbs(c.text);
        ASSERT_EQ(result.Messages.Items().size(), 1u) << c.text;
        EXPECT_EQ(result.Messages.Items()[0].Number, c.code) << c.text;
        EXPECT_EQ(result.Messages.Items()[0].At.Line, c.line) << c.text;
    }
}

TEST(AbsFile, LimitsAreErrorsAndMessagesAreBounded) {
    std::string nets = "TESK-ABS 1\n";
    for (int i = 0; i < 5000; ++i) nets += "NET N" + std::to_string(i) + " 0 INPUT HIGH NONE 0\n";
    const auto many = sim::ReadAbs(nets + "END\n");
    ASSERT_EQ(many.Messages.Items().size(), 1u);
    EXPECT_EQ(many.Messages.Items()[0].Number, "0106va");

    std::string bad = "TESK-ABS 1\n";
    for (int i = 0; i < 5000; ++i) bad += "BAD\n";
    const auto faults = sim::ReadAbs(bad + "END\n");
    EXPECT_EQ(faults.Messages.Items().size(), sim::MessageLog::MaxMessages + 1);
    EXPECT_EQ(faults.Messages.Items().back().Number, "0001vs");
    EXPECT_EQ(faults.Messages.Errors(), 5000u);
}

}  // namespace
