#include <gtest/gtest.h>

#include <random>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "editor/SymbolTable.h"
#include "support/Doubles.h"

namespace {

class SymbolTable : public testing::Test {
  protected:
    doubles::System desktop_;
    doubles::Dialogs boxes_;
    std::vector<std::string> status_;
    editor::SymbolDesk desk_{desktop_, boxes_, [this](const std::string& text) { status_.push_back(text); }};
    session::Symbols symbols_;

    void Load(const std::string& text) { editor::LoadSymbols(desk_, base::ToCrLf(text), symbols_); }
    std::string Names() const {
        std::string names;
        for (std::size_t i = 1; i <= symbols_.Count(); ++i) names += (i > 1 ? " " : "") + symbols_.Item(i);
        return names;
    }
    std::string NamesOf(const std::string& text) {
        symbols_.Clear();
        Load(text);
        return Names();
    }
};

std::string Box(const std::string& declaration) {
    return "Possible syntax error in symbol declaration: " + declaration +
           "Unable to add symbol(s) to the symbol list.";
}

}  // namespace

TEST_F(SymbolTable, NamesOfADesign) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"Name COUNT8 ;\na = b & c ;\n", ""},
        // Where a declaration is found, and where its name lies in the line.
        {"PIN 1 = clk ; /* clock */\n", "clk"},
        {"pin=a;b;\n", "a"},
        {"PIN 1 = \t a \t;\n", "a"},
        {"spin = a;\n", "a"},
        {"PINNODE 10 = b;\n", "b"},
        {"x = 1 ; PIN 2 = c ;\n", "c"},
        {"PIN 1 = a ; PIN 2 = b ;\n", "a"},
        {"PIN 1 = a\nPIN 2 : b ;\n", ""},
        {"PIN 1 = ;\n", ""},
        // The line behind a declaration is searched from its fourth character on.
        {"PIN 1 = a;\nPIN 2 = b;\nPIN 3 = c;\n", "a c"},
        {"PIN 1 = a;\n  PIN 2 = b;\n\nPIN 3 = c;\n", "a c"},
        {"PIN 1 = a;\n   PIN 2 = b;\n", "a b"},
        {"PIN 1 = a;\nNODE b;\nNODE = c;\nFIELD d = e;\n", "a e d"},
        // Comments: names in them count, but for the one span that ends in "*\".
        {"/* PIN 1 = a; */\n", "a"},
        {"/* PIN 1 = a; *\\\n   PIN 2 = b;\n", "b"},
        {"/* PIN 1 = a;\n*/ PIN 2 = b; *\\\n/* PIN 3 = c; *\\\n", "c"},
        {"*\\ PIN 1 = a; /*\n", "a"},
        // What is cut off a name.
        {"PIN 1 = !reset;\n", "reset"},
        {"PIN 1 = !!data.d.x;\n", "!data"},
        {"PIN [1,2] = a,b;\n", "a,b"},
        // Lists.
        {"PIN = [d1,d2,d3];\n", "d1 d3 d2"},
        {"PIN = [ d1, !d2 ,x.y];\n", "d1 x d2"},
        {"PIN = [a,];\n", "a"},
        {"PIN = [a0..1,b];\n", "a0 b a1"},
        // Ranges.
        {"PIN = [a0..3];\n", "a0 a2 a3 a1"},
        {"PIN = [a3..0];\n", "a0 a2 a3 a1"},
        {"PIN = [a08..a10];\n", "a10 a8 a9"},
        {"PIN = [a100..a102];\n", "a1100 a1102 a1101"},
        {"PIN = [a2..12];\n", ""},
        {"PIN = [a10..9];\n", ""},
        {"PIN = [ab..cd];\n", "a1"},
        {"PIN = [x.d0..7];\n", "x"},
        // Fields: the own name and the members.
        {"FIELD count = [q1..0];\n", "count q1 q0"},
        {"FIELD\tf = a ;\n", "a f"},
        {"FIELD f = a\nFIELD ; g\n", ""},
        {"FIELD=[a,b];\n", "a b"},
        {"FIELD=[a, b];\n", "a b"},
        // Order, and names that differ in case.
        {"NODE = [a,b,c,d];\n", "a c d b"},
        {"NODE = [b,A,a,B];\n", "A B b"},
        {"NODE = [a_b,aab,A_c];\n", "a_b A_c aab"},
    };
    for (const auto& [text, names] : cases) EXPECT_EQ(NamesOf(text), names) << text;
    EXPECT_TRUE(boxes_.Shown.empty());
    NamesOf("PIN 1 = ;\n");
    EXPECT_EQ(symbols_.Count(), 1u) << "a declaration without a name makes an empty one";
}

TEST_F(SymbolTable, ABadListIsToldAndTheScanGoesOn) {
    Load("PIN = [a ;\n   PIN = [b];\n   PIN = [];\n   PIN = [c d] ;\n   PIN = ok ;\n");
    EXPECT_EQ(Names(), "ok");
    EXPECT_EQ(boxes_.TakeTexts(), doubles::Joined({Box("[a"), Box("[b]"), Box("[]"), Box("[c d]")}));
}

