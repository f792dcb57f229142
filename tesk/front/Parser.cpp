#include "front/Parser.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "front/Limits.h"
#include "front/ParserCore.h"

namespace front {

namespace {

constexpr int kMaxPin = 1024;
constexpr int kMaxFuse = 1'000'000;

int HeaderIndex(std::string_view word) {
    for (std::size_t i = 0; i < headerWords.size(); ++i) {
        const HeaderWord& known = headerWords[i];
        if (base::EqualNoCase(word, known.Name) ||
            (!known.Short.empty() && base::EqualNoCase(word, known.Short)))
            return static_cast<int>(i);
    }
    return -1;
}

bool StopsHeaderText(std::string_view word) { return IsReserved(word) || HeaderIndex(word) >= 0; }

class Parser : public ExpressionParser {
  public:
    using ExpressionParser::ExpressionParser;
    void Run();

  private:
    using Reader = void (Parser::*)();
    struct Keyword {
        std::string_view Word;
        Reader Read;
    };
    static const std::array<Keyword, 17> keywords;

    void ReadStatement();
    bool ReadHeader();
    void Recover();
    template <typename Row>
    void Rows(Row row);  // up to the closing brace; a row with a fault is left out

    void ReadDeclaration(VariableKind kind);
    void ReadPin() { ReadDeclaration(VariableKind::Pin); }
    void ReadPinNode() { ReadDeclaration(VariableKind::PinNode); }
    void ReadNode() { ReadDeclaration(VariableKind::Node); }
    void ReadNumbers(Declaration& declaration);
    void ReadField();
    void ReadMin();
    void ReadAppend();
    EquationStatement ReadEquation(bool append);
    void ReadTable();
    TableRow ReadTableRow();
    void ReadMachine(Extension kind);
    void ReadMachineD() { ReadMachine(Extension::D); }
    void ReadMachineT() { ReadMachine(Extension::T); }
    void ReadMachineJK() { ReadMachine(Extension::J); }
    void ReadMachineRS() { ReadMachine(Extension::R); }
    State ReadState();
    Rule ReadRule(bool withNext);
    void ReadCondition();
    void ReadFunction();
    void ReadFuse();
    void ReadProperty();

