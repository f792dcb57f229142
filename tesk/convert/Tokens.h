#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "convert/Formula.h"

// Words and signs of the foreign languages, and their formulas.
namespace convert {

enum class TokenKind { End, Word, Text, Sign };

struct Token {
    TokenKind Kind = TokenKind::End;
    std::string_view Text;  // of a Text without its quotes
    int Line = 0;
};

struct BinaryOperator {
    std::string_view Text;  // a sign, or a word in upper case
    Operator What = Operator::And;
    int Binding = 0;  // more binds first
};

// What makes a language: how it is cut into words, and its operators.
struct Language {
    std::span<const std::string_view> Signs;  // those of more than one character, the longer ones first
    std::string_view Comment;                 // what begins a comment to the line's end
    char Bracket = 0;                         // begins and ends a comment, 0: there is none
    std::string_view Quotes;
    std::span<const BinaryOperator> Operators;
    std::string_view NotSign, NotWord;
    bool HasGroups = false;  // "(a, b)" is a group of two
};

// Throws Failure where a quote or comment stays open. Views go into the text.
std::vector<Token> Cut(std::string_view text, const Language& language, int firstLine = 1);

// Walks along tokens that outlive it.
class TokenReader {
  public:
    TokenReader(std::span<const Token> tokens, const Language& language)
        : tokens_(tokens), language_(language) {}
    virtual ~TokenReader() = default;

  protected:
    const Token& Peek(std::size_t ahead = 0) const;
    const Token& Next();
    int Line() const { return Peek().Line; }
    bool Is(std::string_view text, std::size_t ahead = 0) const;  // a sign, or a word in any case
    bool Take(std::string_view text);
    void Need(std::string_view text);
    std::string_view NeedWord(std::string_view what);  // `what` names it in the failure
    int NeedNumber(int most);
    void Skip(std::string_view upTo);  // past the next such sign
    // At the token ahead; at the one that was taken last.
    [[noreturn]] void FailHere(const std::string& what) const;
    [[noreturn]] void FailBehind(const std::string& what) const;

    // A formula by the language's operators; Operand reads what stands between them.
    Group Expression(int binding = 0);
    virtual Group Operand() = 0;

  private:
    Group Factor();
    const BinaryOperator* OperatorAhead() const;

    std::span<const Token> tokens_;
    const Language& language_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace convert
