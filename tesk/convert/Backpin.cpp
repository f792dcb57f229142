#include "convert/Backpin.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "base/HostNames.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Failure.h"
#include "front/Names.h"
#include "front/Parser.h"
#include "front/Run.h"

namespace convert {
namespace {

constexpr std::string_view Option = "fbp";

// Where the drive of a path begins that something else stands glued to.
std::size_t DriveIn(std::string_view text) {
    for (std::size_t i = 0; i + 2 < text.size(); ++i)
        if (base::IsDrivePath(text.substr(i))) return i;
    return text.find('/');
}

struct Edit {
    std::size_t From = 0, To = 0;
    std::string By;
};

// What stands between numbers and is none of them.
std::string CommentsIn(std::string_view text) {
    std::string comments;
    for (std::size_t at = 0; (at = text.find("/*", at)) != text.npos;) {
        const std::size_t end = std::min(text.find("*/", at + 2), text.size() - 2) + 2;
        comments += text.substr(at, end - at);
        at = end;
    }
    return comments;
}

// One declaration of the design in its text.
class Declared {
  public:
    Declared(std::string_view code, std::size_t at, const front::Declaration& declaration,
             const std::vector<front::ListedName>& names)
        : code_(code), at_(at), declaration_(declaration), names_(names) {
        wordEnd_ = SkipWord(at_);
        const std::size_t next = SkipBlanks(wordEnd_);
        numbersEnd_ = wordEnd_;
        if (declaration_.Numbered) {
            const bool isList = next < code_.size() && code_[next] == '[';
            numbersBegin_ = next;
            numbersEnd_ = isList ? std::min(code_.find(']', next), code_.size() - 1) + 1 : SkipWord(next);
        }
    }

    // What takes the numbers out, with the blanks before them.
    std::vector<Edit> Float() const {
        if (!declaration_.Numbered) return {};
        std::vector<Edit> edits;
        if (declaration_.Kind == front::VariableKind::PinNode)
            edits.push_back({at_, wordEnd_, Cased("NODE")});
        edits.push_back({wordEnd_, numbersEnd_, ""});
        return edits;
    }

    // What puts the fit's numbers in; none if a name has none.
    std::vector<Edit> Assign(const FitPins& fit) const {
        std::vector<int> numbers;
        for (const front::ListedName& name : names_) {
            const auto found = fit.Numbers.find(name.Name);
            if (found == fit.Numbers.end()) return {};
            numbers.push_back(found->second);
        }
        std::vector<Edit> edits;
        if (declaration_.Numbered) {
            if (numbers != declaration_.Numbers)
                edits.push_back({numbersBegin_, numbersEnd_, NumberText(numbers)});
            return edits;
        }
        const bool isNode = declaration_.Kind == front::VariableKind::Node;
        if (isNode) edits.push_back({at_, wordEnd_, Cased("PINNODE")});
        const std::size_t next = SkipBlanks(wordEnd_);
        const bool hasSign = next < code_.size() && code_[next] == '=';
        edits.push_back({wordEnd_, wordEnd_, " " + NumberText(numbers) + (hasSign ? "" : " =")});
        return edits;
    }

    bool IsSettled(const FitPins& fit) const {
        return declaration_.Numbered && Assign(fit).empty() &&
               std::all_of(names_.begin(), names_.end(),
                           [&](const auto& name) { return fit.Numbers.contains(name.Name); });
    }

  private:
    std::size_t SkipWord(std::size_t at) const {
        while (at < code_.size() && base::IsWordChar(code_[at])) ++at;
        return at;
    }
    std::size_t SkipBlanks(std::size_t at) const {
        return std::min(code_.find_first_not_of(" \t\r\n", at), code_.size());
    }

    // In the case of the word that it replaces.
    std::string Cased(std::string_view upper) const {
        const char second = code_[at_ + 1];
        if (second == base::UpperChar(second)) return std::string(upper);
        std::string word = base::Lower(upper);
        word[0] = code_[at_] == base::UpperChar(code_[at_]) ? upper[0] : word[0];
        return word;
    }

