#include "front/Preprocessor.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <optional>
#include <span>

#include "base/Text.h"
#include "front/Constant.h"
#include "front/Limits.h"
#include "front/Replacement.h"

namespace front {

namespace {

enum class Command {
    None,
    Define,
    Undef,
    Include,
    IfDef,
    IfNotDef,
    Else,
    EndIf,
    Repeat,
    RepeatEnd,
    Macro,
    MacroEnd
};

struct CommandWord {
    std::string_view Text;
    Command What;
};

constexpr std::array kCommands{
    CommandWord{"$DEFINE", Command::Define},    CommandWord{"$UNDEF", Command::Undef},
    CommandWord{"$INCLUDE", Command::Include},  CommandWord{"$IFDEF", Command::IfDef},
    CommandWord{"$IFNDEF", Command::IfNotDef},  CommandWord{"$ELSE", Command::Else},
    CommandWord{"$ENDIF", Command::EndIf},      CommandWord{"$REPEAT", Command::Repeat},
    CommandWord{"$REPEND", Command::RepeatEnd}, CommandWord{"$MACRO", Command::Macro},
    CommandWord{"$MEND", Command::MacroEnd},
};

constexpr std::string_view kLineMark = "/*$LINE ";
constexpr int kMaxLine = 100'000'000;

struct Line {
    std::string_view Text;
    Place At;
};
using Block = std::span<const Line>;

struct Macro {
    std::vector<std::string> Names;
    std::vector<Line> Body;
};

struct Condition {
    Place At;
    bool Active;  // its lines are taken
    bool ParentActive;
    bool ElseSeen = false;
};

struct Parsed {
    Command What = Command::None;
    std::string_view Rest;  // behind the command word, trimmed
};

Parsed ParseCommand(std::string_view text) {
    text = TrimView(text);
    if (text.empty() || text[0] != '$') return {};
    const std::string_view word = text.substr(0, FirstWord(text.substr(1)).size() + 1);
    if (text.size() > 1 && IsBlank(text[1])) return {};
    for (const CommandWord& command : kCommands)
        if (base::EqualNoCase(word, command.Text)) return {command.What, TrimView(text.substr(word.size()))};
    return {};
}

// The pieces of a text between blanks and commas that stand outside brackets and parentheses.
std::vector<std::string_view> Pieces(std::string_view text, bool atBlanks) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    int depth = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        const char c = at < text.size() ? text[at] : ',';
        if (c == '(' || c == '[') ++depth;
        if (c == ')' || c == ']') --depth;
        if (at < text.size() && (depth > 0 || !(c == ',' || (atBlanks && IsBlank(c))))) continue;
        const std::string_view piece = TrimView(text.substr(start, at - start));
        if (!piece.empty() || !atBlanks) pieces.push_back(piece);
        start = at + 1;
    }
    return pieces;
}

class Preprocessor {
  public:
    Preprocessor(Files& files, Report& report, Source& source)
        : files_(files), report_(report), source_(source) {}

    void Run(std::string_view path) {
        const std::optional<int> design = Load(path);
        if (!design) return report_.Add(Code::DesignUnreadable, {}, path);
        Take(*design);
    }

  private:
    // Where expanded lines come from: the call of the outermost macro, and what is bound.
    struct Context {
        Scope Bound;
        Place Call;
        std::size_t Depth = 0;
    };

