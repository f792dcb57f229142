#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"
#include "convert/Converters.h"
#include "convert/Equations.h"

// Pin lists and equations for PAL assemblers: header, CHIP, pins, STRING, EQUATIONS.
namespace convert {
namespace {

constexpr std::size_t MaxTokens = 1'000'000;  // once the strings are put in
constexpr std::size_t MaxStringDepth = 16;

constexpr std::array<std::string_view, 4> Signs{":+:", ":*:", ":=", "*="};
constexpr std::array Operators{BinaryOperator{"*", Operator::And, 3}, BinaryOperator{"+", Operator::Or, 2},
                               BinaryOperator{":+:", Operator::Xor, 1},
                               BinaryOperator{":*:", Operator::Xnor, 1}};
const Language Palasm{Signs, ";", 0, "'\"", Operators, "/", {}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 12> Suffixes{{{"CLKF", "CK"},
                                                                                  {"RSTF", "AR"},
                                                                                  {"SETF", "AP"},
                                                                                  {"TRST", "OE"},
                                                                                  {"CE", "CE"},
                                                                                  {"D", "D"},
                                                                                  {"T", "T"},
                                                                                  {"J", "J"},
                                                                                  {"K", "K"},
                                                                                  {"S", "S"},
                                                                                  {"R", "R"},
                                                                                  {"L", "L"}}};

struct Equation {
    std::string Name;  // empty: all registers
    std::string Extension;
    bool Complement = false;
    Formula Value;
    int Line = 0;
};

// Strings are put in as texts: what binds how is decided when all stand there.
class Strings {
  public:
    // Takes the definitions out of the tokens and puts the texts in where their names stand.
    std::vector<Token> PutIn(const std::vector<Token>& tokens) {
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            const bool isDefinition = base::EqualNoCase(tokens[i].Text, "STRING") && i + 2 < tokens.size();
            if (isDefinition && tokens[i].Kind == TokenKind::Word) {
                if (tokens[i + 1].Kind != TokenKind::Word || tokens[i + 2].Kind != TokenKind::Text)
                    Fail(tokens[i].Line, "STRING needs a name and a text in quotes");
                texts_[base::Upper(tokens[i + 1].Text)] = Cut(tokens[i + 2].Text, Palasm);
                i += 2;
            } else {
                Add(tokens[i], tokens[i].Line, 0);
            }
        }
        return std::move(out_);
    }

  private:
    void Add(const Token& token, int line, std::size_t depth) {
        if (out_.size() >= MaxTokens) Fail(line, "the equations are too long");
        const auto text = token.Kind == TokenKind::Word ? texts_.find(base::Upper(token.Text)) : texts_.end();
        if (text == texts_.end()) {
            out_.push_back({token.Kind, token.Text, line});
            return;
        }
        if (depth >= MaxStringDepth) Fail(line, "strings nested too deep: " + Shown(token.Text));
        for (const Token& inner : text->second)
            if (inner.Kind != TokenKind::End) Add(inner, line, depth + 1);
    }

    std::map<std::string, std::vector<Token>> texts_;
    std::vector<Token> out_;
};

class Reader : public EquationReader {
  public:
    Reader(std::span<const Token> tokens, PldFile& file) : EquationReader(tokens, Palasm, file) {}

    std::vector<std::string> Read() {
        ReadChip();
        if (Is("PIN") || Is("NODE"))
            while (!Is("EQUATIONS")) ReadPin();
        else
            ReadPinList();
        Need("EQUATIONS");
        while (Peek().Kind != TokenKind::End) ReadStatement();
        AssignAll();
        Clock();
        Finish();
        return std::move(notes_);
    }

  private:
    void ReadChip() {
        Need("CHIP");
        NeedWord("the chip's name");
        const std::string_view part = NeedWord("the device");
        if (Take("-")) NeedWord("the device's grade");
        File().Device = DeviceOf(part);
        if (File().Device == "virtual")
            notes_.push_back("the device " + Shown(part) + " is not known: virtual");
    }

