#include "front/Replacement.h"

#include <algorithm>

#include "front/Limits.h"
#include "front/Source.h"

namespace front {

namespace {

constexpr std::size_t kReplacementDepth = 32;

std::size_t WordEnd(std::string_view text, std::size_t at) {
    while (at < text.size() && IsWordChar(text[at])) ++at;
    return at;
}

bool ReplaceBraces(std::string_view text, const Bindings& values, std::string& out) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find('{', at);
        const std::size_t close = open == std::string_view::npos ? open : text.find('}', open);
        if (close == std::string_view::npos) break;
        const std::size_t inner = text.find('{', open + 1);
        if (inner < close) {
            out += text.substr(at, inner - at);
            at = inner;
            continue;
        }
        out += text.substr(at, open - at);
        std::int64_t value = 0;
        const ArithmeticResult result = Evaluate(text.substr(open + 1, close - open - 1), values, value);
        if (result == ArithmeticResult::OutOfRange) return false;
        if (result == ArithmeticResult::Ok)
            out += std::to_string(value);
        else
            out += text.substr(open, close - open + 1);
        at = close + 1;
    }
    out += text.substr(at);
    return true;
}

}  // namespace

bool ReplaceWords(std::string_view text, const std::function<const std::string*(std::string_view)>& visit,
                  std::string& out) {
    bool changed = false;
    std::size_t done = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\'' && at + 2 < text.size() && text[at + 2] == '\'') {
            at = WordEnd(text, at + 3);
        } else if (IsWordChar(text[at])) {
            const std::size_t end = WordEnd(text, at);
            if (const std::string* with = visit(text.substr(at, end - at))) {
                out += text.substr(done, at - done);
                out += *with;
                done = end;
                changed = true;
            }
            at = end;
        } else {
            ++at;
        }
    }
    if (changed) out += text.substr(done);
    return changed;
}

bool Definitions::Define(std::string_view name, std::string_view text) {
    const auto [entry, fresh] = texts_.emplace(name, text);
    const bool same = fresh || entry->second == text;
    entry->second = text;
    return same;
}

void Definitions::Undefine(std::string_view name) {
    const auto entry = texts_.find(name);
    if (entry != texts_.end()) texts_.erase(entry);
}

Definitions::Outcome Definitions::Apply(std::string_view text, std::string& out) const {
    if (texts_.empty()) return Outcome::Same;
    bool any = false;
    std::string unused;
    ReplaceWords(
        text,
        [&](std::string_view word) {
            any = any || Has(word);
            return nullptr;
        },
        unused);
    if (!any) return Outcome::Same;
    std::vector<std::string_view> active;
    std::size_t count = 0;
    return Expand(text, active, count, out) ? Outcome::Changed : Outcome::TooLong;
}

bool Definitions::Expand(std::string_view text, std::vector<std::string_view>& active, std::size_t& count,
                         std::string& out) const {
    bool fits = true;
    std::string replaced;
    const auto visit = [&](std::string_view word) -> const std::string* {
        const auto entry = texts_.find(word);
        if (entry == texts_.end() || !fits) return nullptr;
        if (std::find(active.begin(), active.end(), word) != active.end()) return nullptr;
        fits = ++count <= Limits::Replacements && active.size() < kReplacementDepth &&
               out.size() <= Limits::LineBytes;
        replaced.clear();
        active.push_back(entry->first);
        fits = fits && Expand(entry->second, active, count, replaced);
        active.pop_back();
        return &replaced;
    };
    std::string result;
    if (!ReplaceWords(text, visit, result)) result = text;
    out += result;
    return fits && out.size() <= Limits::LineBytes;
}

bool ApplyScope(std::string_view text, const Scope& scope, std::string& out) {
    const auto visit = [&](std::string_view word) -> const std::string* {
        for (const auto& [name, value] : scope.Words)
            if (name == word) return &value;
        return nullptr;
    };
    std::string worded;
    if (!ReplaceWords(text, visit, worded)) worded = text;
    return ReplaceBraces(worded, scope.Values, out);
}

}  // namespace front
