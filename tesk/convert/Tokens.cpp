#include "convert/Tokens.h"

#include <algorithm>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Failure.h"
#include "model/Number.h"

namespace convert {
namespace {

// Each level may become three in the result, which the compiler takes to 128.
constexpr int MaxDepth = 40;

class Cutter {
  public:
    Cutter(std::string_view text, const Language& language, int line)
        : text_(text), language_(language), line_(line) {}

    std::vector<Token> All() {
        std::vector<Token> tokens;
        do {
            SkipBlanks();
            tokens.push_back(One());
        } while (tokens.back().Kind != TokenKind::End);
        return tokens;
    }

  private:
    bool Ahead(std::string_view text) const {
        return !text.empty() && text_.compare(at_, text.size(), text) == 0;
    }

    void SkipBlanks() {
        while (at_ < text_.size()) {
            if (Ahead(language_.Comment)) {
                at_ = std::min(text_.find('\n', at_), text_.size());
            } else if (language_.Bracket != 0 && text_[at_] == language_.Bracket) {
                Close(language_.Bracket, "a comment is never closed");
            } else if (base::IsBlankChar(text_[at_]) && (text_[at_] & 0x80) == 0) {
                if (text_[at_] == '\n') ++line_;
                ++at_;
            } else {
                return;
            }
        }
    }

    // From an opening character past its next one; gives what stands between them.
    std::string_view Close(char end, const char* fault) {
        const std::size_t close = text_.find(end, at_ + 1);
        if (close == text_.npos) Fail(line_, fault);
        const std::string_view inner = text_.substr(at_ + 1, close - at_ - 1);
        line_ += static_cast<int>(std::count(inner.begin(), inner.end(), '\n'));
        at_ = close + 1;
        return inner;
    }

    Token One() {
        if (at_ >= text_.size()) return {TokenKind::End, "the end of the file", line_};
        const int line = line_;
        if (language_.Quotes.find(text_[at_]) != language_.Quotes.npos)
            return {TokenKind::Text, Close(text_[at_], "a quote is never closed"), line};
        std::size_t length = 0;
        while (at_ + length < text_.size() && base::IsWordChar(text_[at_ + length])) ++length;
        const TokenKind kind = length > 0 ? TokenKind::Word : TokenKind::Sign;
        if (length == 0) length = 1;
        for (const std::string_view sign : language_.Signs)
            if (kind == TokenKind::Sign && length == 1 && Ahead(sign)) length = sign.size();
        at_ += length;
        return {kind, text_.substr(at_ - length, length), line};
    }

    std::string_view text_;
    const Language& language_;
    std::size_t at_ = 0;
    int line_;
};

}  // namespace

std::vector<Token> Cut(std::string_view text, const Language& language, int firstLine) {
    return Cutter(text, language, firstLine).All();
}

const Token& TokenReader::Peek(std::size_t ahead) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

const Token& TokenReader::Next() {
    const Token& token = Peek();
    if (token.Kind != TokenKind::End) ++at_;
    return token;
}

bool TokenReader::Is(std::string_view text, std::size_t ahead) const {
    const Token& token = Peek(ahead);
    return (token.Kind == TokenKind::Word || token.Kind == TokenKind::Sign) &&
           base::EqualNoCase(token.Text, text);
}

bool TokenReader::Take(std::string_view text) {
    if (!Is(text)) return false;
    Next();
    return true;
}

void TokenReader::Need(std::string_view text) {
    if (!Take(text)) FailHere("\"" + std::string(text) + "\" is expected, not " + Shown(Peek().Text));
}

std::string_view TokenReader::NeedWord(std::string_view what) {
    if (Peek().Kind != TokenKind::Word)
        FailHere(std::string(what) + " is expected, not " + Shown(Peek().Text));
    return Next().Text;
}

int TokenReader::NeedNumber(int most) {
    const std::string_view text = Peek().Text;
    const int number = model::WholeNumber<int>(text).value_or(-1);
    if (Peek().Kind != TokenKind::Word || number < 0 || number > most)
        FailHere("a number up to " + std::to_string(most) + " is expected, not " + Shown(text));
    Next();
    return number;
}

void TokenReader::Skip(std::string_view upTo) {
    while (Peek().Kind != TokenKind::End && !Is(upTo)) Next();
    Need(upTo);
}

void TokenReader::FailHere(const std::string& what) const { Fail(Line(), what); }

void TokenReader::FailBehind(const std::string& what) const {
    Fail(tokens_[at_ > 0 ? at_ - 1 : 0].Line, what);
}

const BinaryOperator* TokenReader::OperatorAhead() const {
    for (const BinaryOperator& entry : language_.Operators)
        if (Is(entry.Text)) return &entry;
    return nullptr;
}

Group TokenReader::Expression(int binding) {
    Group left = Factor();
    for (const BinaryOperator* ahead = OperatorAhead(); ahead != nullptr && ahead->Binding > binding;
         ahead = OperatorAhead()) {
        const int line = Next().Line;
        left = Combine(ahead->What, std::move(left), Expression(ahead->Binding), line);
    }
    return left;
}

Group TokenReader::Factor() {
    if (++depth_ > MaxDepth) FailHere("parentheses and negations are nested more than 40 deep");
    Group result;
    if ((!language_.NotSign.empty() && Take(language_.NotSign)) ||
        (!language_.NotWord.empty() && Take(language_.NotWord))) {
        result = Not(Factor());
    } else if (Take("(")) {
        result = Expression();
        while (language_.HasGroups && Take(",")) {
            const Group next = Expression();
            result.IsNumber = false;
            result.Bits.insert(result.Bits.end(), next.Bits.begin(), next.Bits.end());
        }
        Need(")");
    } else {
        result = Operand();
    }
    --depth_;
    return result;
}

}  // namespace convert
