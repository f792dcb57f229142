#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Ahdl.h"
#include "convert/Converters.h"
#include "front/Limits.h"

namespace convert {
namespace {

constexpr std::array<std::string_view, 6> Signs{"!&", "!#", "!$", "==", "!=", "=>"};
constexpr std::array Operators{
    BinaryOperator{"==", Operator::Equal, 4}, BinaryOperator{"!=", Operator::Unequal, 4},
    BinaryOperator{"&", Operator::And, 3},    BinaryOperator{"AND", Operator::And, 3},
    BinaryOperator{"!&", Operator::Nand, 3},  BinaryOperator{"NAND", Operator::Nand, 3},
    BinaryOperator{"$", Operator::Xor, 2},    BinaryOperator{"XOR", Operator::Xor, 2},
    BinaryOperator{"!$", Operator::Xnor, 2},  BinaryOperator{"XNOR", Operator::Xnor, 2},
    BinaryOperator{"#", Operator::Or, 1},     BinaryOperator{"OR", Operator::Or, 1},
    BinaryOperator{"!#", Operator::Nor, 1},   BinaryOperator{"NOR", Operator::Nor, 1}};
const Language Ahdl{Signs, "--", '%', "\"'", Operators, "!", "NOT", true};

struct Primitive {
    std::string_view Name;
    std::string_view Data;  // what the bare name on the left stands for, and with K or R the other input
    std::string_view Other;
    bool HasEnable = false;
};
constexpr std::array Primitives{Primitive{"DFF", "D", ""},   Primitive{"DFFE", "D", "", true},
                                Primitive{"TFF", "T", ""},   Primitive{"TFFE", "T", "", true},
                                Primitive{"JKFF", "J", "K"}, Primitive{"JKFFE", "J", "K", true}};

constexpr std::array<std::string_view, 10> Refused{"IF",       "CASE", "DEFAULTS", "ASSERT",   "FOR",
                                                   "GENERATE", "WITH", "MACHINE",  "CONSTANT", "FUNCTION"};

}  // namespace

const Language& AhdlLanguage() { return Ahdl; }

void AhdlReader::Read() {
    while (!Is("SUBDESIGN")) {
        if (!Take("TITLE")) FailHere(Shown(Peek().Text) + " before SUBDESIGN is not taken");
        const std::string title(Next().Text);
        File().Origin += ": " + title;
        Need(";");
    }
    Next();
    File().Name = Next().Text;
    ReadPorts();
    if (Take("VARIABLE"))
        while (!Is("BEGIN")) ReadVariables();
    Need("BEGIN");
    while (!Is("END")) ReadStatement();
    Next();
    Need(";");
    if (Peek().Kind != TokenKind::End) FailHere("nothing may follow END");
    for (const std::string& name : outputs_)
        if (!HasEquation(name) && !buses_.contains(name)) FailHere("nothing is assigned to " + Shown(name));
    Finish();
}

std::string AhdlReader::NeedSymbol() {
    if (Peek().Kind == TokenKind::Text) return std::string(Next().Text);
    return std::string(NeedWord("a name"));
}

// The bits that "[3..0]" behind a name tells; none without brackets.
std::vector<int> AhdlReader::Range() {
    std::vector<int> bits;
    if (!Take("[")) return bits;
    const int first = NeedNumber(MaxIndex);
    int last = first;
    if (Take(".")) {
        Need(".");
        last = NeedNumber(MaxIndex);
    }
    Need("]");
    for (int bit = first;; bit += bit < last ? 1 : -1) {
        bits.push_back(bit);
        if (bit == last) return bits;
    }
}

// Names up to ":"; each with the bits that it stands for.
std::vector<std::string> AhdlReader::NewNames() {
    std::vector<std::string> names;
    do {
        const std::string stem = NeedSymbol();
        const std::vector<int> bits = Range();
        std::vector<std::string>& group = groups_[base::Upper(stem)];
        group.clear();
        for (const int bit : bits) group.push_back(stem + std::to_string(bit));
        if (bits.empty()) group.push_back(stem);
        names.insert(names.end(), group.begin(), group.end());
        if (names.size() > MaxNames) FailHere("more than " + std::to_string(MaxNames) + " names");
    } while (Take(","));
    Need(":");
    return names;
}

void AhdlReader::ReadPorts() {
    Need("(");
    while (!Take(")")) {
        const std::vector<std::string> names = NewNames();
        const bool isBoth = Is("BIDIR");
        const bool isOut = Is("OUTPUT") || isBoth;
        if (!isOut && !Is("INPUT")) FailHere("the port kind " + Shown(Peek().Text) + " is not taken");
        Next();
        if (Take("=") && !Take("VCC") && !Take("GND")) FailHere("VCC or GND is expected");
        for (const std::string& name : names) {
            DeclarePin(name, 0, false);
            if (isOut) outputs_.insert(KnownName(name));
            if (isBoth) buses_.insert(KnownName(name));
        }
        if (!Is(")")) Need(";");
    }
}

void AhdlReader::ReadVariables() {
    const std::vector<std::string> names = NewNames();
    const std::string kind = base::Upper(NeedWord("a kind of variable"));
    const Primitive* primitive = nullptr;
    for (const Primitive& entry : Primitives)
        if (kind == entry.Name) primitive = &entry;
    if (primitive == nullptr && kind != "NODE") FailBehind("the kind " + Shown(kind) + " is not taken");
    for (const std::string& name : names) {
        // A register may have the name of the output that it drives.
        if (primitive == nullptr || !IsKnown(name) || !outputs_.contains(KnownName(name))) DeclareNode(name);
        outputs_.insert(KnownName(name));
        if (primitive != nullptr)
            registers_[KnownName(name)] = {std::string(primitive->Data), std::string(primitive->Other),
                                           primitive->HasEnable};
    }
    Need(";");
}

// A name, its bits, or all of them behind "[]".
std::vector<std::string> AhdlReader::KnownNames() {
    const int line = Line();
    const std::string stem = NeedSymbol();
    std::vector<std::string> names;
    if (Is("[") && Is("]", 1)) {
        Next();
        Next();
        const auto group = groups_.find(base::Upper(stem));
        if (group == groups_.end()) Fail(line, Shown(stem) + " is not declared");
        for (const std::string& name : group->second) names.push_back(KnownName(name));
        return names;
    }
    for (const int bit : Range()) names.push_back(KnownName(stem + std::to_string(bit)));
    if (names.empty()) names.push_back(KnownName(stem));
    return names;
}

std::vector<AhdlReader::Target> AhdlReader::Targets() {
    std::vector<Target> targets;
    const bool isList = Take("(");
    do {
        const std::vector<std::string> names = KnownNames();
        const std::string port = Take(".") ? base::Upper(NeedWord("a port")) : "";
        for (const std::string& name : names) targets.push_back({name, PortOf(name, port)});
        if (targets.size() > MaxNames) FailHere("more than " + std::to_string(MaxNames) + " names");
    } while (isList && Take(","));
    if (isList) Need(")");
    return targets;
}

std::string AhdlReader::PortOf(const std::string& name, const std::string& port) const {
    if (!outputs_.contains(name)) FailBehind("the input " + Shown(name) + " is assigned to");
    const auto at = registers_.find(name);
    if (at == registers_.end()) {
        if (!port.empty()) FailBehind("the port " + Shown(port) + " of " + Shown(name) + " is not taken");
        return "";
    }
    const Register& kind = at->second;
    if (port.empty() || port == kind.Data) return kind.Data;
    if (port == kind.Other || port == "CLRN" || port == "PRN") return port;
    if (port == "CLK") return "CK";
    if (port == "ENA" && kind.HasEnable) return "CE";
    FailBehind("the port " + Shown(port) + " of " + Shown(name) + " is not taken");
}

void AhdlReader::ReadStatement() {
    for (const std::string_view word : Refused)
        if (Is(word) && !IsKnown(word)) FailHere(std::string(word) + " is not taken");
    if (Take("TABLE")) return ReadTable();
    const int line = Line();
    const std::vector<Target> targets = Targets();
    Need("=");
    Group enable;
    const bool isBus = Is("TRI") && Is("(", 1) && !IsKnown("TRI");
    Group value;
    if (isBus) {
        Next();
        Next();
        value = Expression();
        Need(",");
        enable = Widened(Expression(), targets.size(), line);
        Need(")");
    } else {
        value = Expression();
    }
    Need(";");
    value = Widened(std::move(value), targets.size(), line);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        AssignTo(targets[i], value.Bits[i], line);
        if (isBus) AssignTo({targets[i].Name, "OE"}, enable.Bits[i], line);
    }
}