    std::optional<int> Load(std::string_view path);
    bool TakeLineMark(std::string_view text, Place& at);
    void Take(int file);
    void Process(Block lines, const Context& context);
    std::size_t Conditional(const Line& line, const Parsed& command, std::vector<Condition>& open);
    // Each takes the line at `at` and gives the index of the last line it used.
    std::size_t TakeLine(Block lines, std::size_t at, const Context& context);
    std::size_t Repeat(Block lines, std::size_t at, const Parsed& command, const Context& context);
    std::size_t DefineMacro(Block lines, std::size_t at, const Parsed& command);
    void Define(const Line& line, std::string_view rest);
    void Include(const Line& line, std::string_view rest);
    void Plain(const Line& line, const Context& context);
    void Call(const Line& line, std::string_view text, const Macro& macro, const Context& context);
    void Emit(std::string text, const Line& line, const Context& context, bool exact);
    bool Replace(const Line& line, std::string_view text, const Context& context, std::string& out,
                 bool& same);
    std::optional<std::vector<std::int64_t>> Values(const Line& line, std::string_view list,
                                                    const Bindings& names);
    bool Append(const Line& line, std::string_view item, const Bindings& names,
                std::vector<std::int64_t>& values);
    void Stop(Code code, Place at) {
        if (!stopped_) report_.Add(code, at);
        stopped_ = true;
    }

    Files& files_;
    Report& report_;
    Source& source_;
    Definitions definitions_;
    std::map<std::string, Macro, std::less<>> macros_;
    std::map<std::string, int> loaded_;
    std::vector<int> including_;
    std::deque<std::vector<Line>> views_;  // stay where they are while further files are read
    std::size_t loadedBytes_ = 0;
    std::size_t expandedBytes_ = 0;
    std::size_t processed_ = 0;
    bool stopped_ = false;
};

std::optional<int> Preprocessor::Load(std::string_view path) {
    const std::string identity = files_.Identity(path);
    if (const auto known = loaded_.find(identity); known != loaded_.end()) return known->second;
    std::optional<std::string> bytes = files_.Read(path, Limits::FileBytes);
    if (!bytes) return std::nullopt;
    loadedBytes_ += bytes->size();
    const int index = static_cast<int>(source_.Files.size());
    SourceFile& file = source_.Files.emplace_back();
    file.Path = path;
    file.Name = static_cast<int>(report_.FileNames.size());
    file.Bytes = std::move(*bytes);
    report_.FileNames.push_back(std::string(FileName(path)));
    BlankComments(file);
    std::vector<Line>& view = views_.emplace_back();
    Place at{file.Name, 0, 0};
    const std::vector<std::string_view> raw = base::LineViews(file.Bytes);
    for (std::size_t i = 0; i < file.Code.size(); ++i) {
        ++at.Line;
        if (TakeLineMark(raw[i], at)) continue;
        view.push_back({file.Code[i], at});
    }
    loaded_.emplace(identity, index);
    return index;
}

// A mark of an expanded text: the next line is the one that the mark tells.
bool Preprocessor::TakeLineMark(std::string_view text, Place& at) {
    if (text.substr(0, kLineMark.size()) != kLineMark || text.substr(text.size() - 2) != "*/") return false;
    text = text.substr(kLineMark.size(), text.size() - kLineMark.size() - 2);
    const std::size_t cut = text.rfind(' ');
    const auto number =
        cut == std::string_view::npos ? std::nullopt : ParseDecimal(text.substr(cut + 1), kMaxLine);
    if (!number) return false;
    const auto known = std::find(report_.FileNames.begin(), report_.FileNames.end(), text.substr(0, cut));
    at.File = static_cast<int>(known - report_.FileNames.begin());
    at.Line = *number - 1;
    if (known == report_.FileNames.end()) report_.FileNames.emplace_back(text.substr(0, cut));
    return true;
}

void Preprocessor::Take(int file) {
    const int name = source_.Files[static_cast<std::size_t>(file)].Name;
    if (loadedBytes_ > Limits::SourceBytes) return Stop(Code::TextTooBig, {name, 0, 0});
    including_.push_back(file);
    Process(views_[static_cast<std::size_t>(file)], {});
    const int open = source_.Files[static_cast<std::size_t>(file)].OpenComment;
    if (open > 0) report_.Add(Code::CommentOpen, {name, open, 0});
    including_.pop_back();
}