    // A run up or down as the range that it is.
    static std::string NumberText(const std::vector<int>& numbers) {
        if (numbers.size() == 1) return std::to_string(numbers[0]);
        const int step = numbers[1] - numbers[0];
        bool isRun = step == 1 || step == -1;
        for (std::size_t i = 2; i < numbers.size(); ++i) isRun = isRun && numbers[i] - numbers[i - 1] == step;
        std::string text = "[" + std::to_string(numbers[0]);
        if (isRun && numbers.size() > 2) return text + ".." + std::to_string(numbers.back()) + "]";
        for (std::size_t i = 1; i < numbers.size(); ++i) text += "," + std::to_string(numbers[i]);
        return text + "]";
    }

    std::string_view code_;
    std::size_t at_;
    const front::Declaration& declaration_;
    const std::vector<front::ListedName>& names_;
    std::size_t wordEnd_ = 0, numbersBegin_ = 0, numbersEnd_ = 0;
};

class Annotator {
  public:
    Annotator(front::Files& files, const std::string& path, Annotation what, const FitPins& fit)
        : run_(files, silent_), what_(what), fit_(fit) {
        run_.Base = path.substr(0, path.size() - 4);
        run_.Device = "virtual";
    }

    Annotated Work() {
        if (!front::ExpandStage(run_)) FailAtFirst();
        front::Parse(run_.Source, run_.Said, run_.Syntax);
        if (!run_.Ok()) FailAtFirst();
        Lay();
        for (const front::Statement& statement : run_.Syntax.Statements)
            if (const auto* declaration = std::get_if<front::Declaration>(&statement))
                ++seen_[KeyOf(*declaration)];
        for (const front::Statement& statement : run_.Syntax.Statements)
            if (const auto* declaration = std::get_if<front::Declaration>(&statement)) Take(*declaration);
        return {Changed(), std::move(notes_)};
    }

  private:
    using Key = std::pair<std::int32_t, std::int32_t>;
    static Key KeyOf(const front::Declaration& declaration) {
        return {declaration.At.Line, declaration.At.Column};
    }

    [[noreturn]] void FailAtFirst() const {
        for (const front::Message& message : run_.Said.Messages())
            if (message.Level == front::Severity::Error) Fail(message.At.Line, message.Text);
        Fail(0, "the design cannot be read");
    }

    // The text with blanks for its comments, byte for byte, and where its lines begin.
    void Lay() {
        const front::SourceFile& file = run_.Source.Files.front();
        code_ = file.Bytes;
        std::string_view rest = file.Bytes;
        for (std::size_t line = 0; !rest.empty() && line < file.Code.size(); ++line) {
            const std::size_t start = file.Bytes.size() - rest.size();
            base::TakeLine(rest);
            starts_.push_back(start);
            code_.replace(start, file.Code[line].size(), file.Code[line]);
        }
    }

    void Take(const front::Declaration& declaration) {
        const bool isPin = declaration.Kind == front::VariableKind::Pin;
        if (what_ == Annotation::AssignPins && !isPin) return;
        if (declaration.At.File != 0)
            return Leave(declaration, "stands in an included file and is left as it is");
        const auto at = PlaceOf(declaration);
        if (!at || seen_[KeyOf(declaration)] > 1)
            return Leave(declaration, "comes out of a repetition, macro or definition and is left as it is");
        const std::vector<front::ListedName> names =
            front::Names(run_.Syntax, run_.Result(), run_.Said).Listed(declaration.Names);
        if (names.empty() || !run_.Ok()) FailAtFirst();  // a range that is none
        const Declared declared(code_, *at, declaration, names);
        const std::vector<Edit> edits = what_ == Annotation::Float ? declared.Float() : declared.Assign(fit_);
        if (edits.empty() && what_ != Annotation::Float && !declared.IsSettled(fit_))
            Leave(declaration, "has a name to which the fit gives no pin and is left as it is");
        edits_.insert(edits_.end(), edits.begin(), edits.end());
    }

