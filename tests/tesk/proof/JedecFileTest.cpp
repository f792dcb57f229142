#include <gtest/gtest.h>

#include "model/Jedec.h"
#include "proof/JedecFile.h"

namespace {

std::string Framed(const std::string& fields) {
    return model::Transmission(model::StartOfText + fields + model::EndOfText);
}

std::string BitsOf(const std::vector<bool>& fuses) {
    std::string bits;
    for (const bool fuse : fuses) bits += fuse ? '1' : '0';
    return bits;
}

// "7305tc:1 7302tc:4", number and line.
std::string CodesOf(const proof::JedecFile& file) {
    std::string codes;
    for (const auto& message : file.Messages)
        codes += (codes.empty() ? "" : " ") + message.Number + ":" + std::to_string(message.At.Line);
    return codes;
}

}  // namespace

TEST(JedecFile, FusesOfEveryWayToTellThem) {
    const struct {
        const char* Fields;
        const char* Fuses;
        const char* Codes;
    } cases[] = {
        {"x*QF8*F0*L0 10100000*C0005*", "10100000", ""},
        {"x*\r\nQF8*\r\nF1*\r\nL00004 0\r\n1 0\t1*L2 0*C00AB*", "11010101", ""},
        {"QF4*L0 1011*C000D*", "1011", ""},                  // no specification
        {"x*QF4*L0 1*L0 01*F1*C000E*", "0111", ""},          // the last one holds
        {"x*L2 1*C0004*F0*", "001", "7305tc:1"},             // no QF
        {"x*QF4*L0 1*C0001*", "1000", "7305tc:1"},           // no F
        {"x*QF4*L0 1111*", "1111", "7305tc:1"},              // no C
        {"x*\nQF4*\nL0 1111*\nCABCD*", "1111", "7304tc:4"},  // wrong
        {"x*QF4*L0 1111*C000F*N \xFF\x80 caf\xE9 * G1*QP2*K1*K2*", "1111", "7306tc:1"},
        {"x*\nQF4*\nL0 11112*", "1111", "7302tc:3 7305tc:1"},
        {"x*\nQF4*\nL3 11*", "0001", "7302tc:3 7305tc:1 7305tc:1"},
        {"x*QF4*F2*Lx*Cxyz*QFx*PA*X3*V1 0Q*V*QF2*\nQF99999999*L0 1111*", "1111",
         "7302tc:1 7302tc:1 7302tc:1 7302tc:1 7302tc:1 7302tc:1 7302tc:1 7302tc:1 7302tc:1 7303tc:2 "
         "7305tc:1"},
        {"x*QF4*F0*C0000*\nL0 11", "0000", "7301tc:2"},
        {"A design\nwithout fields", "", "7300tc:1"},
    };
    for (const auto& one : cases) {
        const auto file = proof::ReadJedec(Framed(one.Fields));
        EXPECT_EQ(CodesOf(file), one.Codes) << one.Fields;
        EXPECT_EQ(BitsOf(file.Fuses), one.Fuses) << one.Fields;
    }
    EXPECT_EQ(BitsOf(proof::ReadJedec("\x02x*F1*L2 0*\x03").FuseMap(5)), "11011");
}

TEST(JedecFile, FramesOfEveryKind) {
    const std::string fields = "x*\nQF4*\nL0 1111*\nC000F*\n";
    const std::string whole = Framed(fields);
    const struct {
        std::string Text;
        const char* Codes;
    } cases[] = {
        {whole, ""},
        {"before" + whole + "behind", ""},
        {"\x02" + fields + "\x03" + "0000", ""},
        {"\x02" + fields + "\x03", "7305tc:5"},
        {"\x02" + fields + "\x03" + "1234", "7304tc:5"},
        {"\x02" + fields + "\x03" + "12\r\n", "7305tc:5"},
        {fields, "7305tc:1"},
        {"\x02" + fields, "7305tc:1"},  // whole by its checksum
        {"\x02" + fields.substr(0, fields.find('C')), "7305tc:1 7301tc:4"},
        {"\x02" + fields.substr(0, 12), "7305tc:1 7305tc:1 7301tc:3"},
        {"\x02x", "7301tc:1"},
        {"", "7300tc:1"},
    };
    for (const auto& one : cases) EXPECT_EQ(CodesOf(proof::ReadJedec(one.Text)), one.Codes) << one.Text;
}

TEST(JedecFile, VectorsAndWhatElseIsTold) {
    const auto file =
        proof::ReadJedec(Framed("spec \xE9*QP4*QF1*QV3*F0*X1*P 4 3 2 1*E0011*U UserA*J 1 2*G0*N A note*R01*"
                                "V0002 BC DF*V0001 HKLN*V0003 PUXZ*V0002 0129*C0000*"));
    EXPECT_EQ(CodesOf(file), "");
    EXPECT_EQ(file.Specification, "spec \xE9");
    EXPECT_EQ(file.Notes, std::vector<std::string>{" A note"});
    EXPECT_EQ(file.Electrical + "|" + file.UserData + "|" + file.Identification, "0011| UserA| 1 2");
    EXPECT_EQ(file.PinOrder, (std::vector<std::size_t>{4, 3, 2, 1}));
    EXPECT_EQ(file.OpenCondition, '1');
    EXPECT_EQ(file.Secure, false);
    std::string vectors;
    for (const auto& vector : file.Vectors)
        vectors += std::to_string(vector.Number) + vector.Conditions + " ";
    EXPECT_EQ(vectors, "1HKLN 20129 3PUXZ ");
    EXPECT_EQ(CodesOf(proof::ReadJedec(Framed("x*QF1*QP2*F0*C0000*\nV1 01X*"))), "7302tc:2");
    // The first field is the specification, unless it can be none.
    for (const std::string text : {"QX7", "Quad", "F16 board", "G2 G16V8", "L7", "L0 a", "F", ""})
        EXPECT_EQ(proof::ReadJedec(Framed(text + "*QF1*F0*C0000*")).Specification, text);
    for (const char* field : {"QF1", "QP20", "QV0", "F0", "G0", "\nL0 0 0"})
        EXPECT_EQ(proof::ReadJedec(Framed(std::string(field) + "*QF2*")).Specification, "") << field;
}