// Clear and preset are low-active here; tied high they are none.
void AhdlReader::AssignTo(const Target& target, const Formula& value, int line) {
    const bool isClear = target.Extension == "CLRN";
    if (!isClear && target.Extension != "PRN")
        return Assign(target.Name, target.Extension, false, value, line);
    const Formula active = Formula::Not(value);
    if (active.Value() != false) Assign(target.Name, isClear ? "AR" : "AP", false, active, line);
}

Group AhdlReader::Number(std::string_view digits, int bitsEach) {
    Group number;
    number.IsNumber = true;
    for (const char digit : digits) {
        const char upper = base::UpperChar(digit);
        const int value = upper >= 'A' ? upper - 'A' + 10 : upper - '0';
        if (value < 0 || value >= 1 << bitsEach)
            FailHere("the digit " + Shown({&digit, 1}) + " in a number is not taken");
        for (int bit = bitsEach - 1; bit >= 0; --bit)
            number.Bits.push_back(Formula::Constant((value >> bit & 1) != 0));
    }
    // Zeros ahead of the number fill whatever it meets.
    const auto first = std::find_if(number.Bits.begin(), number.Bits.end(),
                                    [](const Formula& bit) { return bit.Value() == true; });
    number.Bits.erase(number.Bits.begin(), first == number.Bits.end() ? first - 1 : first);
    return number;
}