void Preprocessor::Process(Block lines, const Context& context) {
    std::vector<Condition> open;
    for (std::size_t at = 0; at < lines.size() && !stopped_ && !report_.Full(); ++at) {
        const Line& line = lines[at];
        if (++processed_ > Limits::ProcessedLines) return Stop(Code::TextTooBig, line.At);
        if (line.Text.size() > Limits::LineBytes) return Stop(Code::LineTooLong, line.At);
        const Parsed command = ParseCommand(line.Text);
        if (command.What >= Command::IfDef && command.What <= Command::EndIf)
            Conditional(line, command, open);
        else if (open.empty() || open.back().Active)
            at = TakeLine(lines, at, context);
    }
    for (const Condition& condition : open) report_.Add(Code::ConditionOpen, condition.At);
}

std::size_t Preprocessor::Conditional(const Line& line, const Parsed& command, std::vector<Condition>& open) {
    const bool active = open.empty() || open.back().Active;
    if (command.What == Command::IfDef || command.What == Command::IfNotDef) {
        const std::string_view name = FirstWord(command.Rest);
        if (name.empty()) report_.Add(Code::CommandSyntax, line.At, "a name is missing");
        const bool wanted = definitions_.Has(name) == (command.What == Command::IfDef);
        open.push_back({line.At, active && wanted, active});
    } else if (open.empty() || (command.What == Command::Else && open.back().ElseSeen)) {
        report_.Add(Code::ConditionUnbalanced, line.At);
    } else if (command.What == Command::Else) {
        open.back().ElseSeen = true;
        open.back().Active = open.back().ParentActive && !open.back().Active;
    } else {
        open.pop_back();
    }
    return open.size();
}

std::size_t Preprocessor::TakeLine(Block lines, std::size_t at, const Context& context) {
    const Line& line = lines[at];
    const Parsed command = ParseCommand(line.Text);
    std::string rest(command.Rest);
    if (command.What != Command::None && !context.Bound.Empty()) {
        rest.clear();
        if (!ApplyScope(command.Rest, context.Bound, rest)) report_.Add(Code::Arithmetic, line.At);
    }
    switch (command.What) {
        case Command::Define:
            Define(line, rest);
            break;
        case Command::Undef:
            definitions_.Undefine(FirstWord(rest));
            break;
        case Command::Include:
            Include(line, rest);
            break;
        case Command::Repeat:
            return Repeat(lines, at, command, context);
        case Command::Macro:
            return DefineMacro(lines, at, command);
        case Command::RepeatEnd:
        case Command::MacroEnd:
            report_.Add(Code::BlockEnd, line.At);
            break;
        default:
            Plain(line, context);
            return at;
    }
    Emit({}, line, context, true);  // keeps the line count of the text
    return at;
}

void Preprocessor::Define(const Line& line, std::string_view rest) {
    const std::string_view name = FirstWord(rest);
    if (name.empty()) return report_.Add(Code::CommandSyntax, line.At, "a name is missing");
    if (!definitions_.Define(name, TrimView(rest.substr(name.size()))))
        report_.Add(Code::Redefined, line.At, name);
}

void Preprocessor::Include(const Line& line, std::string_view rest) {
    if (rest.size() > 1 && rest.front() == '"' && rest.back() == '"') rest = rest.substr(1, rest.size() - 2);
    if (!rest.empty() && rest.back() == ';') rest = TrimView(rest.substr(0, rest.size() - 1));
    if (rest.empty()) return report_.Add(Code::CommandSyntax, line.At, "a file name is missing");
    const SourceFile& from = source_.Files[static_cast<std::size_t>(including_.back())];
    const std::optional<int> file = Load(Beside(from.Path, rest));
    if (!file) return report_.Add(Code::IncludeMissing, line.At, rest);
    for (int outer : including_)
        if (outer == *file) return report_.Add(Code::IncludeLoop, line.At, rest);
    if (including_.size() >= Limits::IncludeDepth) return report_.Add(Code::IncludeDepth, line.At, rest);
    Take(*file);
}

