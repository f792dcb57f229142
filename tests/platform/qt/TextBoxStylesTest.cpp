#include "platform/qt/TextBoxStyles.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace platform::qt {
namespace {

CharStyle Style(const CharFormat& format, const char* font = "A", int size = 1000) {
    return {format, font, size};
}
CharStyle Colored(std::int32_t color) { return Style({.Color = color}); }

struct StyleTableTest : testing::Test {
    std::map<int, CharStyle> Defined;  // what the control was told
    StyleTable::NumberSet Used;
    StyleTable Table{[this](StyleTable::Number number, const CharStyle& style) { Defined[number] = style; },
                     [this] { return Used; }};

    StyleTableTest() { Table.Reset(Colored(0)); }
    // Takes every number that there is; gives the first and the last.
    std::pair<int, int> Fill() {
        for (int color = 1; color < 247; ++color) Table.NumberOf(Colored(color));
        return {Table.NumberOf(Colored(1)), Table.NumberOf(Colored(247))};
    }
};

TEST_F(StyleTableTest, GivesOutAllNumbersButTheControlsOwn) {
    std::set<int> numbers;
    for (int color = 0; color < 248; ++color) numbers.insert(Table.NumberOf(Colored(color)));
    EXPECT_EQ(numbers.size(), 248u);
    EXPECT_EQ(*numbers.begin(), 0);
    EXPECT_EQ(*numbers.rbegin(), 255);
    for (int own = 31; own <= 40; ++own) EXPECT_EQ(numbers.contains(own), own == 31 || own == 40) << own;
    for (const int number : numbers) {
        EXPECT_EQ(Defined[number], Table.StyleOf(static_cast<StyleTable::Number>(number)));
        EXPECT_EQ(Table.NumberOf(Defined[number]), number);
    }
}

TEST_F(StyleTableTest, AFullTableFreesWhatIsNotInUse) {
    const auto [first, last] = Fill();
    Used.set().reset(static_cast<std::size_t>(last));
    EXPECT_EQ(Table.NumberOf(Colored(1000)), last);
    EXPECT_EQ(Defined[last], Colored(1000));
    EXPECT_EQ(Table.NumberOf(Colored(1)), first);

    // Given out while held it stays, although no text bears it yet.
    Used.reset(static_cast<std::size_t>(first));
    Table.Hold();
    Table.Hold();
    Table.NumberOf(Colored(1000));
    EXPECT_EQ(Table.NumberOf(Colored(2000)), first);
    Table.Unhold();
    EXPECT_NE(Table.NumberOf(Colored(3000)), first);
    EXPECT_NE(Table.NumberOf(Colored(3000)), last);
    Table.KeepOnly({}, Colored(0));
    EXPECT_EQ(Table.StyleOf(static_cast<StyleTable::Number>(first)), Colored(2000));
    Table.Unhold();
    Table.KeepOnly({}, Colored(0));
    EXPECT_EQ(Table.StyleOf(static_cast<StyleTable::Number>(first)), Colored(0));
}

TEST_F(StyleTableTest, WithEveryNumberInUseTheLikestServes) {
    const std::pair<CharStyle, CharStyle> pairs[] = {
        // one of the table, a likeness that is none
        {Colored(0x800000), Colored(0x7C0000)},
        {Colored(0x008000), Colored(0x058000)},
        {Style({.Bold = true}), Style({.Color = 9, .Bold = true})},
        {Style({.Italic = true}), Style({.Color = 9, .Italic = true})},
        {Style({.Underline = true}), Style({.Color = 9, .Underline = true})},
        {Style({}, "B"), Style({.Color = 0xFFFFFF}, "B")},
        {Style({}, "A", 4000), Style({}, "A", 3900)},
    };
    Used.set();
    for (const auto& [known, asked] : pairs) Table.NumberOf(known);
    for (int color = 0; color < 248; ++color) Table.NumberOf(Colored(0x500000 + color));
    for (const auto& [known, asked] : pairs) {
        EXPECT_EQ(Table.StyleOf(Table.NumberOf(asked)), known) << asked.Format.Color << asked.FontName;
        EXPECT_NE(Table.StyleOf(Table.NumberOf(asked)), asked);
    }
    EXPECT_NE(Table.NumberOf(Style({}, "")), 32) << "never a number of the control's own";
}

TEST_F(StyleTableTest, FreedNumbersTakeThePlainLook) {
    const auto large = Table.NumberOf(Style({}, "A", 7200));
    const auto kept = Table.NumberOf(Colored(5));
    Defined.clear();
    StyleTable::NumberSet used;
    used.set(kept);
    Table.KeepOnly(used, Colored(7));
    EXPECT_EQ(Table.StyleOf(large), Colored(7));
    EXPECT_EQ(Table.StyleOf(kept), Colored(5));
    EXPECT_FALSE(Defined.contains(kept));
    EXPECT_TRUE(Defined.contains(255));
    for (int own = 32; own < 40; ++own) EXPECT_FALSE(Defined.contains(own)) << own;

    Defined.clear();
    Table.KeepOnly(used, Colored(7));
    EXPECT_TRUE(Defined.empty()) << "told once";
    Table.Reset(Colored(7));
    EXPECT_EQ(Defined, (std::map<int, CharStyle>{{kept, Colored(7)}}));
    EXPECT_EQ(Table.NumberOf(Colored(7)), 0);
    EXPECT_EQ(Table.NumberOf(Colored(5)), 1) << "all others are free again";
}

}  // namespace
}  // namespace platform::qt
