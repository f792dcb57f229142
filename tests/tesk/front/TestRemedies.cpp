#include <gtest/gtest.h>

#include "Support.h"

namespace {

// What too long a sum fits with; "-" if no message says it, "no …" if nothing helps.
std::string Told(const Compiled& done) {
    for (const std::string& line : done.Lines()) {
        const std::size_t at = line.find("; fits with ");
        if (at != line.npos && line.starts_with("[7201tc]"))
            return line.substr(at + 12, std::min(line.find(';', at + 12), line.find(" (T.PLD")) - at - 12);
    }
    return "-";
}

}  // namespace

// The error tells what the sum fits with, and a run with just that has no error.
TEST(Remedies, TooLongASumIsToldWhatItFitsWith) {
    const std::string pins = "PIN=[A,B,C,E,G,H,I,J]; PIN=[Y,Z];\n";
    // Eight terms behind m4, more behind m1.
    const std::string redundant =
        "Y = A & !B & !C & !E # !C & !E & G # !A & !C & E & !G # !B & !E & G # A & B & C # B & !C & !G\n"
        "# A & !C & E & !G # !A & !B & C & G # B & C & E & !G # !A & !B & !C & !E & !G;\n";
    // Sixteen terms, its complement four.
    const std::string products = "Z = !(A & B # C & E # G & H # I & J);\n";
    const std::string parity = "Z = [A,B,C,E,G]:$;\n";
    const struct {
        std::string Body;
        const char* Options;
        const char* Told;
        const char* With;  // letters that this means
        std::string Put;   // in front of the body
    } cases[] = {
        {redundant, "m1", "m4", "m4", ""},
        {redundant, "m0", "m4", "m4", ""},
        {redundant, "m1ks", "m4 without ks", "m4", ""},
        {"MIN Y = 1;\n" + redundant, "m4", "MIN Y = 4", "m4", "MIN Y = 4;\n"},
        {products, "m1", "kb", "m1kb", ""},
        {products, "m2", "kb", "m2kb", ""},
        {parity, "m1", "no level of reduction", "m2kb", ""},
        {parity, "m4kb", "no level of reduction", "m2kb", ""},
        {parity + redundant, "m1", "no level of reduction", "m4", ""},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.Body + test.Options);
        const auto done = CompileFor("G16V8", pins + test.Body, test.Options);
        EXPECT_EQ(Told(*done), test.Told) << done->Lines().front();
        const bool helps = std::string(test.Told).substr(0, 3) != "no ";
        EXPECT_EQ(CompileFor("G16V8", pins + test.Body + test.Put, test.With)->Run->Ok(), helps);
    }
    const std::vector<std::string> both = CompileFor("G16V8", pins + parity + redundant, "m1")->Lines();
    ASSERT_EQ(both.size(), 2u);
    EXPECT_NE(both[1].find("Y needs 9, the limit of pin"), std::string::npos) << both[1];
    EXPECT_TRUE(both[1].find("; fits with m4 (T.PLD line 4") != std::string::npos) << both[1];
}

// Sums that are too large are not tried at length.
TEST(Remedies, LargeSumsAreLeftAlone) {
    std::string body = "PIN=[A11..0]; PIN=Y;\nTABLE [A11..0] => Y {\n";
    for (int value = 0; value < 4096; ++value)
        if (value * 7919 % 13 < 6) body += "'d'" + std::to_string(value) + " => 1;\n";
    const auto done = CompileFor("G16V8", body + "}\n", "m1");
    ASSERT_EQ(done->Run->Said.Errors(), 1u);
    EXPECT_NE(done->Lines().back().find("; too large to try other reductions"), std::string::npos);
}