TEST_F(SymbolTable, WhatEndsAScan) {
    const std::pair<const char*, int> cases[] = {
        {"PIN 1 = a ;\n   PIN 2 = b ;", base::errInvalidCall},
        {"PIN 1 = a ;\n   /* spinning", base::errInvalidCall},
        {"PIN 1 = a ;\n   PIN = [12..15] ;\n", base::errInvalidCall},
        {"PIN 1 = a ;\n   PIN = [d..3] ;\n", base::errInvalidCall},
        {"PIN 1 = a ;\n   PIN = [..d3] ;\n", base::errInvalidCall},
        {"PIN 1 = a ;\n   PIN = [d0..99999999999] ;\n", base::errOverflow},
        {"PIN 1 = a ;\n   PIN = [x.d0..2000000000] ;\n", 7},
    };
    for (const auto& [text, error] : cases) {
        symbols_.Clear();
        EXPECT_EQ(doubles::ErrorOf([&] { Load(text); }), error) << text;
        EXPECT_EQ(Names(), "a") << text;
        EXPECT_FALSE(desktop_.Hourglass);
        EXPECT_EQ(status_.back(), " ");
    }
}

TEST_F(SymbolTable, AnUpdateStartsAnewAndALoadAddsOn) {
    Load("PIN 1 = a ;\n");
    Load("PIN 1 = b ;\n");
    EXPECT_EQ(Names(), "a b");
    editor::ResetSymbols(desk_, "PIN 1 = c ;\r\n", symbols_);
    EXPECT_EQ(Names(), "c");
    EXPECT_EQ(status_,
              (std::vector<std::string>{"Loading Symbol Table...", " ", "Loading Symbol Table...", " ",
                                        "Resetting Symbol Table...", "Loading Symbol Table...", " "}));
}

// Every head, every tail and every piece taken out: names, the box about a bad list, or error 5.
TEST_F(SymbolTable, DesignsCutAnywhere) {
    const std::string design = base::ToCrLf(
        "Name A ;\nPIN 1 = !clk ;\n   PIN [2..9] = [d0..7] ;\n   PINNODE = [x, !y.ext , z] ;\n/* node *\\ "
        "*/\n"
        "FIELD count = [q3..q0] ;\n   Field both = [a1..2,b12] ;");
    const auto load = [&](const std::string& text) {
        symbols_.Clear();
        const int error = doubles::ErrorOf([&] { editor::LoadSymbols(desk_, text, symbols_); });
        EXPECT_TRUE(error == 0 || error == base::errInvalidCall) << text;
    };
    for (std::size_t from = 0; from <= design.size(); ++from) {
        load(design.substr(from));
        for (std::size_t count = 1; from + count <= design.size(); ++count) {
            load(std::string(design).erase(from, count));
        }
    }
    for (const auto& box : boxes_.Shown) EXPECT_TRUE(box.Text.starts_with(Box("").substr(0, 45)));
}

// The list against the rules played on a plain row of names, beyond the size of several blocks.
TEST(Symbols, KeepTheOrderOfAPlainRow) {
    std::vector<std::string> row;
    const auto slotOf = [&](const std::string& name) {
        std::size_t low = 0;
        std::size_t high = row.size() - 1;
        std::size_t middle = high / 2;
        for (std::size_t last = row.size(); middle != last && row[middle] != name;) {
            if (row[middle] > name) high = middle;
            if (row[middle] < name) low = middle;
            last = middle;
            middle = low + (high - low) / 2;
        }
        return middle;
    };
    session::Symbols symbols;
    std::mt19937 random(8);
    for (int i = 0; i < 6000; ++i) {
        std::string name = (random() % 2 == 0 ? "n" : "N") + std::to_string(random() % 4000);
        symbols.InsertSymbol(name);
        const std::size_t slot = row.empty() ? 0 : slotOf(name);
        const std::string folded = base::Lower(name);
        const bool isNew = row.empty() || base::Lower(row[slot]) != folded;
        const bool isBehind = !row.empty() && base::Lower(row[slot]) < folded;
        if (isNew) row.insert(row.begin() + static_cast<std::ptrdiff_t>(slot + (isBehind ? 1 : 0)), name);
    }
    ASSERT_EQ(symbols.Count(), row.size());
    ASSERT_GT(row.size(), 2000u);
    for (std::size_t i = 0; i < row.size(); ++i) ASSERT_EQ(symbols.Item(i + 1), row[i]) << i;
    for (const std::string& name : row) EXPECT_EQ(symbols.FindSymbolSlot(name), slotOf(name) + 1);
    EXPECT_THROW(symbols.Item(0), base::RunTimeError);
    EXPECT_THROW(symbols.Item(row.size() + 1), base::RunTimeError);
}
