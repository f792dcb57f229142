#include <array>
#include <utility>

#include "base/Text.h"
#include "convert/Converters.h"
#include "convert/Equations.h"
#include "convert/PldFile.h"

// Pin list and equations, the form that docs/help/Import.md tells.
namespace convert {
namespace {

constexpr std::array<std::string_view, 1> Signs{":="};
constexpr std::array Operators{
    BinaryOperator{"&", Operator::And, 3}, BinaryOperator{"AND", Operator::And, 3},
    BinaryOperator{"|", Operator::Or, 2},  BinaryOperator{"#", Operator::Or, 2},
    BinaryOperator{"OR", Operator::Or, 2}, BinaryOperator{"$", Operator::Xor, 1},
    BinaryOperator{"^", Operator::Xor, 1}, BinaryOperator{"XOR", Operator::Xor, 1}};
const Language Ontesk{Signs, "//", 0, "", Operators, "!", "NOT"};

class Reader : public EquationReader {
  public:
    Reader(std::span<const Token> tokens, PldFile& file) : EquationReader(tokens, Ontesk, file) {}

    void Read() {
        Need("PINS");
        while (!Is("NODES") && !Is("EQUATIONS")) ReadPin();
        if (Take("NODES"))
            while (!Is("EQUATIONS")) DeclareNode(NeedWord("a node"));
        Need("EQUATIONS");
        while (!Is("END")) ReadEquation();
        Need("END");
        if (Peek().Kind != TokenKind::End) FailHere("nothing may follow END");
        Finish();
    }

  private:
    void ReadPin() {
        const int number = Take("-") ? 0 : NeedNumber(MaxPin);
        const bool activeLow = Take("!");
        DeclarePin(NeedWord("a pin's name"), number, activeLow);
    }

    void ReadEquation() {
        const bool complement = Take("!");
        const int line = Line();
        const std::string name = KnownName(NeedWord("an equation"));
        std::string extension;
        if (Take(".")) extension = base::Upper(NeedWord("an extension"));
        if (extension.empty() && Take(":="))
            extension = "D";
        else
            Need("=");
        if (!extension.empty() && !IsExtension(extension))
            Fail(line, "the extension " + Shown(extension) + " is not taken");
        const Group value = Expression();
        Need(";");
        Assign(name, extension, complement, value.Bits.front(), line);
    }

    Group Operand() override {
        if (Is("0") || Is("1")) return {{Formula::Constant(Next().Text == "1")}};
        const std::string name = KnownName(NeedWord("a name"));
        if (!Take(".")) return {{Formula::Name(name)}};
        const std::string extension = base::Upper(NeedWord("an extension"));
        if (extension != "IO" && extension != "DQ")
            FailBehind("the extension " + Shown(extension) + " in a formula is not taken");
        return {{Formula::Name(name + "." + extension)}};
    }
};

}  // namespace

Conversion ConvertOntesk(std::string_view text, const std::string& name) {
    PldFile file;
    file.Name = name;
    file.Origin = "Made from the pin list and equations " + name;
    const std::array<std::pair<std::string_view, std::string*>, 7> heads{{{"NAME", &file.Name},
                                                                          {"PARTNO", &file.Partno},
                                                                          {"DATE", &file.Date},
                                                                          {"REVISION", &file.Revision},
                                                                          {"DESIGNER", &file.Designer},
                                                                          {"COMPANY", &file.Company},
                                                                          {"DEVICE", &file.Device}}};
    int line = 1;
    for (; !text.empty(); ++line) {
        std::string_view rest = text;
        const std::string_view whole = base::TrimView(base::TakeLine(rest));
        const std::string_view word = whole.substr(0, whole.find_first_of(" \t"));
        if (base::EqualNoCase(word, "PINS")) break;
        bool known = whole.empty() || base::StartsWith(whole, "//");
        for (const auto& [head, value] : heads) {
            if (!base::EqualNoCase(word, head)) continue;
            *value = base::TrimView(whole.substr(word.size()));
            known = true;
        }
        if (!known) Fail(line, "a head or PINS is expected, not " + Shown(word));
        text = rest;
    }
    const std::vector<Token> tokens = Cut(text, Ontesk, line);
    Reader(tokens, file).Read();
    return {file.Text(), {}};
}

}  // namespace convert