// "B" or another base before digits in quotes, or decimal digits; none if no number is ahead.
std::optional<Group> AhdlReader::NumberAhead() {
    if (Peek().Kind != TokenKind::Word) return std::nullopt;
    const std::string word = base::Upper(Peek().Text);
    if (base::IsDigitChar(word[0])) {
        std::string binary;
        for (int value = NeedNumber(1 << 30); value > 0 || binary.empty(); value /= 2)
            binary.insert(0, 1, value % 2 != 0 ? '1' : '0');
        return Number(binary, 1);
    }
    if (Peek(1).Kind != TokenKind::Text || word.size() != 1 || IsKnown(word)) return std::nullopt;
    const int bitsEach = word == "B"                  ? 1
                         : word == "O" || word == "Q" ? 3
                         : word == "H" || word == "X" ? 4
                                                      : 0;
    if (bitsEach == 0 || Peek(1).Text.empty() || Peek(1).Text.size() > MaxDigits)
        FailHere("the base " + Shown(word) + " of a number is not taken");
    Next();
    return Number(Next().Text, bitsEach);
}

Group AhdlReader::Operand() {
    if (auto number = NumberAhead()) return std::move(*number);
    const std::string word = base::Upper(Peek().Text);
    const bool isOwn = !IsKnown(word);
    if (isOwn && (Take("VCC") || Take("GND"))) return {{Formula::Constant(word == "VCC")}};
    // Buffers for placement alone.
    if (isOwn && Is("(", 1) && (Take("GLOBAL") || Take("LCELL") || Take("SOFT"))) {
        Need("(");
        Group inner = Expression();
        Need(")");
        return inner;
    }
    if (isOwn && Is("(", 1) && Peek().Kind == TokenKind::Word)
        FailHere("the function " + Shown(word) + " is not taken");
    Group group;
    for (const std::string& name : KnownNames()) group.Bits.push_back(Formula::Name(name));
    if (Take(".") && !Take("Q")) FailHere("the port " + Shown(Peek().Text) + " in a formula is not taken");
    return group;
}

AhdlReader::Table AhdlReader::TableHead() {
    Table table;
    do {
        const Group group = Expression();
        table.Inputs.insert(table.Inputs.end(), group.Bits.begin(), group.Bits.end());
        table.InputWidths.push_back(group.Bits.size());
    } while (Take(","));
    Need("=>");
    do {
        const std::vector<Target> group = Targets();
        table.Outputs.insert(table.Outputs.end(), group.begin(), group.end());
        table.OutputWidths.push_back(group.size());
    } while (Take(","));
    Need(";");
    table.Sums.resize(table.Outputs.size(), Formula::Constant(false));
    return table;
}

void AhdlReader::ReadTable() {
    const int line = Line();
    Table table = TableHead();
    while (!Take("END")) ReadRow(table);
    Need("TABLE");
    Need(";");
    for (std::size_t i = 0; i < table.Outputs.size(); ++i) AssignTo(table.Outputs[i], table.Sums[i], line);
}

void AhdlReader::ReadRow(Table& table) {
    const std::string in = Row(table.InputWidths);
    Need("=>");
    const std::string out = Row(table.OutputWidths);
    Need(";");
    if (out.find('X') != out.npos) FailBehind("X as an output of TABLE is not taken");
    Formula product = Formula::Constant(true);
    for (std::size_t i = 0; i < in.size(); ++i) {
        const Formula& input = table.Inputs[i];
        if (in[i] == 'X') continue;
        product =
            Formula::Combine(Operator::And, std::move(product), in[i] == '1' ? input : Formula::Not(input));
    }
    table.Size += product.Text().size();
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (out[i] == '0') continue;
        table.Sums[i] = Formula::Combine(Operator::Or, std::move(table.Sums[i]), product);
        table.Size += product.Text().size();
    }
    if (table.Size > front::Limits::FileBytes) FailBehind("the table becomes larger than the compiler takes");
}

// One side of a row in binary digits and X.
std::string AhdlReader::Row(const std::vector<std::size_t>& widths) {
    std::string row;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (i > 0) Need(",");
        if (Is("X") && Peek(1).Kind != TokenKind::Text) {
            Next();
            row.append(widths[i], 'X');
        } else if (Is("B") && Peek(1).Kind == TokenKind::Text) {
            Next();
            const std::string digits = base::Upper(Peek().Text);
            if (digits.size() != widths[i] || digits.find_first_not_of("01X") != digits.npos)
                FailHere("the value " + Shown(digits) + " of a row does not fit its column");
            row += digits;
            Next();
        } else {
            const int line = Line();
            for (const Formula& bit : Widened(Operand(), widths[i], line).Bits) {
                if (!bit.Value()) Fail(line, "a value of a row is no constant");
                row += *bit.Value() ? '1' : '0';
            }
        }
    }
    return row;
}

Conversion ConvertAhdl(std::string_view text, const std::string& name) {
    PldFile file;
    file.Origin = "Made from the text design " + name;
    const std::vector<Token> tokens = Cut(text, Ahdl);
    AhdlReader(tokens, file).Read();
    return {file.Text(), {}};
}

}  // namespace convert
