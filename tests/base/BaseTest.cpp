#include <gtest/gtest.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"

using namespace base;

namespace {

template <typename Call>
int ErrorOf(Call call) {
    try {
        call();
        return 0;
    } catch (const RunTimeError& e) {
        return e.Number();
    }
}

// Numbers have a decimal comma while it stands, as far as the C library has a say.
class CommaLocale {
  public:
    CommaLocale() {
        std::filesystem::create_directories(folder_);
        std::ofstream(folder_ + "/comma")
            << "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"\"\ngrouping -1\n"
               "END LC_NUMERIC\n";
        const std::string make =
            "localedef -c -i " + folder_ + "/comma -f ANSI_X3.4-1968 " + folder_ + "/xx_XX >/dev/null 2>&1";
        std::system(make.c_str());
        ::setenv("LOCPATH", folder_.c_str(), 1);
        IsSet = std::setlocale(LC_NUMERIC, "xx_XX") != nullptr;
    }
    ~CommaLocale() {
        std::setlocale(LC_NUMERIC, "C");
        ::unsetenv("LOCPATH");
        std::filesystem::remove_all(folder_);
    }
    bool IsSet = false;

  private:
    std::string folder_ = testing::TempDir() + "korvane-locale-" + std::to_string(::getpid());
};

}  // namespace

TEST(ModLib, CutsNamesAtTheLastPointAndBackslash) {
    EXPECT_EQ(StripExtension("C:\\A.B\\X.PLD"), "C:\\A.B\\X");
    EXPECT_EQ(StripExtension("C:\\A.B\\X"), "C:\\A");  // the point of a folder counts
    EXPECT_EQ(StripExtension("X"), "X");
    EXPECT_EQ(FileExtension("x.html"), "HTM");
    EXPECT_EQ(FileExtension("noext"), "NOEXT");
    EXPECT_EQ(BareName("C:\\WORK\\COUNT8.PLD"), "COUNT8");
    EXPECT_EQ(DirectoryPart("C:\\WORK\\COUNT8.PLD"), "C:\\WORK\\");
    EXPECT_EQ(DirectoryPart("COUNT8.PLD"), "COUNT8.PLD");
    EXPECT_EQ(PrintableOnly("a b\tc\x7f\xc3\xa4~!"), "abc~!");
}

TEST(ModLib, CharactersAbove127AreNoWords) {
    EXPECT_FALSE(IsWordChar('\xe4'));
    EXPECT_TRUE(IsBlankChar('\xe4'));
    EXPECT_FALSE(IsWordChar('$'));
    EXPECT_TRUE(IsBlankChar('\x7f'));
    EXPECT_FALSE(IsBlankChar('!'));
}

TEST(ModLib, BitsArePatternsOf32) {
    EXPECT_EQ(ValueToBits(-2, 4), "1110");
    EXPECT_EQ(ValueToBits(INT32_MIN, 33), "1" + std::string(31, '0'));
    EXPECT_EQ(ValueToBits(5, 0), "");
    EXPECT_EQ(BitsToValue("1" + std::string(31, '0')), INT32_MIN);
    EXPECT_EQ(BitsToValue("1x1 1"), 21);
    EXPECT_EQ(WidenRight("10", '0', 4), "1000");
    EXPECT_EQ(WidenRight("1011", '0', 2), "1011");
}

TEST(Number, OverflowsAndMismatchesAreErrors) {
    EXPECT_EQ(ErrorOf([] { Add16(32767, 1); }), errOverflow);
    EXPECT_EQ(ErrorOf([] { Multiply16(-200, 200); }), errOverflow);
    EXPECT_EQ(ErrorOf([] { TextToInt16("32768"); }), errOverflow);
    EXPECT_EQ(ErrorOf([] { TextToInt32("1e99"); }), errOverflow);
    for (const char* bad : {"", " ", "abc", "1x", "-", ".", "1e", "0x10", "nan", "inf"}) {
        EXPECT_EQ(ErrorOf([&] { TextToInt32(bad); }), errTypeMismatch) << bad;
    }
    EXPECT_EQ(TextToInt16(" -12 "), -12);
    EXPECT_EQ(TextToInt16("2.5"), 2);
    EXPECT_EQ(TextToInt16("3.5"), 4);
    EXPECT_EQ(TextToInt32("-2147483648"), INT32_MIN);
}

