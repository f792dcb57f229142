#include <gtest/gtest.h>

#include "dis/Disassembly.h"
#include "proof/Chip.h"
#include "tesk/fit/Designs.h"

namespace {

using testing::Test;

// A 16V8 in its simple mode as other compilers write it: no QP, F1 and disabled rows, security, signature
// "Ab". Pin 19 is active low; of its sum 2 & !3 # 4 the first row is left empty, and the last one is
// disabled.
const std::string foreign =
    "\x02"
    "Board 7, PALCE16V8H-25 at U12*\r\nN by hand*\r\nQF2194*QV3*F0*G1*X0*\r\n"
    "L0000 00000000000000000000000000000000\r\n01111011111111111111111111111111\r\n"
    "11111111011111111111111111111111\r\n11111111110111111111111111111111*\r\n"
    "L2048 00000000*L2056 0100000101100010*L2120 01100111*L2128 11101111*L2192 10*\r\n"
    "V1 N00NNNNNNN NNNNNNNNHN*\r\nV2 NXUNNNNNNN NNNNNNNNLN*\r\nV0003 N1D7NNNNNN NNNNNNNN0N*\r\n\x03"
    "0000";

dis::Disassembly From(const std::string& jedec, const dis::Request& request = {}) {
    return dis::Disassemble(proof::ReadJedec(jedec), test::FullSetText(), request);
}

std::string Codes(const dis::Disassembly& result) {
    std::string codes;
    for (const auto& message : result.Messages) codes += message.Number + " ";
    return codes;
}

std::string Behind(const std::string& text, const std::string& mark) {
    return text.substr(std::min(text.find(mark), text.size()));
}

TEST(Disassembly, TakesMapsOfOtherCompilers) {
    dis::Request request;
    request.Name = "U12";
    std::vector<dis::Message> faults;
    request.Names = dis::ReadPinFile("; by hand\n2 A\n3 = /B\nCS, 19\n\n4 C-1 # odd\n5 UNUSED\n", faults);
    EXPECT_TRUE(faults.empty());
    const auto result = From(foreign, request);
    EXPECT_EQ(Codes(result), "7305tc 7607tc 7605tc 7606tc ");
    EXPECT_EQ(
        Behind(result.Pld, "PIN 2"),
        "PIN 2 = A ;\r\nPIN 3 = !B ;\r\nPIN 4 = C_1 ;\r\nPIN 19 = !CS ;\r\n\r\nMIN CS = 0 ;\r\n\r\n"
        "CS = A & B # A & B # C_1 ;\r\n\r\n/* Fuses that no equation sets. */\r\n"
        "FUSE(2057, 1) ;\r\nFUSE(2063, 1) ;\r\nFUSE(2065, 1) ;\r\nFUSE(2066, 1) ;\r\nFUSE(2070, 1) ;\r\n");
    EXPECT_NE(result.Pld.find("Name      U12 ;\r\n"), std::string::npos);
    EXPECT_EQ(Behind(result.Si, "ORDER"),
              "ORDER: A, !B, C_1, !CS ;\r\n\r\nVECTORS:\r\n00NH\r\n01NL\r\n10NN\r\n");
    request.Minimize = true;
    EXPECT_NE(From(foreign, request).Pld.find("PIN 19 = !CS ;\r\n\r\nCS = C_1 # A & B ;\r\n"),
              std::string::npos);
}

// The first device that the fuses, the pins and then the words of the file leave.
TEST(Disassembly, ChoosesTheDevice) {
    const struct {
        const char* fields;
        const char* device;  // asked for
        const char* expected;
    } cases[] = {
        {"*QP20*QF2194*F0*L2192 10*", "", "Device    G16V8 ;"},
        {"*QP20*QF2194*F0*L2192 11*", "g16v8ma", "Device    G16V8MA ;"},
        {"x*QP20*QF2048*F0*", "", "have as many fuses: 2048: P16L8, P16R4, P16R6, P16R8"},
        {"Device  P16R4*QP20*QF2048*F0*", "", "Device    P16R4 ;"},
        {"Fitted to  P16R8, mode x\nDevice P16R4*QF2048*F0*", "", "Device    P16R8 ;"},
        {"for a PAL16R6ACN*QF2048*F0*", "", "Device    P16R6 ;"},
        {"x*N PAL16R6 or PAL16R4*QF2048*F0*", "", "fuses: 2048: P16R4, P16R6"},
        {"x*QP24*QF2048*F0*", "", "has as many fuses: 2048"},
        {"x*QF5828*F0*", "", "Device    P22V10 ;"},
        {"x*QF5828*F0*", "G22V10", "Device    G22V10 ;"},
        {"x*QP24*F0*L5000 1*", "G22V10", "Device    G22V10 ;"},
        {"x*QF5892*F0*", "G16V8", "fuses: G16V8 has 2194 fuses and 20 pins, the file 5892, as G22V10"},
        {"x*QF5892*F0*", "X9", "Device unknown: X9"},
        {"x*QF5892*F0*", "virtual", "Device unknown: virtual"},
        {"x*QF77*F0*", "", "has as many fuses: 77"},
        {"x*QF2194*F0*", "G16V8", "7401tc"},
        {"x*QF2194*F0*L2190 01", "G16V8", "7301tc"},
    };
    for (const auto& c : cases) {
        const auto result = From("\x02" + std::string(c.fields) +
                                     "\x03"
                                     "0000",
                                 {c.device, "T", {}, false});
        std::string found = result.Pld;
        for (const auto& message : result.Messages) found += model::Headline(message) + "\n";
        EXPECT_NE(found.find(c.expected), std::string::npos) << c.fields << "\n" << found;
        EXPECT_EQ(result.Ok(), !result.Pld.empty()) << found;
    }
}

TEST(Disassembly, NamesComeFromDesignsToo) {
    std::vector<dis::Message> faults;
    const std::string design =
        "Name N; Device G16V8; PIN [2,3] = [A,!B]; PIN 19 = Y; PIN = Z; Y = A & B; Z = A;";
    const auto names = dis::ReadDesignNames(design, test::FullSetText(), faults);
    EXPECT_TRUE(faults.empty());
    EXPECT_TRUE(names.at(3).Name == "B" && names.at(3).ActiveLow && names.at(19).Name == "Y");
    EXPECT_EQ(names.size(), 4u) << "Z has a pin where the design fits";
    for (const char* wrong : {"2", "2 A B", "A B", "0 A", "2000 A", "2 !", "2 A\n2 B", "2 A\n3 A"}) {
        faults.clear();
        dis::ReadPinFile(wrong, faults);
        ASSERT_EQ(faults.size(), 1u) << wrong;
        EXPECT_EQ(faults[0].Number, "7603tc");
        EXPECT_EQ(faults[0].At.Line, std::string(wrong).find('\n') == std::string::npos ? 1 : 2);
    }
    faults.clear();
    dis::ReadDesignNames("Name N; PIN 2 = ;", test::FullSetText(), faults);
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_NE(faults[0].Text.find("[1001ta] Error: "), std::string::npos) << faults[0].Text;
}

}  // namespace
