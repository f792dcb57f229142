#include <algorithm>
#include <array>
#include <charconv>

#include "base/CommandLine.h"
#include "base/HostNames.h"
#include "base/Number.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "net/FrontEnd.h"

namespace net {
namespace {

struct FlagRow {
    char Letter;
    bool Flags::*Box = nullptr;
    int Flags::*Number = nullptr;
};
constexpr std::array<FlagRow, 11> rows{{{'a', &Flags::Analyze},
                                        {'h', &Flags::Pinnodes},
                                        {'j', &Flags::NoSync},
                                        {'c', &Flags::ClockEnable},
                                        {'r', &Flags::ResetsOnly},
                                        {'p', nullptr, &Flags::Product},
                                        {'s', nullptr, &Flags::And},
                                        {'z', nullptr, &Flags::Optimize},
                                        {'g', &Flags::CreateLog},
                                        {'v', &Flags::Display},
                                        {'x', nullptr, &Flags::CloseWindow}}};

bool IsDevice(std::string_view word) { return word.find_first_of("/\\.:") == word.npos; }

// Behind which place of a name the flags begin; npos if it is no source.
std::size_t FlagsAt(std::string_view word) {
    const std::string upper = base::Upper(word);
    for (const std::string_view extension : {".VHD", ".V"}) {
        for (std::size_t at = upper.rfind(extension); at != upper.npos && at > 0;
             at = upper.rfind(extension, at - 1)) {
            const std::size_t end = at + extension.size();
            if (end == upper.size() || upper[end] == '-') return end;
        }
    }
    return word.npos;
}

// The last from `from` on that begins a whole name; `otherwise` without one.
std::size_t LastWhole(const std::vector<std::string>& words, std::size_t from, std::size_t end,
                      std::size_t otherwise) {
    for (std::size_t i = end; i-- > from;)
        if (base::IsWholePath(words[i])) return i;
    return otherwise;
}

bool ReadNames(std::vector<std::string> words, Call& call) {
    if (words.empty()) return false;
    const std::size_t cut = FlagsAt(words.back());
    if (cut == std::string::npos) return false;
    call.Flags = Flags::Parse(std::string_view(words.back()).substr(cut));
    words.back().resize(cut);
    const std::size_t last = words.size() - 1;
    const std::size_t source = LastWhole(words, 0, words.size(), last);
    call.Source = base::JoinWords(words, source, words.size());
    if (source == 0) return true;
    std::size_t end = source;
    call.Device = IsDevice(words[end - 1]) ? words[--end] : "";
    if (end == 0) return true;
    const bool hasLibrary = base::EqualNoCase(base::Right(words[end - 1], 3), ".DL");
    const std::size_t library = hasLibrary ? LastWhole(words, 0, end, end - 1) : end;
    call.Library = base::JoinWords(words, library, end);
    call.WorkDir = base::JoinWords(words, 0, library);
    return true;
}

}  // namespace

Flags Flags::Parse(std::string_view text) {
    Flags flags;
    while (!text.empty()) {
        const auto* row = std::find_if(rows.begin(), rows.end(),
                                       [&](const FlagRow& each) { return each.Letter == text.front(); });
        text.remove_prefix(1);
        if (row == rows.end()) continue;
        if (row->Box != nullptr) flags.*row->Box = true;
        if (row->Number != nullptr)
            std::from_chars(text.data(), text.data() + text.size(), flags.*row->Number);
    }
    return flags;
}

std::optional<Call> ParseCall(const std::vector<std::string>& arguments) {
    Call call;
    std::size_t next = 0;
    const auto value = [&]() -> std::string_view {
        return next + 1 < arguments.size() ? std::string_view(arguments[++next]) : "";
    };
    for (; next < arguments.size() && arguments[next].starts_with("--"); ++next) {
        const std::string& option = arguments[next];
        const std::string_view text = value();
        if (option == "--top")
            call.Top = text;
        else if (option == "--seconds" && !text.empty())
            call.Seconds = base::IsNumericText(text) ? base::TextToInt32(text) : 0;
        else
            return std::nullopt;
        if (text.empty() || call.Seconds < 1 || call.Seconds > 3600) return std::nullopt;
    }
    const std::vector<std::string> names(arguments.begin() + static_cast<std::ptrdiff_t>(next),
                                         arguments.end());
    if (!ReadNames(names, call)) return std::nullopt;
    return call;
}

}  // namespace net