TEST(Number, SizesBeyondTheRangeOfDouble) {
    const std::string zeros(400, '0');
    for (const std::string& large : {"1" + zeros, "-1" + zeros + ".5", std::string("1e999"),
                                     "1" + zeros + "e-9", std::string("0.1e+99999999999")})
        EXPECT_EQ(ErrorOf([&] { TextToInt32(large); }), errOverflow) << large;
    for (const std::string& small : {"." + zeros + "1", "-0." + zeros + "1", "." + zeros + "1e+9",
                                     std::string("+1E-999"), std::string("10e-99999999999")})
        EXPECT_EQ(TextToInt32(small), 0) << small;
}

TEST(Number, LeadingNumbersAndTheGeneralTest) {
    const struct {
        const char* Text;
        bool IsNumeric;
        double Number;
    } cases[] = {{" -2.5e1 ", true, -25}, {"2.5e", false, 2.5},     {"7 rows", false, 7},
                 {".", false, 0},         {"", false, 0},           {"&H7fff", true, 32767},
                 {"&hFFFF", true, -1},    {"&H10000", true, 65536}, {"&HFFFFFFFF", true, -1},
                 {"&o17", true, 15},      {"&o18", false, 1},       {"&H", false, 0},
                 {"&x1", false, 0},       {" &O177777 ", true, -1}, {"-&H1", false, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(IsNumericText(c.Text), c.IsNumeric) << c.Text;
        EXPECT_EQ(LeadingNumber(c.Text), c.Number) << c.Text;
    }
    EXPECT_FALSE(IsNumericText("&H100000000"));
    EXPECT_EQ(ErrorOf([] { LeadingNumber("&H100000000"); }), errOverflow);
}

TEST(Number, NoLocaleHasASay) {
    const CommaLocale comma;
    if (!comma.IsSet) GTEST_SKIP() << "no locale data here (package locales)";
    ASSERT_EQ(std::atof("2,75"), 2.75);
    EXPECT_EQ(TextToInt16("2.75"), 3);
    EXPECT_FALSE(IsNumericText("2,75"));
    EXPECT_EQ(SingleToText(.25F), " .25");
}

TEST(Number, SingleToTextKeepsThePlaceOfTheSign) {
    EXPECT_EQ(SingleToText(1000), " 1000");
    EXPECT_EQ(SingleToText(-15), "-15");
    EXPECT_EQ(SingleToText(0.5f), " .5");
    EXPECT_EQ(SingleToText(-0.5f), "-.5");
    EXPECT_EQ(SingleToText(1234567.f), " 1234567");
    EXPECT_EQ(SingleToText(12345678.f), " 1.234568E+07");
}

TEST(Text, LineEndsOfEveryKindBecomeCrLf) {
    EXPECT_EQ(ToCrLf("a\nb\rc\r\nd\r\n\n"), "a\r\nb\r\nc\r\nd\r\n\r\n");
    EXPECT_EQ(Lines("a\r\n\nb"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(Lines("a\n"), std::vector<std::string>{"a"});
    EXPECT_TRUE(Lines("").empty());
}

TEST(Text, MidClampsAndCountsFromOne) {
    EXPECT_EQ(Mid("abc", 1, 2), "ab");
    EXPECT_EQ(Mid("abc", 3, 9), "c");
    EXPECT_EQ(Mid("abc", 4, 1), "");
    EXPECT_EQ(Mid("abc", 0, 1), "");
    EXPECT_EQ(Right("abc", 9), "abc");
}

TEST(Text, Utf8IsCheckedAsTheStandardSays) {
    // The first and the last of each length.
    for (const char* good : {"gr\xc3\xb6\xc3\x9f", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf",
                             "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"})
        EXPECT_TRUE(IsValidUtf8(good)) << good;
    for (const char* bad : {"\xe4", "\xc1\xbf", "\xe0\x9f\xbf", "\xed\xa0\x80", "\xf0\x8f\xbf\xbf",
                            "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xe2\x82", "\xc2\xc0", "\x80"})
        EXPECT_FALSE(IsValidUtf8(bad)) << bad;
    EXPECT_EQ(DisplayUtf8("a\xe4z"), "a\xEF\xBF\xBDz");
}