bool Preprocessor::Replace(const Line& line, std::string_view text, const Context& context, std::string& out,
                           bool& same) {
    std::string scoped;
    same = context.Bound.Empty();
    if (!same) {
        if (!ApplyScope(text, context.Bound, scoped)) {
            report_.Add(Code::Arithmetic, line.At);
            return false;
        }
        text = scoped;
    }
    const Definitions::Outcome outcome = definitions_.Apply(text, out);
    if (outcome == Definitions::Outcome::Same) out = text;
    same = same && outcome == Definitions::Outcome::Same;
    if (outcome != Definitions::Outcome::TooLong && out.size() <= Limits::LineBytes) return true;
    report_.Add(Code::ReplacementLoop, line.At);
    return false;
}

void Preprocessor::Plain(const Line& line, const Context& context) {
    std::string text;
    bool same = true;
    if (!Replace(line, line.Text, context, text, same)) return;
    const std::string_view word = FirstWord(text);
    const auto macro = word.empty() ? macros_.end() : macros_.find(word);
    if (macro != macros_.end()) return Call(line, text, macro->second, context);
    Emit(std::move(text), line, context, same);
}

void Preprocessor::Emit(std::string text, const Line& line, const Context& context, bool exact) {
    expandedBytes_ += text.size();
    if (expandedBytes_ > Limits::ExpandedBytes || source_.Lines.size() >= Limits::ExpandedLines)
        return Stop(Code::TextTooBig, line.At);
    const bool called = context.Call.File >= 0;
    source_.Lines.push_back(
        {std::move(text), called ? context.Call : line.At, called ? line.At : Place{}, exact && !called});
}

std::size_t Preprocessor::DefineMacro(Block lines, std::size_t at, const Parsed& command) {
    std::vector<std::string_view> words = Pieces(command.Rest, true);
    Macro macro;
    for (std::size_t i = 1; i < words.size(); ++i) macro.Names.emplace_back(words[i]);
    std::size_t end = at + 1;
    while (end < lines.size() && ParseCommand(lines[end].Text).What != Command::MacroEnd) {
        macro.Body.push_back(lines[end]);
        ++end;
    }
    if (end == lines.size()) report_.Add(Code::MacroOpen, lines[at].At);
    if (words.empty())
        report_.Add(Code::CommandSyntax, lines[at].At, "a name is missing");
    else
        macros_.insert_or_assign(std::string(words[0]), std::move(macro));
    return end;
}

void Preprocessor::Call(const Line& line, std::string_view text, const Macro& macro, const Context& context) {
    const std::string_view name = FirstWord(text);
    std::string_view rest = TrimView(text);
    rest = rest.substr(name.size());
    if (const std::size_t end = rest.find(';'); end != std::string_view::npos) {
        if (!TrimView(rest.substr(end + 1)).empty())
            return report_.Add(Code::CommandSyntax, line.At, "a macro call stands on a line of its own");
        rest = rest.substr(0, end);
    } else {
        return report_.Add(Code::CommandSyntax, line.At, "a macro call ends with \";\"");
    }
    const std::vector<std::string_view> values = Pieces(rest, true);
    const std::string counts = std::string(name) + " takes " + std::to_string(macro.Names.size()) + ", got " +
                               std::to_string(values.size());
    if (values.size() < macro.Names.size()) return report_.Add(Code::MacroArguments, line.At, counts);
    if (values.size() > macro.Names.size()) report_.Add(Code::MacroExtra, line.At, counts);
    if (context.Depth >= Limits::MacroDepth) return Stop(Code::MacroDepth, line.At);
    Context inner;
    inner.Call = context.Call.File >= 0 ? context.Call : line.At;
    inner.Depth = context.Depth + 1;
    for (std::size_t i = 0; i < macro.Names.size(); ++i)
        inner.Bound.Words.emplace_back(macro.Names[i], std::string(values[i]));
    const Macro body = macro;  // the body may define the name anew
    Process(body.Body, inner);
}

