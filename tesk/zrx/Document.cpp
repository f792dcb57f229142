#include "zrx/Document.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <stdexcept>
#include <vector>

#include "base/Text.h"

namespace zrx {

namespace {

constexpr std::size_t longestName = 31;

// The lines of a document by the title of their section.
using Sections = std::map<std::string, std::vector<std::string_view>, std::less<>>;

Sections SectionsOf(std::string_view text) {
    Sections sections;
    const auto lines = base::LineViews(text);
    const auto isRule = [&](std::size_t i) { return i < lines.size() && lines[i].starts_with("====="); };
    std::vector<std::string_view>* current = nullptr;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (isRule(i) && isRule(i + 2)) {
            current = &sections[base::Trim(lines[i + 1])];
            i += 2;
        } else if (current != nullptr && !base::TrimView(lines[i]).empty()) {
            current->push_back(lines[i]);
        }
    }
    return sections;
}

bool IsName(std::string_view text) {
    return !text.empty() && text.size() <= longestName &&
           std::all_of(text.begin(), text.end(),
                       [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
}

std::string_view Columns(std::string_view line, std::size_t first, std::size_t count) {
    return first < line.size() ? base::TrimView(line.substr(first, count)) : std::string_view();
}

class Reader {
  public:
    explicit Reader(std::string_view text) : sections_(SectionsOf(text)) {}

    Document Read() {
        try {
            ReadHeader(Section("Document"));
            ReadSymbols(Section("Symbol Table"));
            ReadEquations(Section("Expanded Product Terms"));
        } catch (const std::runtime_error& fault) {
            document_.Error = fault.what();
        }
        return std::move(document_);
    }

  private:
    [[noreturn]] static void Fail(const std::string& what) { throw std::runtime_error(what); }

    const std::vector<std::string_view>& Section(const std::string& title) const {
        const auto found = sections_.find(title);
        if (found == sections_.end()) Fail("it has no part \"" + title + "\"");
        return found->second;
    }

    void ReadHeader(const std::vector<std::string_view>& lines) {
        for (const std::string_view line : lines) {
            const std::string_view word = Columns(line, 0, 10);
            const std::string text = base::Trim(line.substr(std::min<std::size_t>(10, line.size())));
            for (std::size_t i = 0; i < model::headerWords.size(); ++i)
                if (model::headerWords[i].Name == word) document_.Header[i] = text;
            if (word == "Compiled" && text.starts_with("for "))
                document_.Device = text.substr(4, text.find(',') - 4);
        }
        if (document_.Name().empty()) Fail("its header has no name");
    }

    // The columns are those of the compiler: polarity, name, extension, pin, kind.
    void ReadSymbols(const std::vector<std::string_view>& lines) {
        for (const std::string_view line : lines) {
            const std::string_view kind = Columns(line, 46, 13);
            const bool isNode = kind == "node" || kind == "pinnode";
            if (!isNode && kind != "pin") continue;
            const std::string name(Columns(line, 4, 31));
            if (!IsName(name)) Fail("\"" + base::DisplayUtf8(name) + "\" is no name");
            if (!signals_.emplace(name, document_.Design.Signals.size()).second) continue;
            if (signals_.size() > DocumentLimits::Signals) Fail("it has too many names");
            fit::Signal signal;
            signal.Name = name;
            signal.ActiveLow = Columns(line, 0, 3) == "!";
            signal.Node = isNode;
            for (const char c : Columns(line, 41, 4))
                signal.Pin =
                    std::isdigit(static_cast<unsigned char>(c)) != 0 ? signal.Pin * 10 + (c - '0') : 0;
            document_.Design.Signals.push_back(signal);
        }
    }

    void ReadEquations(const std::vector<std::string_view>& lines) {
        fit::Sum* sum = nullptr;
        for (const std::string_view line : lines) {
            const bool isTerm = line.starts_with("    ") || line.starts_with("  # ");
            if (!isTerm)
                sum = base::TrimView(line).ends_with("=>") ? &NewFunction(base::TrimView(line)) : nullptr;
            else if (sum != nullptr)
                ReadTerm(base::TrimView(line.substr(4)), *sum);
        }
        if (document_.Design.Functions.empty()) Fail("it has no product terms");
    }

    // "!Q0.D =>"
    fit::Sum& NewFunction(std::string_view line) {
        std::string_view name = base::TrimView(line.substr(0, line.size() - 2));
        fit::Function function;
        const bool inverted = name.starts_with('!');
        if (inverted) name.remove_prefix(1);
        const std::size_t dot = name.find('.');
        function.Signal = Find(name.substr(0, dot));
        if (dot != name.npos) {
            const auto input = model::InputWords.Find(std::string(name.substr(dot + 1)));
            if (!input || *input == model::Input::Out)
                Fail("\"" + base::DisplayUtf8(name) + "\" is no input");
            function.To = *input;
        }
        if (!functions_.emplace(function.Signal, function.To).second)
            Fail("it has two equations for " + std::string(name));
        SetRegister(document_.Design.Signals[function.Signal], function.To);
        (inverted ? function.False : function.True).emplace();
        fit::Function& added = document_.Design.Functions.emplace_back(std::move(function));
        return inverted ? *added.False : *added.True;
    }

    static void SetRegister(fit::Signal& signal, model::Input to) {
        using model::Input;
        using model::RegisterKind;
        constexpr std::array<std::pair<Input, RegisterKind>, 7> kinds{{{Input::D, RegisterKind::D},
                                                                       {Input::T, RegisterKind::T},
                                                                       {Input::J, RegisterKind::Jk},
                                                                       {Input::K, RegisterKind::Jk},
                                                                       {Input::S, RegisterKind::Rs},
                                                                       {Input::R, RegisterKind::Rs},
                                                                       {Input::L, RegisterKind::Latch}}};
        for (const auto& [input, kind] : kinds)
            if (input == to) signal.Register = kind;
    }

    void ReadTerm(std::string_view text, fit::Sum& sum) {
        if (text == "'b'0") return;
        fit::Term& term = sum.emplace_back();
        if (text == "'b'1") return;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(" & "), text.size());
            term.push_back(ReadLiteral(base::TrimView(text.substr(0, end))));
            text.remove_prefix(std::min(text.size(), end + 3));
        }
        literals_ += term.size();
        if (literals_ > DocumentLimits::Literals) Fail("it has too many product terms");
    }

    fit::Literal ReadLiteral(std::string_view text) const {
        fit::Literal literal;
        literal.Negated = text.starts_with('!');
        if (literal.Negated) text.remove_prefix(1);
        literal.Pin = text.ends_with(".IO");
        if (literal.Pin) text.remove_suffix(3);
        literal.Signal = Find(text);
        return literal;
    }

    std::size_t Find(std::string_view name) const {
        const auto found = signals_.find(name);
        if (found == signals_.end()) Fail("\"" + base::DisplayUtf8(name) + "\" is not in its symbol table");
        return found->second;
    }

    Sections sections_;
    std::map<std::string, std::size_t, std::less<>> signals_;
    std::set<std::pair<std::size_t, model::Input>> functions_;
    std::size_t literals_ = 0;
    Document document_;
};

}  // namespace

std::size_t Document::Terms() const {
    std::size_t terms = 0;
    for (const fit::Function& function : Design.Functions)
        terms += (function.True ? *function.True : *function.False).size();
    return terms;
}

Document ReadDocument(std::string_view text) { return Reader(text).Read(); }

}  // namespace zrx
