#include "sim/Simulation.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "SimTexts.h"
#include "sim/Run.h"
#include "sim/SiReader.h"

namespace {

using test::FoundBy;
using test::Simulate;
using test::Texts;

const std::string design =
    "NET C 1 INPUT HIGH NONE 0\nNET D0 2 INPUT HIGH NONE 0\nNET D1 3 INPUT HIGH NONE 0\nNET D2 4 INPUT HIGH "
    "NONE 0\n"
    "NET D3 5 INPUT LOW NONE 0\nNET Q0 19 OUTPUT HIGH D 0\nNET Q1 18 OUTPUT LOW D 0\nFIELD IN D3 D2 D1 D0\n"
    "FIELD OUT Q1 Q0\nFUNCTION Q0 D POSITIVE\nTERM D0\nFUNCTION Q0 CK POSITIVE\nTERM C\nFUNCTION Q1 D "
    "POSITIVE\n"
    "TERM D1\nFUNCTION Q1 CK POSITIVE\nTERM C\n";

std::string Codes(const test::Simulated& result) {
    std::string codes;
    for (const auto& m : result.Messages)
        codes += (codes.empty() ? "" : " ") + m.Number + "@" + std::to_string(m.At.Line);
    return codes;
}

TEST(Si, FaultsAreToldWithCodeAndLine) {
    const struct {
        std::string si;
        const char* codes;
    } cases[] = {
        {"Name T; Name2 X;\nORDER: C, IN;\nVECTORS:\n", "0203va@1"},
        {"Name T;\nORDER: C, IN;\n", "0202va@2"},
        {"Name T;\nVECTORS:\n", "0202va@0"},
        {"Name T;\nORDER: C, IN", "0202va@2 0202va@2 0202va@0"},
        {"/* open\nName T;", "0201va@1 0202va@2 0204va@0 0202va@0"},
        {"Name U;\nOrder: c, IN, C, C, %99, [D0..E3], ;\nVectors:\n",
         "0207va@2 0206va@2 0206va@2 0206va@2 0206va@2 0204va@0"},
        {"Name T;\nBASE: 16;\norder: C, IN;\nVECTORS:\n", "0203va@2"},
        {"Name T;\nORDER: C, IN;\nVECTORS:\n00000\n0000\n000000\n0?000\n", "0211va@5 0211va@6 0208va@7"},
        {"Name T;\nORDER: C, IN;\nVECTORS:\n0 'F'\n0 '1F'\n0 'G'\n'0' \n0 'F\n00 'F'\n",
         "0212va@5 0212va@6 0211va@7 0212va@8 0212va@9"},
        {"Name T;\nORDER: C, IN;\nVECTORS:\n$REPEAT 0\n$TRACE 5\n$MSG x\n$WHAT\n$REPEAT 2\n",
         "0209va@4 0209va@5 0209va@6 0209va@7 0209va@8"},
        {"Name T;\nORDER: C, IN, OUT;\nVECTORS:\n0 '0' 01\nL 0000 **\n", "0213va@4 0213va@4 0213va@5"},
        {"Name T;\nORDER: D0;\nVECTORS:\n0\n", "0205va@0 0205va@0 0205va@0 0205va@0"},
        {"Name T;\nORDER: C, IN;\nVECTORS:\n/* none */\n", "0307vs@0"},
    };
    for (const auto& c : cases) {
        for (const std::size_t piece : {1u, 3u, 1u << 16}) {
            const auto result = Simulate({Texts(design, "", "").Abs, c.si, ""}, {}, piece);
            EXPECT_EQ(Codes(result), c.codes) << c.si << piece;
        }
    }
}

TEST(Si, ValuesCommentsAndCommands) {
    const auto vectors = [](const char* base, const char* rows) {
        return Simulate(
            {Texts(design, "", "").Abs,
             std::string("Name T; BASE: ") + base + ";\norder: C, %2, IN, /* , */ OUT;\nvectors:\n" + rows,
             ""},
            {});
    };
    const struct {
        const char* base;
        const char* rows;
        std::vector<std::string> found;
    } cases[] = {
        {"hex", "C 'B' \"1\" /* Q1 is active-low */\r\nC \"B\" '1' ", {"C1011LH", "C1011LH"}},
        {"octal", "C '13' \"1\"\n", {"C1011LH"}},
        {"decimal", "C '11' '1'\nC '0011' \"*\"\nC 'X' '*'", {"C1011LH", "C1011LH", "CXXXXXX"}},
        {"hex", "C '0X' '*'\nC 0001 NX", {"CXXXXXX", "C0001NX"}},
        {"hex",
         "C0011LH\n$SIMOFF\n$REPEAT 2\nC0000HH\n$simon\n00000**\n",
         {"C0011LH", "C0000HH(notsimulated)", "C0000HH(notsimulated)", "00000LH"}},
    };
    for (const auto& c : cases) {
        const auto result = vectors(c.base, c.rows);
        EXPECT_EQ(FoundBy(result), c.found) << c.rows << result.So;
        EXPECT_EQ(result.Errors + result.Warnings, 0u) << result.So;
    }
    const auto traced =
        vectors("hex", "$MSG \"start here\"\n$REPEAT 1\n$TRACE 1\nC 'F' **\n$TRACE 0\nC '0' **\n").So;
    EXPECT_LT(traced.find("start here"), traced.find("clocked Q0 to 1"));
    EXPECT_EQ(traced.find("clocked Q0 to 0"), std::string::npos);
    EXPECT_EQ(traced.find("start here"), traced.rfind("start here"));
}

TEST(Simulation, MismatchesStandUnderTheirVector) {
    auto texts = Texts(design, "C,%1,D0,D1,D2,D3,%1,Q0,Q1", "C 1000 HL\nC 0100 LH\n");
    const auto result = Simulate(texts, {true, false});
    EXPECT_EQ(Codes(result), "0301vs@4 0301vs@5");
    EXPECT_EQ(result.Mismatches, 2u);
    EXPECT_NE(
        result.So.find(
            "0001: C 1000 HH\r\n   >> Q1: expected L, found H\r\n0002: C 0100 LL\r\n   >> Q1: expected H, "
            "found L\r\n\r\n2 vectors, 2 mismatches\r\n"),
        std::string::npos)
        << result.So;
    EXPECT_NE(result.So.find("   4: C 1000 HL\r\n[0301vs]"), std::string::npos) << result.So;
    EXPECT_EQ(base::ToCrLf(result.So), result.So);
    // What else is wrong in a row stands under it in the listing, else with the other messages.
    for (const bool listing : {true, false}) {
        const auto wrong = Simulate(Texts(design, "C,%1,D0", "C 1\nC Q\n"), {listing, false});
        EXPECT_EQ(wrong.So.find("   5: C Q\r\n[0208va]") != wrong.So.npos, listing) << wrong.So;
        EXPECT_EQ(wrong.So.find("[0208va]"), wrong.So.rfind("[0208va]")) << wrong.So;
    }
}

// Reads a value change dump back: the value of a signal at a time.
char ValueAt(const std::string& vcd, const std::string& name, int time) {
    std::string id;
    char value = '?';
    for (const auto& line : base::Lines(vcd)) {
        const auto at = line.find(" " + name + " $end");
        if (base::StartsWith(line, "$var wire 1 ") && at != line.npos) id = line.substr(12, at - 12);
        if (line[0] == '#' && std::stoi(line.substr(1)) > time) break;
        if (line.substr(1) == id && line[0] != '$' && line[0] != '#') value = line[0];
    }
    return value;
}

TEST(Simulation, WavesShowThePulseAndItsEffect) {
    const auto vcd = Simulate(Texts(design, "C,IN,OUT", "C0001**\n00000**\nC0000**\n"), {}).Vcd;
    std::string clock;
    std::string q0;
    for (const int time : {0, 30, 80, 130, 210, 230, 290}) {
        clock += ValueAt(vcd, "C", time);
        q0 += ValueAt(vcd, "Q0", time);
    }
    EXPECT_EQ(clock, "0100010");
    EXPECT_EQ(q0, "0111100");
    EXPECT_EQ(vcd.find("$dumpvars"), vcd.rfind("$dumpvars"));
}

TEST(Simulation, VectorsGoIntoTheFuseFile) {
    auto texts = Texts(design, "C,IN,OUT", "C0001**\nC0000HH\n");
    texts.Jed =
        "before\x02text V*\r\nQP20*\r\nQF8*\r\nNote V*\r\nV0001 old*\r\nQV1*\r\nL0 1*\r\nC0001*\r\n\x03"
        "0000";
    const auto jed = Simulate(texts, {false, true}).Jed;
    const std::string body =
        "\x02text V*\r\nQP20*\r\nQF8*\r\nNote V*\r\nL0 1*\r\nC0001*\r\nQV2*\r\nV0001 "
        "C1000NNNNNNNNNNNNHHN*\r\n"
        "V0002 C0000NNNNNNNNNNNNHLN*\r\n\x03";
    ASSERT_EQ(jed.substr(0, 6 + body.size()), "before" + body);
    const auto sum = std::accumulate(body.begin(), body.end(), 0u) & 0xFFFF;
    EXPECT_EQ(std::stoul(jed.substr(6 + body.size()), nullptr, 16), sum);

    texts.Jed = Simulate(texts, {false, true}).Jed;
    EXPECT_EQ(Simulate(texts, {false, true}).Jed, texts.Jed) << "vectors are replaced, not doubled";
    texts.Jed = "no frame";
    EXPECT_EQ(Codes(Simulate(texts, {false, true})), "0301vs@5 0401vs@0");
}

std::string Mutated(std::string text, std::mt19937& random) {
    const auto original = text;
    for (auto n = 1 + random() % 2; n > 0 && !text.empty(); --n) {
        const auto at = random() % text.size();
        switch (random() % 4) {
            case 0:
                text[at] = static_cast<char>(random());
                break;
            case 1:
                text.erase(at, random() % 20);
                break;
            case 2:
                text.insert(at, original.substr(random() % original.size(), random() % 40));
                break;
            default:
                text[at] = original[random() % original.size()];
        }
    }
    return text;
}

TEST(Simulation, NoInputBreaksIt) {
    const auto good =
        Texts(design, "C,%2,IN,[Q1..0]",
              "$TRACE 4\nC '5' \"1\"\n$REPEAT 3\n00000LZ\n$SIMOFF\n$MSG \"x\"\nP0000 11\nKX1N0**\n");
    const std::string jed =
        "\x02*QP20*V1 X*\x03"
        "0000";
    std::mt19937 random(3);
    std::size_t ran = 0;
    for (int round = 0; round < 4000; ++round) {
        auto texts = good;
        texts.Jed = Mutated(jed, random);
        if (round % 3 != 0) texts.Si = Mutated(texts.Si, random);
        if (round % 3 != 1) texts.Abs = Mutated(texts.Abs, random);
        const auto abs = sim::ReadAbs(texts.Abs);
        const auto again = sim::ReadAbs(sim::WriteAbs(abs.Design));
        ASSERT_TRUE(!abs.Ok() || again.Design.Functions == abs.Design.Functions);
        const auto result = Simulate(texts, {true, true});
        ran += result.Vectors > 0 ? 1 : 0;
        ASSERT_EQ(result.Vectors == 0 && result.Errors == 0 && result.Warnings == 0, false);
    }
    EXPECT_GT(ran, 60u);
}

// Pieces of any size give the same; behind 9999 vectors numbers are wider, and so is the space above them.
TEST(Simulation, VectorsAreTakenOneByOne) {
    auto texts =
        Texts(design, "C,%1,IN,%1,OUT",
              "/* a comment\nover lines */ C 0001 ** /* \" */\r\n$REPEAT 65534\nC '0' \"2\"\n$MSG \"two "
              "more\"\n$REPEAT 2\nC 'F' \"1\"\nC 'F' LL\n");
    texts.Jed = "\x02*QP20*\x03";
    const auto whole = Simulate(texts, {true, true});
    EXPECT_EQ(whole.Vectors, 65538u);
    EXPECT_EQ(Codes(whole), "0301vs@11 0403vs@0");
    EXPECT_NE(whole.So.find("\r\n         DDDD QQ\r\n       C 3210 10\r\n"), std::string::npos)
        << whole.So.substr(0, 900);
    EXPECT_NE(whole.So.find("\r\n00001: C 0001 HH\r\n00002: C 0000 HL\r\n"), std::string::npos);
    EXPECT_TRUE(
        whole.So.ends_with("two more\r\n65536: C 1111 LH\r\n65537: C 1111 LH\r\n65538: C 1111 LH\r\n   "
                           ">> Q0: expected L, found H\r\n\r\n65538 vectors, 1 mismatches\r\n"))
        << whole.So.substr(whole.So.size() - 200);
    EXPECT_NE(whole.Jed.find("QV65535*\r\nV0001 C1000"), std::string::npos);
    EXPECT_NE(whole.Jed.find("V65535 C0000"), std::string::npos);
    EXPECT_EQ(whole.Jed.find("V65536"), std::string::npos);
    EXPECT_TRUE(whole.Vcd.ends_with("#6553800\r\n"));
    const auto pieces = Simulate(texts, {true, true}, 5);
    EXPECT_EQ(pieces.So, whole.So);
    EXPECT_EQ(pieces.Vcd, whole.Vcd);
    EXPECT_EQ(pieces.Jed, whole.Jed);
}

// What is beyond a limit is told before anything is simulated; what lies at it is taken.
TEST(Si, LimitsAreTold) {
    const auto repeats = [](int count, const char* last) {
        std::string rows;
        for (int i = 0; i < count; ++i) rows += "$REPEAT 1000000\n0 0000\n";
        return rows + last;
    };
    const std::string head = "Name T;\nORDER: C, IN;\nVECTORS:\n";
    const std::string blanks(1u << 20, ' ');
    const struct {
        std::string si;
        const char* codes;
    } cases[] = {
        {head + repeats(10, ""), ""},
        {head + repeats(10, "0 0000\n0 000\n"), "0210va@24"},
        {head + "$REPEAT 1000001\n0 0000\n", "0209va@4"},
        {head + blanks.substr(6) + "0 0000\n0 000\n", "0211va@5"},
        {head + blanks.substr(5) + "0 0000\n0 000\n", "0210va@4"},
        {"Name T;\nORDER: C, IN\n" + blanks + "\n;VECTORS:\n", "0210va@2 0202va@3 0202va@0"},
        {"Name T;\nORDER: C, IN\n" + blanks.substr(100) + "\n;VECTORS :\n0 000", "0211va@5"},
    };
    for (const auto& c : cases) {
        const auto abs = sim::ReadAbs(Texts(design, "", "").Abs);
        test::TextSource source(c.si);
        test::TextSpool steps;
        test::Simulated result;
        result.Messages = sim::CheckSi(source, abs.Design, steps).Messages.Items();
        EXPECT_EQ(Codes(result), c.codes) << c.si.substr(0, 60);
    }
}

TEST(Simulation, WorkIsBounded) {
    // A ring of many nets that never settles, over many vectors.
    std::string ring;
    for (int i = 0; i < 400; ++i) ring += "NET N" + std::to_string(i) + " 0 NODE HIGH NONE 0\n";
    for (int i = 0; i < 400; ++i) {
        ring += "FUNCTION N" + std::to_string(i) + " OUT " + (i == 0 ? "NEGATIVE" : "POSITIVE") + "\nTERM N" +
                std::to_string((i + 399) % 400) + "\n";
    }
    const auto abs = sim::ReadAbs(Texts(ring, "", "").Abs);
    const auto texts = Texts("", "N0", "$REPEAT 9999\n*\n");
    test::TextSource source(texts.Si);
    sim::MessageLog log;
    sim::SiReader steps(source, abs.Design, log);
    const auto result = sim::RunVectors(
        abs.Design, steps.Head().Columns, [&](sim::Step& step) { return steps.Next(step); }, {}, 5'000'000);
    ASSERT_GE(result.Messages.Items().size(), 2u);
    EXPECT_EQ(result.Messages.Items()[0].Number, "0302vs");
    EXPECT_EQ(result.Messages.Items().back().Number, "0306vs");
}

}  // namespace
