#include <gtest/gtest.h>

#include "aids/MacroLibrary.h"
#include "aids/MacroSources.h"
#include "base/RunTimeError.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"

namespace {

struct MacroReaders : testing::Test {
    // "name(args){body}" for each record, then the names, with line ends as "/".
    static std::string Told(const aids::MacroTable& table) {
        std::string told;
        for (const aids::MacroRecord& macro : table.Records)
            told += macro.Name + "(" + macro.Args + "){" + macro.Definition + "}";
        for (const std::string& name : table.Names) told += " " + name;
        return base::ReplaceAll(told, "\r\n", "/");
    }
    std::string FromLibrary(const std::string& text) {
        Files.Files["C:\\LIB\\X.MAC"] = text;
        aids::MacroTable table;
        Error = doubles::ErrorOf([&] { aids::LoadMacroFile(Files, "C:\\LIB\\X.MAC", table); });
        return Told(table);
    }
    std::string FromDesign(const std::string& text) {
        aids::MacroTable table;
        aids::MacroSources sources(Files, Boxes, "C:\\WORK\\", table);
        Error = doubles::ErrorOf([&] { sources.ReadDesign(text); });
        return Told(table);
    }
    std::string FromInclude(const std::string& text) {
        Files.Files["C:\\WORK\\X.MAC"] = text;
        return FromDesign("/* */ $include  X.MAC \r\n");
    }

    doubles::MemoryFiles Files;
    doubles::Dialogs Boxes;
    int Error = 0;
};

}  // namespace

TEST_F(MacroReaders, TakeTheSameFileEachInItsWay) {
    const struct {
        std::string Text, Library, Include, Design;
    } cases[] = {
        {"head\r\n$MACRO A x  y \r\n  one\r\n$MEND\r\ntail\r\n", "A(x  y){one/} A", "A(x  y){head/one/} A",
         "A(x  y){\n  one/} A"},
        {"$macro a b\r\n$mend\r\n", "a(b){} a", "a(b){} a", "a(b){} a"},
        {"$MACRO NONE\r\n$MEND\r\n", "(NONE){} ", "(NONE){} ", "(NONE){} "},
        {"$MACRO A $MEND\r\nx\r\n$MEND\r\n", "A($MEND){x/} A", "A($MEND){x/} A", "A($MEND){x/} A"},
        // Found anywhere in a line, a comment included; the header is cut by count.
        {"/* $MACRO A b */\r\nx\r\n$MEND\r\n", "CRO(A b */){x/} CRO", "CRO(A b */){x/} CRO", "A(b */){x/} A"},
        {"$MACRO A b\r\nx\r\n", "A(b){x/} A", "A(b){x/} A", "A(b){x/} A"},  // no end
        {"$MACRO A b\r\nx\r\n$MACRO C d\r\ny\r\n$MEND\r\n", "C(d){x/y/} A C", "C(d){x/y/} A C",
         "C(d){x/y/}C(d){y/} A C C"},
        // Blanks at the ends of a line lead the walk over a design astray.
        {"$MACRO A b\r\n  x\r\ny\r\n$MEND\r\n", "A(b){x/y/} A", "A(b){x/y/} A", "A(b){x//y/} A"},
        {"$MEND\r\n\xff\x01\r\n$MACRO A \xe4\r\n\x80\r\n$MEND", "A(\xe4){\x80/} A", "(){}A(\xe4){\x80/} A",
         "A(\xe4){\x80/} A"},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FromLibrary(c.Text), c.Library) << c.Text;
        EXPECT_EQ(FromInclude(c.Text), c.Include) << c.Text;
        EXPECT_EQ(FromDesign(c.Text), c.Design) << c.Text;
        EXPECT_EQ(Error, 0) << c.Text;
    }
}

TEST_F(MacroReaders, NestedIncludesLoseTheLastLetter) {
    Files.Files["C:\\WORK\\ Y.MA"] = "$MACRO Y a\r\n$MEND\r\n";
    EXPECT_EQ(FromInclude("$INCLUDE Y.MAC\r\n$MACRO X b\r\n$MEND\r\n"), "Y(a){}X(b){} Y X");
    EXPECT_EQ(FromInclude("$INCLUDE Z.MAC\r\n"), "");
    EXPECT_EQ(
        Boxes.LastText(),
        "Unable to locate the include file: C:\\WORK\\ Z.MA\r\nMake sure the specified file is present.");
    FromInclude("$INCLUDE\r\n");
    EXPECT_EQ(Error, base::errInvalidCall);
    Files.Files["C:\\WORK\\ S.MA"] = "$MACRO S a\r\n$MEND\r\n$INCLUDE S.MAC\r\n";
    EXPECT_EQ(FromInclude("$INCLUDE S.MAC\r\n"), "S(a){} S");  // what was read before
    EXPECT_EQ(Error, 28);
}

TEST_F(MacroReaders, StopAtTheEndOfTheTable) {
    std::string all;
    for (int i = 0; i < 101; ++i) all += "$MACRO M" + std::to_string(i) + " a\r\n$MEND\r\n";
    const std::string full = FromLibrary(all);
    EXPECT_EQ(Error, 0);
    EXPECT_EQ(FromLibrary(all + "$MACRO MORE a\r\n$MEND\r\n"), full);
    EXPECT_EQ(Error, base::errSubscript);
    EXPECT_EQ(FromInclude(all + "$MACRO MORE a\r\n$MEND\r\n"), full);
    EXPECT_EQ(Error, base::errSubscript);
    // Each `$MACRO` without an end is read to the end of the text.
    std::string endless;
    for (int i = 0; i < 1000; ++i) endless += "$MACRO M a\r\n";
    FromDesign(endless);
    EXPECT_EQ(Error, 7);
}

TEST_F(MacroReaders, CutArgumentsIntoEntries) {
    EXPECT_EQ(doubles::Joined(aids::ArgumentEntries(" clk  d ")), "clk:NC|:NC|d:NC|");
    EXPECT_TRUE(aids::ArgumentEntries("").empty());
    EXPECT_EQ(aids::ReferenceText("COUNT", {"a:CLK", "b:NC", "c:x:y"}), "COUNT CLK NC x:y;\r\n");
}