    // Where the declaration begins in the text; none if it does not stand there as the compiler sees it.
    std::optional<std::size_t> PlaceOf(const front::Declaration& declaration) const {
        const auto line = static_cast<std::size_t>(declaration.At.Line - 1);
        if (declaration.At.Column < 1 || line >= starts_.size()) return std::nullopt;
        const std::size_t at = starts_[line] + static_cast<std::size_t>(declaration.At.Column - 1);
        const std::string_view word = declaration.Kind == front::VariableKind::Pin    ? "PIN"
                                      : declaration.Kind == front::VariableKind::Node ? "NODE"
                                                                                      : "PINNODE";
        if (!base::EqualNoCase(std::string_view(code_).substr(std::min(at, code_.size()), word.size()), word))
            return std::nullopt;
        return at;
    }

    void Leave(const front::Declaration& declaration, const char* why) {
        notes_.push_back("line " + std::to_string(declaration.At.Line) + ": the declaration " + why);
    }

    std::string Changed() {
        std::string text = run_.Source.Files.front().Bytes;
        std::sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) { return a.From > b.From; });
        for (const Edit& edit : edits_) {
            const std::string kept =
                CommentsIn(std::string_view(text).substr(edit.From, edit.To - edit.From));
            text.replace(edit.From, edit.To - edit.From, edit.By + kept);
        }
        return text;
    }

    front::Listener silent_;
    front::Run run_;
    Annotation what_;
    const FitPins& fit_;
    std::string code_;
    std::vector<std::size_t> starts_;
    std::map<Key, int> seen_;
    std::vector<Edit> edits_;
    std::vector<std::string> notes_;
};

}  // namespace

BackpinCommand ReadBackpinCommand(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments) line += (line.empty() ? "" : " ") + argument;
    if (line.size() < 3 || line[0] != '-' || Option.find(line[1]) == Option.npos)
        Fail(0, "-f, -b or -p is expected, a device and a design");
    BackpinCommand command;
    command.What = line[1] == 'f'   ? Annotation::Float
                   : line[1] == 'b' ? Annotation::AssignAll
                                    : Annotation::AssignPins;
    const std::string_view rest = std::string_view(line).substr(2);
    const std::size_t drive = DriveIn(rest);
    const std::size_t blank = rest.substr(0, 1) == " " ? rest.find(' ', 1) : rest.npos;
    const std::size_t cut = std::min(drive, blank);
    if (cut == rest.npos) Fail(0, "a design is expected behind the device");
    command.Device = base::TrimView(rest.substr(0, cut));
    command.Design = base::TrimView(rest.substr(cut));
    if (command.Device.empty() || command.Design.empty()) Fail(0, "a device and a design are expected");
    return command;
}

// The lines of the symbol table: polarity, name, extension, pin, kind. Intermediate variables have no number.
FitPins ReadFitPins(std::string_view document) {
    constexpr std::size_t nameAt = 4, extensionAt = 36, pinAt = 41;
    FitPins fit;
    bool isTable = false;
    while (!document.empty()) {
        const std::string_view line = base::TakeLine(document);
        const auto words = base::Words(line);
        if (words.size() > 2 && words[0] == "Compiled" && words[1] == "for")
            fit.Device = words[2].substr(0, words[2].find(','));
        if (base::StartsWith(line, "Pol Name")) isTable = true;
        if (isTable && line.empty()) break;
        if (!isTable || line.size() <= pinAt || line.size() < extensionAt) continue;
        const std::string_view number = base::TrimView(line.substr(pinAt, 4));
        int pin = 0;
        std::from_chars(number.data(), number.data() + number.size(), pin);
        if (pin > 0)
            fit.Numbers[std::string(base::TrimView(line.substr(nameAt, extensionAt - nameAt)))] = pin;
    }
    if (!isTable || fit.Device.empty()) Fail(0, "there is no symbol table in it");
    if (base::EqualNoCase(fit.Device, "virtual")) Fail(0, "it is of a run for no device");
    if (fit.Numbers.empty()) Fail(0, "the design did not fit: no name has a pin");
    return fit;
}

Annotated Annotate(front::Files& files, const std::string& path, Annotation what, const FitPins& fit) {
    return Annotator(files, path, what, fit).Work();
}

}  // namespace convert