    bool declared_ = false;
};

const std::array<Parser::Keyword, 17> Parser::keywords{{{"PIN", &Parser::ReadPin},
                                                        {"PINNODE", &Parser::ReadPinNode},
                                                        {"NODE", &Parser::ReadNode},
                                                        {"FIELD", &Parser::ReadField},
                                                        {"FLD", &Parser::ReadField},
                                                        {"MIN", &Parser::ReadMin},
                                                        {"APPEND", &Parser::ReadAppend},
                                                        {"TABLE", &Parser::ReadTable},
                                                        {"SEQUENCE", &Parser::ReadMachineD},
                                                        {"SEQUENCED", &Parser::ReadMachineD},
                                                        {"SEQUENCET", &Parser::ReadMachineT},
                                                        {"SEQUENCEJK", &Parser::ReadMachineJK},
                                                        {"SEQUENCERS", &Parser::ReadMachineRS},
                                                        {"CONDITION", &Parser::ReadCondition},
                                                        {"FUNCTION", &Parser::ReadFunction},
                                                        {"FUSE", &Parser::ReadFuse},
                                                        {"PROPERTY", &Parser::ReadProperty}}};

void Parser::Run() {
    while (!lexer_.Peek().Is(TokenKind::End)) {
        if (syntax_.Statements.size() >= Limits::Statements) {
            report_.Add(Code::TooManyStatements, lexer_.At());
            return;
        }
        try {
            ReadStatement();
        } catch (const SyntaxFault&) {
            Recover();
        }
    }
}

// Goes on behind the next ";" or before the next word that can only begin a statement.
void Parser::Recover() {
    while (!lexer_.Peek().Is(TokenKind::End)) {
        for (const Keyword& keyword : keywords)
            if (lexer_.Peek().IsKeyword(keyword.Word)) return;
        if (Take(';') || Take('}')) return;
        lexer_.Next();
    }
}

template <typename Row>
void Parser::Rows(Row row) {
    Need('{');
    while (!Take('}')) {
        if (lexer_.Peek().Is(TokenKind::End)) Expected("\"}\"");
        try {
            row();
        } catch (const SyntaxFault&) {
            while (!lexer_.Peek().Is(TokenKind::End) && !lexer_.Peek().Is('}') && !Take(';')) lexer_.Next();
        }
    }
}

void Parser::ReadStatement() {
    if (Take(';')) return;
    if (ReadHeader()) return;
    for (const Keyword& keyword : keywords) {
        if (!lexer_.Peek().IsKeyword(keyword.Word)) continue;
        declared_ = true;
        (this->*keyword.Read)();
        return;
    }
    if (!lexer_.Peek().Is(TokenKind::Word) && !lexer_.Peek().Is('[') && !lexer_.Peek().Is('!'))
        Expected("a statement");
    declared_ = true;
    syntax_.Statements.emplace_back(ReadEquation(false));
}

bool Parser::ReadHeader() {
    if (!lexer_.Peek().Is(TokenKind::Word)) return false;
    const int index = HeaderIndex(lexer_.Peek().Text);
    if (index < 0 || lexer_.SecondIs('=') || lexer_.SecondIs('.')) return false;
    const Place at = lexer_.At();
    const auto place = static_cast<std::size_t>(index);
    if (declared_) report_.Add(Code::HeaderLate, at, headerWords[place].Name);
    if (syntax_.Head.Given[place]) report_.Add(Code::HeaderTwice, at, headerWords[place].Name);
    syntax_.Head.Given[place] = true;
    syntax_.Head.Texts[place] = lexer_.RawText(StopsHeaderText);
    if (!Take(';')) report_.Add(Code::Syntax, at, "expected \";\" behind the text");
    return true;
}

void Parser::ReadNumbers(Declaration& declaration) {
    const bool list = Take('[');
    do {
        const int first = NeedDecimal(kMaxPin, 1);
        declaration.Numbers.push_back(first);
        if (!list || !lexer_.Peek().Is(TokenKind::Range)) continue;
        lexer_.Next();
        const int last = NeedDecimal(kMaxPin, 1);
        for (int number = first; number != last;)
            declaration.Numbers.push_back(number += number < last ? 1 : -1);
    } while (list && Take(','));
    if (list) Need(']');
    declaration.Numbered = true;
}

void Parser::ReadDeclaration(VariableKind kind) {
    Declaration declaration;
    declaration.Kind = kind;
    declaration.At = lexer_.At();
    lexer_.Next();
    const bool number = lexer_.Peek().Is(TokenKind::Word) && IsDecimal(lexer_.Peek().Text);
    if (kind != VariableKind::Node && (number || lexer_.Peek().Is('['))) ReadNumbers(declaration);
    if (kind != VariableKind::Node)
        Need('=');
    else
        Take('=');
    while (Take('!')) declaration.ActiveLow = !declaration.ActiveLow;
    declaration.Names = NameOrList();
    NeedEnd();
    syntax_.Statements.emplace_back(std::move(declaration));
}

void Parser::ReadField() {
    FieldDeclaration field;
    lexer_.Next();
    field.At = lexer_.At();
    field.Name = NeedName().Text;
    Need('=');
    if (!lexer_.Peek().Is('[')) Expected("a list");
    field.Members = NameOrList();
    NeedEnd();
    syntax_.Statements.emplace_back(field);
}

void Parser::ReadMin() {
    MinDeclaration min;
    lexer_.Next();
    min.At = lexer_.At();
    min.Names = NameOrList();
    Need('=');
    min.Level = NeedDecimal(4);
    NeedEnd();
    syntax_.Statements.emplace_back(min);
}

EquationStatement Parser::ReadEquation(bool append) {
    EquationStatement equation;
    equation.Append = append;
    equation.At = lexer_.At();
    equation.To = NeedTarget();
    Need('=');
    equation.Value = Expression();
    NeedEnd();
    return equation;
}

void Parser::ReadAppend() {
    lexer_.Next();
    syntax_.Statements.emplace_back(ReadEquation(true));
}

void Parser::ReadTable() {
    TableStatement table;
    table.At = lexer_.At();
    lexer_.Next();
    table.In = NameOrList();
    if (!lexer_.Peek().Is(TokenKind::Arrow)) Expected("\"=>\"");
    lexer_.Next();
    table.Out = NeedTarget();
    Rows([&] { table.Rows.push_back(ReadTableRow()); });
    syntax_.Statements.emplace_back(std::move(table));
}

TableRow Parser::ReadTableRow() {
    TableRow row;
    row.At = lexer_.At();
    if (Take('[')) {
        row.In.Low = NeedConstant(true);
        if (!lexer_.Peek().Is(TokenKind::Range)) Expected("\"..\"");
        lexer_.Next();
        row.In.High = NeedConstant(true);
        Need(']');
    } else {
        row.In.Low = NeedConstant(true);
    }
    if (!lexer_.Peek().Is(TokenKind::Arrow)) Expected("\"=>\"");
    lexer_.Next();
    row.Out = NeedConstant(true);
    NeedEnd();
    return row;
}

void Parser::ReadMachine(Extension kind) {
    MachineStatement machine;
    machine.Kind = kind;
    machine.At = lexer_.At();
    lexer_.Next();
    machine.Field = NameOrList();
    Rows([&] { machine.States.push_back(ReadState()); });
    syntax_.Statements.emplace_back(std::move(machine));
}

State Parser::ReadState() {
    if (!TakeKeyword("PRESENT")) Expected("PRESENT");
    State state;
    state.At = lexer_.At();
    state.Value = NeedConstant(false);
    while (!lexer_.Peek().IsKeyword("PRESENT") && !lexer_.Peek().Is('}') &&
           !lexer_.Peek().Is(TokenKind::End)) {
        try {
            if (!Take(';')) state.Rules.push_back(ReadRule(true));
        } catch (const SyntaxFault&) {
            while (!lexer_.Peek().Is(TokenKind::End) && !lexer_.Peek().Is('}') && !Take(';')) lexer_.Next();
        }
    }
    return state;
}

Rule Parser::ReadRule(bool withNext) {
    Rule rule;
    rule.At = lexer_.At();
    rule.Default = TakeKeyword("DEFAULT");
    if (!rule.Default && TakeKeyword("IF")) rule.If = Expression();
    if (withNext && TakeKeyword("NEXT")) rule.Next = NeedConstant(false);
    if (TakeKeyword("OUT")) do
            rule.Out.push_back(NeedTarget());
        while (Take(','));
    else if (rule.Next < 0)
        Expected(withNext ? "NEXT or OUT" : "OUT");
    NeedEnd();
    return rule;
}

void Parser::ReadCondition() {
    ConditionStatement condition;
    condition.At = lexer_.At();
    lexer_.Next();
    Rows([&] { condition.Rules.push_back(ReadRule(false)); });
    syntax_.Statements.emplace_back(std::move(condition));
}

void Parser::ReadFunction() {
    FunctionStatement function;
    lexer_.Next();
    function.At = lexer_.At();
    function.Name = NeedName().Text;
    Need('(');
    if (!lexer_.Peek().Is(')')) do
            function.Parameters.push_back(NeedName().Text);
        while (Take(','));
    Need(')');
    Rows([&] { function.Body.push_back(ReadEquation(false)); });
    syntax_.Statements.emplace_back(std::move(function));
}

void Parser::ReadFuse() {
    FuseStatement fuse;
    fuse.At = lexer_.At();
    lexer_.Next();
    Need('(');
    fuse.Number = NeedDecimal(kMaxFuse);
    Need(',');
    fuse.Value = NeedDecimal(1);
    Need(')');
    NeedEnd();
    syntax_.Statements.emplace_back(fuse);
}

void Parser::ReadProperty() {
    PropertyStatement property;
    property.At = lexer_.At();
    lexer_.Next();
    if (!lexer_.Peek().Is(TokenKind::Word)) Expected("a property");
    property.Word = lexer_.Next().Text;
    if (!lexer_.Peek().Is('=')) property.Names = NameOrList();
    Need('=');
    const bool isHexadecimal =
        lexer_.Peek().Is(TokenKind::Base) && base::EqualNoCase(lexer_.Peek().Text, "h");
    if (isHexadecimal) lexer_.Next();
    if (!lexer_.Peek().Is(TokenKind::Word)) Expected("a value");
    property.Value = lexer_.Next().Text;
    NeedEnd();
    syntax_.Statements.emplace_back(property);
}

}  // namespace

void Parse(const Source& source, Report& report, Syntax& syntax) { Parser(source, report, syntax).Run(); }

}  // namespace front
