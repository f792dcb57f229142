#include "front/Lexer.h"

#include "base/Text.h"

namespace front {

bool Token::IsKeyword(std::string_view upper) const {
    return Kind == TokenKind::Word && base::EqualNoCase(Text, upper);
}

void Lexer::SkipBlanks() {
    while (line_ < source_.Lines.size()) {
        const std::string& text = source_.Lines[line_].Text;
        while (column_ < text.size() && IsBlank(text[column_])) ++column_;
        if (column_ < text.size()) return;
        ++line_;
        column_ = 0;
    }
}

Token Lexer::Make(TokenKind kind, std::size_t length) {
    Token token{kind, std::string_view(source_.Lines[line_].Text).substr(column_, length), line_, column_};
    column_ += length;
    return token;
}

Token Lexer::Scan() {
    SkipBlanks();
    if (line_ >= source_.Lines.size()) {
        Token end;
        end.Line = source_.Lines.size();
        return end;
    }
    const std::string_view rest = std::string_view(source_.Lines[line_].Text).substr(column_);
    if (IsWordChar(rest[0])) return Make(TokenKind::Word, FirstWord(rest).size());
    if (rest[0] == '\'' && rest.size() > 2 && rest[2] == '\'') {
        Token base = Make(TokenKind::Base, 3);
        base.Text = base.Text.substr(1, 1);
        return base;
    }
    if (rest.substr(0, 2) == "..") return Make(TokenKind::Range, 2);
    if (rest.substr(0, 2) == "=>") return Make(TokenKind::Arrow, 2);
    if (std::string_view("!&#$()[]{},;:.=").find(rest[0]) != std::string_view::npos)
        return Make(TokenKind::Sign, 1);
    std::size_t length = 1;  // a run of bytes that belong nowhere is one fault
    while (length < rest.size() && (rest[length] & 0x80) != 0 && (rest[0] & 0x80) != 0) ++length;
    return Make(TokenKind::Bad, length);
}

Token Lexer::Next() {
    const Token result = token_;
    last_ = token_;
    token_ = Scan();
    while (token_.Kind == TokenKind::Bad && !report_.Full()) {
        report_.Add(Code::BadCharacter, At(), "\"" + std::string(token_.Text.substr(0, 16)) + "\"");
        token_ = Scan();
    }
    if (report_.Full()) token_ = Token{TokenKind::End, {}, source_.Lines.size(), 0};
    return result;
}

bool Lexer::SecondIs(char c) const {
    Lexer ahead = *this;
    ahead.SkipBlanks();
    return ahead.line_ < source_.Lines.size() && source_.Lines[ahead.line_].Text[ahead.column_] == c;
}

std::string Lexer::RawText(bool (*stop)(std::string_view word)) {
    std::string result;
    while (line_ < source_.Lines.size()) {
        const std::string_view rest = std::string_view(source_.Lines[line_].Text).substr(column_);
        const std::size_t end = rest.find(';');
        if (!result.empty() && !rest.empty()) result += ' ';
        result += rest.substr(0, end);
        if (end != std::string_view::npos) {
            column_ += end;
            break;
        }
        ++line_;
        column_ = 0;
        if (line_ < source_.Lines.size() && stop(FirstWord(source_.Lines[line_].Text))) break;
    }
    Next();
    return std::string(TrimView(result));
}

Place Lexer::BehindLast() const {
    Token behind = last_;
    behind.Column += behind.Text.size();
    return At(behind);
}

Place Lexer::At(const Token& token) const {
    if (source_.Lines.empty()) return {source_.Files.empty() ? -1 : 0, 0, 0};
    const bool end = token.Line >= source_.Lines.size();
    const ExpandedLine& line = end ? source_.Lines.back() : source_.Lines[token.Line];
    Place at = line.At;
    if (line.Exact && !end) at.Column = static_cast<int>(token.Column) + 1;
    return at;
}

}  // namespace front