    void ReadPin() {
        const bool isPin = Take("PIN");
        if (!isPin) Need("NODE");
        const int number = Take("?") ? 0 : NeedNumber(MaxPin);
        if (Is(".")) FailHere("a vector of pins is not taken");
        const bool activeLow = Take("/");
        const std::string_view name = NeedWord("a pin's name");
        if (Is("[")) FailHere("a vector of pins is not taken");
        const bool isUsed = !base::EqualNoCase(name, "NC") && !IsPower(name);
        if (isUsed && isPin) DeclarePin(name, number, activeLow);
        if (isUsed && !isPin) DeclareNode(name);
        while (!Is("PIN") && !Is("NODE") && !Is("EQUATIONS")) {
            if (!Take("REGISTERED") && !Take("COMBINATORIAL") && !Take("LATCHED") && !Take("REG") &&
                !Take("COMB"))
                FailHere("PIN, NODE or EQUATIONS is expected, not " + Shown(Peek().Text));
        }
    }

    static bool IsPower(std::string_view name) {
        return base::EqualNoCase(name, "GND") || base::EqualNoCase(name, "VCC");
    }

    // Names one after the other, for the pins from 1.
    void ReadPinList() {
        for (int number = 1; !Is("EQUATIONS"); ++number) {
            const bool activeLow = Take("/");
            const std::string_view name = NeedWord("a pin's name");
            if (base::EqualNoCase(name, "NC") || IsPower(name)) continue;
            if (number > MaxPin) FailHere("a pin behind 1024");
            DeclarePin(name, number, activeLow);
        }
    }

    void ReadStatement() {
        constexpr std::array<std::string_view, 8> others{"IF",    "CASE",      "STATE",    "CONDITIONS",
                                                         "GROUP", "SIGNATURE", "FUNCTION", "EQUATIONS"};
        for (const std::string_view other : others)
            if (Is(other) && !IsKnown(other)) FailHere(std::string(other) + " is not taken");
        if (Is("MINIMIZE_ON") || Is("MINIMIZE_OFF")) {
            const Token& word = Next();
            notes_.push_back("line " + std::to_string(word.Line) + ": " + std::string(word.Text) +
                             " is left out");
            return;
        }
        ReadEquation();
    }

    void ReadEquation() {
        Equation equation{{}, {}, Take("/"), Formula::Constant(false), Line()};
        const std::string_view name = NeedWord("an equation");
        const bool isGlobal = base::EqualNoCase(name, "GLOBAL") && !IsKnown(name);
        if (!isGlobal) equation.Name = KnownName(name);
        if (Take(".")) equation.Extension = Suffix(NeedWord("an extension"));
        if (equation.Extension.empty() && Take(":="))
            equation.Extension = "D";
        else if (equation.Extension.empty() && Take("*="))
            equation.Extension = "L";
        else if (!Take(":="))
            Need("=");
        if (isGlobal && equation.Extension != "AR" && equation.Extension != "AP" &&
            equation.Extension != "CK")
            Fail(equation.Line, "GLOBAL takes .CLKF, .RSTF and .SETF");
        equation.Value = Expression().Bits.front();
        equations_.push_back(std::move(equation));
    }

    std::string Suffix(std::string_view text) const {
        for (const auto& [theirs, ours] : Suffixes)
            if (base::EqualNoCase(text, theirs)) return std::string(ours);
        FailBehind("the extension " + Shown(text) + " is not taken");
    }

    Group Operand() override {
        if (Is("{") || Is("[")) FailHere(Shown(Peek().Text) + " is not taken");
        const std::string_view name = NeedWord("a name");
        if (IsPower(name) && !IsKnown(name)) return {{Formula::Constant(base::EqualNoCase(name, "VCC"))}};
        const std::string known = KnownName(name);
        if (Is(".") || Is("[")) FailHere("an extension or index in a formula is not taken");
        return {{Formula::Name(known)}};
    }

