#include <gtest/gtest.h>

#include <array>
#include <map>

#include "aids/TableGeometry.h"
#include "aids/TableValues.h"

namespace aids {
namespace {

using std::string;

TableValues Table(const string& in, const string& out, const string& rows) {
    TableValues table;
    EXPECT_FALSE(table.TakeWidth(Half::Input, in));
    EXPECT_FALSE(table.TakeWidth(Half::Output, out));
    EXPECT_FALSE(table.TakeRows(rows));
    return table;
}

string Joined(const std::vector<string>& rows) {
    string text;
    for (const string& row : rows) text += (text.empty() ? "" : " ") + row;
    return text;
}

string Told(const std::optional<Refusal>& refusal) {
    return refusal ? refusal->Message + refusal->Correction : "";
}

TEST(Table, FillModes) {
    const string notNumeric = "The from value for setting the input must be numeric.";
    const struct {
        Fill Mode;
        const char* From;
        const char* Width;
        const char* Rows;
        string Filled;  // "-" was there before
        string Told = "";
    } cases[] = {
        {Fill::Inc, "14", "3", "3", "110 111 000"},
        {Fill::Inc, " -1", "4", "2", "1111 0000"},
        {Fill::Inc, "&hffff", "4", "2", "1111 0000"},
        {Fill::Inc, ".5", "2", "2", "00 01"},    // 0 to 2
        {Fill::Inc, "1.5e0", "2", "2", "10 -"},  // 2 to 2
        {Fill::Inc, "2147483647", "2", "1", "11"},
        {Fill::Inc, "2147483647", "2", "2", "- -", "Overflow"},
        {Fill::Dec, "4294967295", "2", "2", "- -", "Overflow"},
        {Fill::Inc, "1e999", "2", "1", "-", "Overflow"},
        {Fill::Inc, "", "2", "1", "-", notNumeric},
        {Fill::Dec, "1x", "2", "1", "-", notNumeric},
        {Fill::Dec, "0", "2", "3", "10 01 00"},
        {Fill::Zero, "x", "3", "2", "000 000"},
        {Fill::Set, "x", "3", "2", "111 111"},
        {Fill::OneHotL, "x", "2", "4", "01 10 00 00"},
        {Fill::OneHotL, "x", "1", "34",
         "1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 - -"},
        {Fill::OneHotR, "x", "3", "5", "100 010 001 000 000"},
        {Fill::OneHotR, "x", "32", "2", "1" + string(31, '0') + " 01" + string(30, '0')},
        {Fill::FillL, "x", "2", "3", "01 11 -"},
        {Fill::FillR, "x", "3", "3", "100 110 111"},
    };
    for (const auto& c : cases) {
        TableValues table = Table(c.Width, "1", c.Rows);
        for (string& row : table.InputValues) row = "-";
        EXPECT_EQ(table.FillInput(c.Mode, c.From), c.Told);
        EXPECT_EQ(Joined(table.InputValues), c.Filled);
        EXPECT_EQ(table.InputFilled, c.Told.empty()) << c.Filled;
    }
    TableValues table = Table("", "1", "2");
    table.FillInput(Fill::Set, "");
    EXPECT_FALSE(table.InputFilled) << "there is no bit";
    EXPECT_FALSE(table.TakeWidth(Half::Input, "2"));
    EXPECT_EQ(Joined(table.InputValues), "00 00");
}

TEST(Table, BitsKeepTheirColumnsWhenAWidthChanges) {
    const struct {
        Half Changed;
        const char *Other, *New;
        const char* Row;  // of 1011
    } cases[] = {
        {Half::Input, "1", "2", "10"},   {Half::Input, "1", "6", "101100"},
        {Half::Input, "1", "0.4", ""},   {Half::Output, "6", "3", "1011"},
        {Half::Output, "2", "3", "100"}, {Half::Output, "2", "6", "101100"},
        {Half::Output, "3", "3", "101"}, {Half::Output, "", "3", "000"},
    };
    for (const auto& c : cases) {
        const bool isInput = c.Changed == Half::Input;
        TableValues table = Table(isInput ? "4" : c.Other, isInput ? c.Other : "4", "1");
        (isInput ? table.InputValues : table.OutputValues).front() = "1011";
        EXPECT_FALSE(table.TakeWidth(c.Changed, c.New));
        EXPECT_EQ(table.Row(c.Changed, 0), c.Row) << c.Other << " " << c.New;
    }
}

TEST(Table, FieldsRefuse) {
    const std::map<char, std::array<const char*, 3>> told = {
        {'n',
         {"The input variable width must be numeric.", "The output variable width must be numeric.",
          "The number of rows must be numeric."}},
        {'p',
         {"The input width must be a positive value.", "The output variable width must be a positive value.",
          "The number of rows must be a positive value."}},
        {'l',
         {"The input width is limited to 32 bits.32", "The output variable width is limited to 32 bits.32",
          "Overflow"}},
        {' ', {"", "", ""}}};
    const std::pair<const char*, char> cases[] = {{"x", 'n'},     {" ", 'n'},      {"-1", 'p'},
                                                  {"0e9", 'p'},   {"&HFFFF", 'p'}, {"1e400", 'l'},
                                                  {"32769", 'l'}, {"&o20", ' '},   {"", ' '}};
    for (const auto& [text, kind] : cases) {
        TableValues table = Table("2", "3", "2");
        EXPECT_EQ(Told(table.TakeWidth(Half::Input, text)), told.at(kind)[0]) << text;
        EXPECT_EQ(Told(table.TakeWidth(Half::Output, text)), told.at(kind)[1]) << text;
        EXPECT_EQ(Told(table.TakeRows(text)), told.at(kind)[2]) << text;
        EXPECT_EQ(table.InputValues.size(), table.RowCount == 0 ? 2 : 16) << "no row is lost";
        EXPECT_EQ(table.IsEmpty(), string(text) != "&o20") << text;
    }
    TableValues table = Table("32.0", "1", "32768.5");
    EXPECT_EQ(table.RowCount, 32768) << "the even one";
    EXPECT_EQ(Told(table.TakeWidth(Half::Input, "32.1")), told.at('l')[0]);
}

TEST(Table, HexadecimalEntry) {
    const char* tooLong = "The value must represent a number of 32 bits or less.";
    const char* noHex =
        "The value must be a hexadecimal number composed of the digits 0 - 9 and the letters A - F. ";
    using Case = std::array<const char*, 4>;  // width, typed, shown, told
    const Case cases[] = {Case{"32", "FFFF", "FFFFFFFFh", ""},
                          Case{"32", "8000", "FFFF8000h", ""},
                          Case{"32", "7FFF", "7FFFh", ""},
                          Case{"32", "10000", "10000h", ""},
                          Case{"4", "FF", "Fh", ""},
                          Case{"8", " a\t", "Ah", ""},
                          Case{"8", "1g", "1h", ""},
                          Case{"8", "h", "0h", ""},
                          Case{"8", "-5", "0h", ""},
                          Case{"8", "", "2h", ""},
                          Case{"8", "i", "2h", noHex},
                          Case{"8", "1 1", "2h", noHex},
                          Case{"4", "123456789", "2h", tooLong}};
    for (const auto& [width, typed, shown, told] : cases) {
        TableValues table = Table("1", width, "3");
        table.OutputValues[2] = string(std::stoul(width) - 2, '0') + "10";
        EXPECT_EQ(table.EnterHex(Half::Output, 2, typed), told);
        EXPECT_EQ(HexText(table.OutputValues[2]), shown) << typed;
    }
}

// Input fields end at 700, input bits at 1960, output fields at 2630, output bits at 3260.
TEST(Table, CellsAtTheirBorders) {
    const TableValues table = Table("4", "2", "3");
    const TableGeometry geometry({105, 120, 255}, 4, 2);
    const auto cellAt = [&](float x, float y) {  // "half row column"
        const auto cell = CellAt(table, geometry, x, y);
        if (!cell) return string("-");
        const string place = " " + std::to_string(cell->Row) + " " + std::to_string(cell->Column);
        return (cell->Half == Half::Input ? "in" : "out") + place;
    };
    string cells;  // 1014.5: 314.5 is rounded to the even one
    for (const float x : {0.F, 699.9F, 700.F, 1014.5F, 1015.F, 1959.F}) cells += cellAt(x, 254) + ",";
    EXPECT_EQ(cells, "in 0 -1,in 0 -1,in 0 0,in 0 0,in 0 1,in 0 3,");
    cells.clear();
    for (const float x : {1960.F, 1961.F, 2629.9F, 2630.F, 3259.F, 3260.F, 3261.F})
        cells += cellAt(x, 0) + ",";
    EXPECT_EQ(cells, "-,out 0 -1,out 0 -1,out 0 0,out 0 1,-,-,");
    cells.clear();
    for (const float y : {254.4F, 255.F, 764.F, 765.F, 766.F}) cells += cellAt(0, y) + ",";
    EXPECT_EQ(cells, "in 0 -1,in 1 -1,in 2 -1,-,-,");
    EXPECT_EQ(CellAt(Table("4", "", "3"), geometry, 0, 0), std::nullopt);
}

TEST(Table, ScrollBarsReachWhatIsHidden) {
    const TableValues table = Table("4", "2", "100");
    const TableGeometry geometry({105, 120, 255}, 4, 2);
    const auto text = [](const ScrollRange& range) {
        return range.IsEnabled ? std::to_string(range.Max) : string("disabled");
    };
    EXPECT_EQ(text(RowScroll(table, geometry, 25499, 0)), "3");
    EXPECT_EQ(text(RowScroll(table, geometry, 25500, 0)), "disabled");
    EXPECT_EQ(text(RowScroll(table, geometry, 30000, -1)), "0");
    EXPECT_EQ(text(ColumnScroll(table, geometry, 3259, 0)), "6");
    EXPECT_EQ(text(ColumnScroll(table, geometry, 3260, 0)), "disabled");
}

TEST(Table, TitlesWithoutRoomAreShortened) {
    const auto fit = [](std::string_view text, std::string_view longText, float room) {
        return FitTitle(text, longText, room, [](std::string_view t) { return 10 * float(t.size()); });
    };
    EXPECT_EQ(fit("[a3..0]", "[a3..0]", 71), "[a3..0]");
    EXPECT_EQ(fit("[a3..0]", "[a3..0]", 70), "[a3...");
    EXPECT_EQ(fit("output", "input", 60), "in...") << "kept: of the input";
    EXPECT_EQ(fit("output", "in", 60), "");
    EXPECT_EQ(fit("\xc3\xa4\xc3\xa4\xc3\xa4", "\xc3\xa4\xc3\xa4\xc3\xa4", 60), "\xc3\xa4...");
}

TEST(Table, Statement) {
    TableValues table = Table("2", "1", "2");
    table.FillInput(Fill::Inc, "0");
    EXPECT_EQ(table.TableText(" a", "b "), "TABLE a => b {\r\n    'b'00 => 'b'0;\r\n    'b'01 => 'b'0;}\r\n");
    EXPECT_EQ(table.TableText("", "").substr(0, 13), "TABLE  =>  {\r");
}

}  // namespace
}  // namespace aids
