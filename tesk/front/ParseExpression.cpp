#include <array>

#include "base/Text.h"
#include "front/Limits.h"
#include "front/ParserCore.h"

namespace front {

namespace {

constexpr std::array<std::string_view, 24> kReserved{
    "APPEND",  "CONDITION", "DEFAULT",  "ELSE",      "FIELD",      "FLD",        "FUNCTION",  "FUSE",
    "IF",      "JUMP",      "MIN",      "NEXT",      "NODE",       "OUT",        "PIN",       "PINNODE",
    "PRESENT", "PROPERTY",  "SEQUENCE", "SEQUENCED", "SEQUENCEJK", "SEQUENCERS", "SEQUENCET", "TABLE"};

constexpr std::array kOperators{Op::Xor, Op::Or, Op::And};
constexpr std::string_view kSigns = "$#&";

std::string Shown(const Token& token) {
    if (token.Is(TokenKind::End)) return "the end of the text";
    if (token.Is(TokenKind::Base)) return "a base prefix";
    return "\"" + std::string(token.Text) + "\"";
}

}  // namespace

bool IsReserved(std::string_view word) {
    for (std::string_view reserved : kReserved)
        if (base::EqualNoCase(word, reserved)) return true;
    return false;
}

struct ExpressionParser::Depth {
    explicit Depth(ExpressionParser& owner) : parser(owner) {
        if (++parser.depth_ > Limits::Nesting) {
            const Place at = parser.lexer_.At();
            --parser.depth_;
            parser.Fail(Code::Nesting, at, "more than " + std::to_string(Limits::Nesting));
        }
    }
    ~Depth() { --parser.depth_; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
    ExpressionParser& parser;
};

void ExpressionParser::Fail(Code code, Place at, std::string_view detail) {
    report_.Add(code, at, detail);
    throw SyntaxFault{};
}

void ExpressionParser::Expected(std::string_view what) {
    Fail(Code::Syntax, lexer_.At(), "expected " + std::string(what) + ", found " + Shown(lexer_.Peek()));
}

bool ExpressionParser::Take(char sign) {
    if (!lexer_.Peek().Is(sign)) return false;
    lexer_.Next();
    return true;
}

bool ExpressionParser::TakeKeyword(std::string_view upper) {
    if (!lexer_.Peek().IsKeyword(upper)) return false;
    lexer_.Next();
    return true;
}

void ExpressionParser::Need(char sign) {
    if (!Take(sign)) Expected(std::string("\"") + sign + "\"");
}

void ExpressionParser::NeedEnd() {
    if (Take(';')) return;
    Fail(Code::Syntax, lexer_.BehindLast(), "expected \";\", found " + Shown(lexer_.Peek()));
}

Token ExpressionParser::NeedName() {
    const Token& token = lexer_.Peek();
    if (!token.Is(TokenKind::Word) || IsDecimal(token.Text)) Expected("a name");
    if (IsReserved(token.Text)) {
        const Place at = lexer_.At();
        Fail(Code::ReservedWord, at, lexer_.Next().Text);  // behind it, or it would begin a statement
    }
    if (token.Text.size() > Limits::NameLength) Fail(Code::NameTooLong, lexer_.At(), token.Text);
    return lexer_.Next();
}

int ExpressionParser::NeedDecimal(int most, int least) {
    if (!lexer_.Peek().Is(TokenKind::Word)) Expected("a decimal number");
    const auto value = ParseDecimal(lexer_.Peek().Text, most);
    const std::string from = least > 0 ? "from " + std::to_string(least) + " to " : "up to ";
    if (!value || *value < least) Expected("a decimal number " + from + std::to_string(most));
    lexer_.Next();
    return *value;
}

ExprId ExpressionParser::Make(Op what, Place at) {
    if (syntax_.Exprs.size() >= Limits::Nodes) Fail(Code::DesignTooLarge, at, "expressions");
    Expr& expr = syntax_.Exprs.emplace_back();
    expr.What = what;
    expr.At = at;
    return static_cast<ExprId>(syntax_.Exprs.size() - 1);
}

void ExpressionParser::SetKids(ExprId id, const std::vector<ExprId>& kids) {
    Expr& expr = syntax_.Exprs[static_cast<std::size_t>(id)];
    expr.FirstKid = static_cast<std::uint32_t>(syntax_.Kids.size());
    expr.KidCount = static_cast<std::uint32_t>(kids.size());
    syntax_.Kids.insert(syntax_.Kids.end(), kids.begin(), kids.end());
}

ExprId ExpressionParser::Expression() {
    const Depth depth(*this);
    return Chain(0);
}

ExprId ExpressionParser::Chain(int level) {
    const auto index = static_cast<std::size_t>(level);
    const Place at = lexer_.At();
    std::vector<ExprId> kids{level == 2 ? Unary() : Chain(level + 1)};
    while (Take(kSigns[index])) kids.push_back(level == 2 ? Unary() : Chain(level + 1));
    if (kids.size() == 1) return kids[0];
    const ExprId id = Make(kOperators[index], at);
    SetKids(id, kids);
    return id;
}

ExprId ExpressionParser::Unary() {
    const Place at = lexer_.At();
    bool negated = false;
    while (Take('!')) negated = !negated;
    const ExprId inner = Colon(Primary());
    if (!negated) return inner;
    const ExprId id = Make(Op::Not, at);
    SetKids(id, {inner});
    return id;
}

ExprId ExpressionParser::Primary() {
    const Token& token = lexer_.Peek();
    if (Take('(')) {
        const ExprId inner = Expression();
        Need(')');
        return inner;
    }
    if (token.Is(TokenKind::Base) || (token.Is(TokenKind::Word) && IsDecimal(token.Text))) return Number();
    if (token.Is(TokenKind::Word) && lexer_.SecondIs('(')) return Call(NeedName());
    if (!token.Is(TokenKind::Word) && !token.Is('[')) Expected("an operand");
    return NameOrList();
}

ExprId ExpressionParser::NameOrList() {
    if (lexer_.Peek().Is('[')) {
        const ExprId list = List();
        TakeExtension(list);
        return list;
    }
    const Place at = lexer_.At();
    const Token name = NeedName();
    const ExprId id = Make(Op::Name, at);
    syntax_.Exprs[static_cast<std::size_t>(id)].Text = name.Text;
    if (name.Text[0] >= '0' && name.Text[0] <= '9' && IsHexadecimal(name.Text)) {
        const std::int32_t constant = AddConstant('h', name);
        syntax_.Exprs[static_cast<std::size_t>(id)].Constant = constant;
    }
    TakeExtension(id);
    return id;
}

Target ExpressionParser::NeedTarget() {
    Target target;
    while (Take('!')) target.Complement = !target.Complement;
    target.Names = NameOrList();
    return target;
}

void ExpressionParser::TakeExtension(ExprId id) {
    if (!Take('.')) return;
    if (!lexer_.Peek().Is(TokenKind::Word)) Expected("an extension");
    const auto extension = ExtensionOf(lexer_.Peek().Text);
    if (!extension) Fail(Code::BadExtension, lexer_.At(), "." + std::string(lexer_.Peek().Text));
    lexer_.Next();
    syntax_.Exprs[static_cast<std::size_t>(id)].Ext = *extension;
}

ExprId ExpressionParser::List() {
    const Place at = lexer_.At();
    Need('[');
    std::vector<ExprId> kids;
    do {
        kids.push_back(ListItem());
        if (kids.size() > Limits::ListMembers) Fail(Code::ListTooLong, at, {});
    } while (Take(','));
    Need(']');
    const ExprId id = Make(Op::List, at);
    SetKids(id, kids);
    return id;
}

ExprId ExpressionParser::ListItem() {
    const Place at = lexer_.At();
    bool negated = false;
    while (Take('!')) negated = !negated;
    const Token name = NeedName();
    const bool span = lexer_.Peek().Is(TokenKind::Range);
    ExprId id = Make(span ? Op::Span : Op::Name, at);
    syntax_.Exprs[static_cast<std::size_t>(id)].Text = name.Text;
    if (span) {
        lexer_.Next();
        if (!lexer_.Peek().Is(TokenKind::Word)) Expected("the end of a range");
        syntax_.Exprs[static_cast<std::size_t>(id)].Last = lexer_.Next().Text;
    } else if (lexer_.Peek().Is('.')) {
        TakeExtension(id);
    }
    if (!negated) return id;
    const ExprId inverted = Make(Op::Not, at);
    SetKids(inverted, {id});
    return inverted;
}

std::int32_t ExpressionParser::AddConstant(char base, const Token& digits) {
    const auto constant = ParseConstant(base, digits.Text);
    if (!constant) {
        const Code code = digits.Text.size() > 18 ? Code::ConstantTooLong : Code::BadNumber;
        Fail(code, lexer_.At(digits), digits.Text);
    }
    syntax_.Constants.push_back(*constant);
    return static_cast<std::int32_t>(syntax_.Constants.size() - 1);
}

std::int32_t ExpressionParser::NeedConstant(bool bareHexadecimal) {
    char base = 'h';
    const bool prefixed = lexer_.Peek().Is(TokenKind::Base);
    if (prefixed) base = lexer_.Next().Text[0];
    const Token& token = lexer_.Peek();
    const bool number = token.Is(TokenKind::Word) &&
                        (prefixed || (IsHexadecimal(token.Text) &&
                                      (bareHexadecimal || (token.Text[0] >= '0' && token.Text[0] <= '9'))));
    if (!number) Expected("a number");
    return AddConstant(base, lexer_.Next());
}

ExprId ExpressionParser::Number() {
    const ExprId id = Make(Op::Number, lexer_.At());
    const std::int32_t constant = NeedConstant(false);
    syntax_.Exprs[static_cast<std::size_t>(id)].Constant = constant;
    return id;
}

ExprId ExpressionParser::Call(const Token& name) {
    const ExprId id = Make(Op::Call, lexer_.At(name));
    syntax_.Exprs[static_cast<std::size_t>(id)].Text = name.Text;
    Need('(');
    std::vector<ExprId> kids;
    if (!lexer_.Peek().Is(')')) do
            kids.push_back(Expression());
        while (Take(','));
    Need(')');
    SetKids(id, kids);
    return id;
}

ExprId ExpressionParser::Colon(ExprId left) {
    if (!Take(':')) return left;
    const Token& token = lexer_.Peek();
    const Place at = lexer_.At();
    ExprId id = -1;
    if (token.Is('&') || token.Is('#') || token.Is('$')) {
        id = Make(Op::Fold, at);
        syntax_.Exprs[static_cast<std::size_t>(id)].Sign = lexer_.Next().Text[0];
    } else if (Take('[')) {
        id = Make(Op::InRange, at);
        const std::int32_t low = NeedConstant(true);
        if (!lexer_.Peek().Is(TokenKind::Range)) Expected("\"..\"");
        lexer_.Next();
        const std::int32_t high = NeedConstant(true);
        Need(']');
        (void)high;  // directly behind the low one
        syntax_.Exprs[static_cast<std::size_t>(id)].Constant = low;
    } else {
        id = Make(Op::Equals, at);
        const std::int32_t constant = NeedConstant(true);
        syntax_.Exprs[static_cast<std::size_t>(id)].Constant = constant;
    }
    SetKids(id, {left});
    return id;
}

}  // namespace front
