#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "front/Constant.h"
#include "front/Extension.h"
#include "front/Place.h"
#include "model/Header.h"

// The design as it is written: statements and expressions, names not yet resolved. Texts are views into the
// expanded source.
namespace front {

enum class Op : std::uint8_t {
    Name,    // Text, Ext; with a Constant it is that number if no such name is declared
    Number,  // Constant
    List,    // kids: Name, Span or Not of a Name; Ext
    Span,    // Text..Last, in a list
    Not,     // one kid
    And,
    Or,
    Xor,
    Equals,   // one kid : Constant
    InRange,  // one kid : [Constant .. Constant + 1]
    Fold,     // one kid : Sign
    Call,     // Text, kids the values
};

using ExprId = std::int32_t;  // index into Syntax::Exprs, -1: none

struct Expr {
    Op What = Op::Name;
    Extension Ext = Extension::None;
    char Sign = 0;
    Place At;
    std::string_view Text;
    std::string_view Last;
    std::int32_t Constant = -1;  // index into Syntax::Constants
    std::uint32_t FirstKid = 0;  // index into Syntax::Kids
    std::uint32_t KidCount = 0;
};

struct Target {
    ExprId Names = -1;  // a Name or a List, with its extension
    bool Complement = false;
};

enum class VariableKind : std::uint8_t { Pin, PinNode, Node, Intermediate };

struct Declaration {
    VariableKind Kind = VariableKind::Pin;
    bool ActiveLow = false;
    bool Numbered = false;
    std::vector<int> Numbers;
    ExprId Names = -1;
    Place At;
};
struct FieldDeclaration {
    std::string_view Name;
    ExprId Members = -1;
    Place At;
};
struct MinDeclaration {
    ExprId Names = -1;
    int Level = 0;
    Place At;
};
struct EquationStatement {
    Target To;
    ExprId Value = -1;
    bool Append = false;
    Place At;
};
struct TableValue {
    std::int32_t Low = -1;   // constant
    std::int32_t High = -1;  // constant of a range, else -1
};
struct TableRow {
    TableValue In;
    std::int32_t Out = -1;
    Place At;
};
struct TableStatement {
    ExprId In = -1;
    Target Out;
    std::vector<TableRow> Rows;
    Place At;
};
struct Rule {
    ExprId If = -1;  // -1: always
    bool Default = false;
    std::int32_t Next = -1;  // constant
    std::vector<Target> Out;
    Place At;
};
struct State {
    std::int32_t Value = -1;
    std::vector<Rule> Rules;
    Place At;
};
struct MachineStatement {
    Extension Kind = Extension::D;  // D, T, J (JK) or R (RS)
    ExprId Field = -1;
    std::vector<State> States;
    Place At;
};
struct ConditionStatement {
    std::vector<Rule> Rules;
    Place At;
};
struct FunctionStatement {
    std::string_view Name;
    std::vector<std::string_view> Parameters;
    std::vector<EquationStatement> Body;
    Place At;
};
struct PropertyStatement {
    std::string_view Word;
    ExprId Names = -1;  // -1: all, or the device
    std::string_view Value;
    Place At;
};
struct FuseStatement {
    int Number = 0;
    int Value = 0;
    Place At;
};

using Statement =
    std::variant<Declaration, FieldDeclaration, MinDeclaration, EquationStatement, TableStatement,
                 MachineStatement, ConditionStatement, FunctionStatement, FuseStatement, PropertyStatement>;

using model::HeaderWord;
using model::headerWords;

struct Header {
    std::array<std::string, headerWords.size()> Texts;
    std::array<bool, headerWords.size()> Given{};
    const std::string& Name() const { return Texts[0]; }
    const std::string& Device() const { return Texts[8]; }
};

struct Syntax {
    front::Header Head;
    std::vector<Statement> Statements;
    std::vector<Expr> Exprs;
    std::vector<ExprId> Kids;
    std::vector<Constant> Constants;
};

}  // namespace front