std::size_t Preprocessor::Repeat(Block lines, std::size_t at, const Parsed& command, const Context& context) {
    std::size_t end = at + 1;
    for (int depth = 1; end < lines.size(); ++end) {
        const Command what = ParseCommand(lines[end].Text).What;
        depth += what == Command::Repeat ? 1 : what == Command::RepeatEnd ? -1 : 0;
        if (depth == 0) break;
    }
    if (end == lines.size()) {
        report_.Add(Code::RepeatOpen, lines[at].At);
        return end;
    }
    std::string rest;
    bool same = true;
    if (!Replace(lines[at], command.Rest, context, rest, same)) return end;
    const std::string_view name = FirstWord(rest);
    const auto values =
        Values(lines[at], TrimView(std::string_view(rest).substr(name.size())), context.Bound.Values);
    if (!values) return end;
    if (context.Depth >= Limits::MacroDepth) {
        Stop(Code::MacroDepth, lines[at].At);
        return end;
    }
    Context inner = context;
    ++inner.Depth;
    inner.Bound.Values.insert(inner.Bound.Values.begin(), {std::string(name), 0});
    for (std::int64_t value : *values) {
        if (stopped_ || report_.Full() || ++processed_ > Limits::ProcessedLines) break;
        inner.Bound.Values.front().second = value;
        Process(lines.subspan(at + 1, end - at - 1), inner);
    }
    if (processed_ > Limits::ProcessedLines) Stop(Code::TextTooBig, lines[at].At);
    return end;
}

std::optional<std::vector<std::int64_t>> Preprocessor::Values(const Line& line, std::string_view list,
                                                              const Bindings& names) {
    if (!list.empty() && list.back() == ';') list = TrimView(list.substr(0, list.size() - 1));
    if (!list.empty() && list.front() == '=') list = TrimView(list.substr(1));
    if (list.size() < 2 || list.front() != '[' || list.back() != ']') {
        report_.Add(Code::CommandSyntax, line.At, "expected name = [first..last] or [a, b, c]");
        return std::nullopt;
    }
    std::vector<std::int64_t> values;
    for (std::string_view item : Pieces(list.substr(1, list.size() - 2), false))
        if (!Append(line, item, names, values)) return std::nullopt;
    return values;
}

bool Preprocessor::Append(const Line& line, std::string_view item, const Bindings& names,
                          std::vector<std::int64_t>& values) {
    const std::size_t dots = item.find("..");
    std::int64_t first = 0;
    std::int64_t last = 0;
    ArithmeticResult result = Evaluate(item.substr(0, dots), names, first);
    last = first;
    if (result == ArithmeticResult::Ok && dots != std::string_view::npos)
        result = Evaluate(item.substr(dots + 2), names, last);
    if (result != ArithmeticResult::Ok) {
        report_.Add(Code::Arithmetic, line.At, item);
        return false;
    }
    const std::uint64_t span = first <= last
                                   ? static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first)
                                   : static_cast<std::uint64_t>(first) - static_cast<std::uint64_t>(last);
    if (span >= Limits::RepeatCount || values.size() + span >= Limits::RepeatCount) {
        report_.Add(Code::RepeatCount, line.At, item);
        return false;
    }
    const std::int64_t step = first <= last ? 1 : -1;
    for (std::int64_t value = first; value != last; value += step) values.push_back(value);
    values.push_back(last);
    return true;
}

}  // namespace

void Preprocess(std::string_view path, Files& files, Report& report, Source& source) {
    Preprocessor(files, report, source).Run(path);
}

bool IsCommandLine(std::string_view text) { return ParseCommand(text).What != Command::None; }

}  // namespace front
