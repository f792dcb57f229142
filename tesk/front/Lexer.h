#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "front/Report.h"
#include "front/Source.h"

namespace front {

enum class TokenKind { End, Word, Base, Sign, Range, Arrow, Bad };

struct Token {
    TokenKind Kind = TokenKind::End;
    std::string_view Text;   // a view into the source's lines; of a Base the letter between the quotes
    std::size_t Line = 0;    // index into the source's lines
    std::size_t Column = 0;  // from 0

    bool Is(char sign) const { return Kind == TokenKind::Sign && Text[0] == sign; }
    bool Is(TokenKind kind) const { return Kind == kind; }
    bool IsKeyword(std::string_view upper) const;
};

// Cuts the expanded text into tokens, one ahead.
class Lexer {
  public:
    Lexer(const Source& source, Report& report) : source_(source), report_(report) { Next(); }

    const Token& Peek() const { return token_; }
    Token Next();  // gives the token ahead and moves on

    // Whether the token behind the one ahead begins with this character.
    bool SecondIs(char c) const;

    // For header statements: the text behind the token ahead up to the next ";" (not included), lines joined
    // with a blank. Then the ";" is ahead, or the end, or the first word of a line that `stop` knows.
    std::string RawText(bool (*stop)(std::string_view word));

    Place At(const Token& token) const;
    Place At() const { return At(token_); }
    Place BehindLast() const;  // of the last token that Next gave

  private:
    void SkipBlanks();
    Token Scan();
    Token Make(TokenKind kind, std::size_t length);

    const Source& source_;
    Report& report_;
    Token token_;
    Token last_;
    std::size_t line_ = 0;
    std::size_t column_ = 0;
};

}  // namespace front