    void AssignAll() {
        for (const Equation& equation : equations_)
            if (equation.Extension == "L") latches_.insert(equation.Name);
        for (const Equation& equation : equations_) {
            if (equation.Name.empty()) continue;
            const bool isEnable = equation.Extension == "CK" && latches_.contains(equation.Name);
            Assign(equation.Name, isEnable ? "LE" : equation.Extension, equation.Complement, equation.Value,
                   equation.Line);
        }
        for (const Equation& equation : equations_) {
            if (!equation.Name.empty()) continue;
            for (const std::string& name : Registers())
                if (!IsAssigned(name, equation.Extension))
                    Assign(name, equation.Extension, equation.Complement, equation.Value, equation.Line);
        }
    }

    std::vector<std::string> Registers() const {
        std::vector<std::string> registers;
        for (const Pin& pin : File().Pins)
            if (IsRegister(pin.Name)) registers.push_back(pin.Name);
        for (const std::string& node : File().Nodes)
            if (IsRegister(node)) registers.push_back(node);
        return registers;
    }

    // What has no clock of its own is clocked by the rising edge of pin 1.
    void Clock() {
        const auto& pins = File().Pins;
        const auto first =
            std::find_if(pins.begin(), pins.end(), [](const Pin& pin) { return pin.Number == 1; });
        if (first == pins.end()) return;
        const Formula level = Formula::Name(first->Name);
        for (const std::string& name : Registers())
            if (!IsAssigned(name, "CK") && !latches_.contains(name))
                Assign(name, "CK", false, first->ActiveLow ? Formula::Not(level) : level, 0);
    }

    std::vector<Equation> equations_;
    std::set<std::string> latches_;
    std::vector<std::string> notes_;
};

bool Begins(std::string_view line, std::string_view word) {
    const std::string_view trimmed = base::TrimView(line);
    return base::EqualNoCase(trimmed.substr(0, word.size()), word) &&
           (trimmed.size() == word.size() || trimmed[word.size()] == ' ' || trimmed[word.size()] == '\t');
}

// Takes the header off; the text is then at the line of CHIP, whose number comes back.
int TakeHeader(std::string_view& text, PldFile& file) {
    const std::array<std::pair<std::string_view, std::string*>, 6> heads{{{"TITLE", &file.Name},
                                                                          {"PATTERN", &file.Partno},
                                                                          {"REVISION", &file.Revision},
                                                                          {"AUTHOR", &file.Designer},
                                                                          {"COMPANY", &file.Company},
                                                                          {"DATE", &file.Date}}};
    for (int line = 1; !text.empty(); ++line) {
        std::string_view rest = text;
        const std::string_view whole = base::TakeLine(rest);
        if (Begins(whole, "CHIP")) return line;
        for (const auto& [head, value] : heads)
            if (Begins(whole, head) && base::TrimView(whole).size() > head.size())
                *value = base::TrimView(base::TrimView(whole).substr(head.size()));
        text = rest;
    }
    Fail(0, "there is no CHIP line");
}

}  // namespace

Conversion ConvertPalasm(std::string_view text, const std::string& name) {
    PldFile file;
    file.Name = name;
    file.Origin = "Made from the PAL equations " + name;
    const int chip = TakeHeader(text, file);
    std::string_view design = text, rest = text;
    int line = chip, simulation = 0;
    for (; !rest.empty() && simulation == 0; ++line) {
        const std::string_view whole = base::TakeLine(rest);
        if (!Begins(whole, "SIMULATION")) continue;
        design = text.substr(0, static_cast<std::size_t>(whole.data() - text.data()));
        simulation = line;
    }
    const std::vector<Token> cut = Cut(design, Palasm, chip);
    Strings strings;
    const std::vector<Token> tokens = strings.PutIn(cut);
    Conversion result;
    result.Notes = Reader(tokens, file).Read();
    if (simulation > 0)
        result.Notes.push_back("line " + std::to_string(simulation) + ": SIMULATION is left out");
    result.Text = file.Text();
    return result;
}

}  // namespace convert
