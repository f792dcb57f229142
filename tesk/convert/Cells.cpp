#include <array>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Equations.h"
#include "convert/Failure.h"
#include "convert/Netlist.h"

namespace convert {
namespace {

constexpr std::array Operators{BinaryOperator{"&", Operator::And, 3}, BinaryOperator{"#", Operator::Or, 2},
                               BinaryOperator{"$", Operator::Xor, 1}};
const Language Cells{{}, "//", 0, {}, Operators, "!", {}};

class Reader : public TokenReader {
  public:
    explicit Reader(std::span<const Token> tokens) : TokenReader(tokens, Cells) {}

    std::map<std::string, Cell> Read() {
        std::map<std::string, Cell> cells;
        while (Peek().Kind != TokenKind::End) {
            Need("CELL");
            std::vector<std::string> names{base::Upper(NeedWord("a cell"))};
            while (Take(",")) names.push_back(base::Upper(NeedWord("a cell")));
            const Cell cell = ReadCell();
            for (const std::string& name : names)
                if (!cells.emplace(name, cell).second) FailHere("a second cell " + Shown(name));
        }
        return cells;
    }

  private:
    Cell ReadCell() {
        Cell cell;
        Need("PINS");
        while (!Take(";")) {
            const std::string number(NeedWord("a pin"));
            cell.Pins[number] = base::Upper(NeedWord("a pin's name"));
        }
        while (!Is("CELL") && Peek().Kind != TokenKind::End) {
            CellEquation equation;
            equation.Target = base::Upper(NeedWord("an equation"));
            if (Take(".")) equation.Extension = base::Upper(NeedWord("an extension"));
            if (!equation.Extension.empty() && !IsExtension(equation.Extension))
                FailBehind("the extension " + Shown(equation.Extension) + " is not taken");
            Need("=");
            while (!Is(";") && Peek().Kind != TokenKind::End) equation.Value.push_back(Next());
            equation.Value.push_back({TokenKind::End, "the end of the equation", Line()});
            Need(";");
            cell.Equations.push_back(std::move(equation));
        }
        return cell;
    }

    Group Operand() override { FailHere("no formula is read here"); }
};

// "SN74LS00N" is "00": the digits behind 74 or 54 and the letters of the family.
std::string FunctionOf(std::string_view type) {
    const std::string upper = base::Upper(type);
    std::size_t at = 0;
    while (at < upper.size() && !base::IsDigitChar(upper[at])) ++at;
    const std::string_view family = std::string_view(upper).substr(at, 2);
    if (family != "74" && family != "54") return {};
    at += 2;
    while (at < upper.size() && upper[at] >= 'A' && upper[at] <= 'Z') ++at;
    std::size_t end = at;
    while (end < upper.size() && base::IsDigitChar(upper[end])) ++end;
    return upper.substr(at, end - at);
}

}  // namespace

const Language& CellLanguage() { return Cells; }

CellLibrary::CellLibrary(std::string_view text) { cells_ = Reader(Cut(text, Cells)).Read(); }

const Cell* CellLibrary::Find(std::string_view type) const {
    const auto at = cells_.find(FunctionOf(type));
    return at == cells_.end() ? nullptr : &at->second;
}

}  // namespace convert
