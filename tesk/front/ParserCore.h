#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "front/Lexer.h"
#include "front/Parser.h"

// Inside the parser.
namespace front {

// A statement that cannot be read on; the fault is reported already. Caught where the next one begins.
struct SyntaxFault {};

// Tokens and expressions; the statements build on it.
class ExpressionParser {
  public:
    ExpressionParser(const Source& source, Report& report, Syntax& syntax)
        : lexer_(source, report), report_(report), syntax_(syntax) {}

  protected:
    [[noreturn]] void Fail(Code code, Place at, std::string_view detail);
    [[noreturn]] void Expected(std::string_view what);  // says what stands there instead
    bool Take(char sign);
    bool TakeKeyword(std::string_view upper);
    void Need(char sign);
    Token NeedName();
    void NeedEnd();  // the ";" of a statement; a missing one is reported where the statement ends
    int NeedDecimal(int most, int least = 0);

    ExprId Expression();
    ExprId NameOrList();  // with extension
    Target NeedTarget();  // [!]name or list, with extension
    std::int32_t NeedConstant(bool bareHexadecimal);

    Lexer lexer_;
    Report& report_;
    Syntax& syntax_;

  private:
    struct Depth;

    ExprId Make(Op what, Place at);
    void SetKids(ExprId id, const std::vector<ExprId>& kids);
    ExprId Chain(int level);  // 0: "$", 1: "#", 2: "&"
    ExprId Unary();
    ExprId Primary();
    ExprId Number();
    ExprId Call(const Token& name);
    ExprId List();
    ExprId ListItem();
    void TakeExtension(ExprId id);
    ExprId Colon(ExprId left);
    std::int32_t AddConstant(char base, const Token& digits);

    std::size_t depth_ = 0;
};

}  // namespace front
