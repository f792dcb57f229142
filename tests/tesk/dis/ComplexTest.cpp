#include <gtest/gtest.h>

#include "base/PosixFile.h"
#include "base/Text.h"
#include "dis/Disassembly.h"
#include "dis/Trial.h"
#include "tesk/fit/Designs.h"

namespace {

const std::string header =
    "Name T; Partno 1; Date 1; Revision 1; Designer 1; Company 1; Assembly 1; Location 1; Device C1502T44;\n";

// Of the fuses that a design compiles to.
dis::Disassembly FromDesign(const std::string& body, const dis::PinNames& names = {}) {
    dis::Request request;
    request.Names = names;
    request.ComplexLibrary = base::ReadWhole(CPLDS_DL, 1u << 20);
    const auto library = test::FullSetText();
    dis::Trial trial(header + body, library, request.ComplexLibrary);
    const auto* fit = trial.Compile();
    if (fit == nullptr) return {{}, trial.FirstError(), {}, {}};
    proof::JedecFile file;
    file.Fuses = fit->Fuses;
    file.FuseCount = fit->Fuses.size();
    file.Notes = {"DEVICE C1502T44"};
    return dis::Disassemble(file, library, request);
}

// The equations and properties, without declarations.
std::string Statements(const std::string& text) {
    std::string statements;
    for (const auto line : base::LineViews(std::string_view(text).substr(text.find("*/") + 2)))
        if (!line.empty() && !line.starts_with("PIN ")) (statements += line) += "\n";
    return statements;
}

// The text is proved to be the fuses before it is given without a warning.
TEST(DisComplex, GivesEquationsBack) {
    const auto done = FromDesign(
        "PIN 37=CLK; PIN [2,3]=[A,B]; PIN [5,6,8]=[X,Q,T]; PINNODE 20=N; PROPERTY SLEW X = FAST;\n"
        "X = A & B; X.OE = N; Q.D = A # B & Q; Q.CK = CLK; Q.CE = A; Q.AR = B & N; T.T = Q; T.CK = !CLK;\n"
        "N.D = B; N.CK = A & B; PROPERTY SIGNATURE = 12;",
        {{2, {"A", false}}, {3, {"B", false}}, {37, {"CLK", false}}});
    for (const auto& message : done.Messages) ADD_FAILURE() << model::Headline(message);
    EXPECT_EQ(done.Device, "C1502T44");
    EXPECT_EQ(Statements(done.Pld), R"(PINNODE 20 = N20 ;
PROPERTY SIGNATURE = 'h'0012 ;
PROPERTY SLEW P5 = FAST ;
P5 = B & A ;
P5.OE = N20 ;
P6.D = A # B & P6 ;
P6.CK = CLK ;
P6.CE = A ;
P6.AR = B & N20 ;
P8.T = P6 ;
P8.CK = !CLK ;
N20.D = B ;
N20.CK = B & A ;
)") << done.Pld;
}

TEST(DisComplex, RefusesWhatItDoesNotKnow) {
    dis::Request request;
    request.ComplexLibrary = base::ReadWhole(CPLDS_DL, 1u << 20);
    proof::JedecFile file;
    file.FuseCount = 16'808;
    file.Fuses.assign(file.FuseCount, false);  // reserved fuses are 1
    for (const char* device : {"", "C1504", "C1502P84"}) {
        request.Device = device;
        const auto done = dis::Disassemble(file, test::FullSetText(), request);
        ASSERT_EQ(done.Messages.size(), 1u) << device;
        EXPECT_EQ(done.Messages.front().Number, "7601tc") << done.Messages.front().Text;
        EXPECT_TRUE(done.Pld.empty());
    }
}

}  // namespace
