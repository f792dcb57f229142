#include <algorithm>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "wavrik/WaveReaders.h"

namespace wavrik {
namespace {

bool IsName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), base::IsWordChar);
}

bool AddRange(std::string_view from, std::string_view to, std::vector<std::string>& names) {
    const IndexedName first = SplitIndex(from);
    const IndexedName last = SplitIndex(to);
    if (first.Index < 0 || last.Index < 0 || first.Stem.empty()) return false;
    if (!last.Stem.empty() && last.Stem != first.Stem) return false;
    const int step = first.Index <= last.Index ? 1 : -1;
    for (int i = first.Index; i != last.Index + step; i += step)
        names.push_back(std::string(first.Stem) + std::to_string(i));
    return true;
}

bool AddEntry(std::string_view entry, const Fields& fields, std::vector<std::string>& names) {
    if (base::StartsWith(entry, "!")) entry.remove_prefix(1);
    const auto dots = entry.find("..");
    if (dots != entry.npos) return AddRange(entry.substr(0, dots), entry.substr(dots + 2), names);
    if (!IsName(entry)) return false;
    const auto field = fields.find(entry);
    if (field == fields.end())
        names.emplace_back(entry);
    else
        names.insert(names.end(), field->second.begin(), field->second.end());
    return true;
}

// `name = [list]` behind the last word FIELD of a statement; other statements have none.
void TakeField(const std::string& statement, Fields& fields) {
    const std::string upper = base::Upper(statement);
    for (const std::string_view word : {"FIELD", "FLD"}) {
        const std::size_t at = upper.rfind(word);
        if (at == upper.npos || (at > 0 && base::IsWordChar(upper[at - 1]))) continue;
        const std::string_view rest = std::string_view(statement).substr(at + word.size());
        const std::size_t equals = rest.find('=');
        if (equals == rest.npos || rest.empty() || base::IsWordChar(rest[0])) continue;
        const std::string name = base::Trim(rest.substr(0, equals));
        auto members = ExpandList(rest.substr(equals + 1), fields);
        if (IsName(name) && !members.empty()) fields[name] = std::move(members);
    }
}

}  // namespace

std::vector<std::string> ExpandList(std::string_view list, const Fields& fields) {
    std::string text;
    for (const char c : list)
        if (static_cast<unsigned char>(c) > ' ') text += c;
    std::string_view rest = text;
    if (base::StartsWith(rest, "!")) rest.remove_prefix(1);
    if (rest.size() > 1 && rest.front() == '[' && rest.back() == ']') rest = rest.substr(1, rest.size() - 2);
    std::vector<std::string> names;
    for (std::size_t at = 0; at <= rest.size();) {
        const std::size_t comma = std::min(rest.find(',', at), rest.size());
        if (!AddEntry(rest.substr(at, comma - at), fields, names) || names.size() > MostMembers) return {};
        at = comma + 1;
    }
    return names;
}

std::string WithoutComments(std::string_view text) {
    std::string plain(text);
    std::size_t line = 1;
    std::size_t opened = 0;  // the line of the comment
    bool quoted = false;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const std::string_view pair = text.substr(i, 2);
        if (text[i] == '\n') {
            ++line;
            quoted = false;
        } else if ((opened == 0 && !quoted && pair == "/*") || (opened != 0 && pair == "*/")) {
            opened = opened == 0 ? line : 0;
            plain[i] = plain[i + 1] = ' ';
            ++i;
        } else if (opened != 0) {
            plain[i] = ' ';
        } else if (text[i] == '"') {
            quoted = !quoted;
        }
    }
    if (opened != 0) FailAt(opened, "the comment has no end");
    return plain;
}

Fields ReadFields(std::string_view design) {
    Fields fields;
    try {
        const std::string text = WithoutComments(design);
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find_first_of(";{}", at), text.size());
            TakeField(text.substr(at, end - at), fields);
            at = end + 1;
        }
    } catch (const base::RunTimeError&) {
        // What the design says well up to here serves.
    }
    return fields;
}

}  // namespace wavrik
