#include "toolchain/ErrorCodes.h"

#include <algorithm>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace toolchain {
namespace {

constexpr std::size_t codeLength = 6;

// Takes lines off a text one by one, without a copy of the whole.
class LineReader {
  public:
    explicit LineReader(std::string_view text) : rest_(text) {}
    bool AtEnd() const { return rest_.empty(); }

    std::string_view Next() {
        if (AtEnd()) throw base::RunTimeError(errPastEnd, "Input past end of file");
        const auto end = std::min(rest_.find_first_of("\r\n"), rest_.size());
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end);
        if (rest_.starts_with("\r\n")) {
            rest_.remove_prefix(2);
        } else if (!rest_.empty()) {
            rest_.remove_prefix(1);
        }
        return line;
    }

  private:
    static constexpr int errPastEnd = 62;
    std::string_view rest_;
};

std::int16_t CountRecords(std::string_view text) {
    std::int64_t lines = 0;
    for (LineReader reader(text); !reader.AtEnd(); reader.Next()) ++lines;
    return base::RoundToInt16(static_cast<double>(lines) / 3);
}

void ReadLevel(std::string_view line, ErrorEntry& entry) {
    const auto dot = line.find('.');
    if (dot == line.npos) throw base::RunTimeError(base::errInvalidCall);
    entry.Level = line.substr(0, dot);
    const auto blank = line.find(' ');
    if (blank != line.npos) entry.Description = line.substr(blank + 1);
}

void ReadEntry(LineReader& reader, ErrorEntry& entry) {
    const std::string_view head = reader.Next();
    entry.Code = base::Left(head, codeLength);
    entry.Message = base::Mid(head, codeLength + 2);
    ReadLevel(reader.Next(), entry);
    entry.Information = reader.Next();
}

// Same first two and same last two characters.
bool SameFamily(std::string_view a, std::string_view b) {
    return base::Left(a, 2) == base::Left(b, 2) && base::Right(a, 2) == base::Right(b, 2);
}

}  // namespace

void ErrorCodes::LoadErrorCodes(const platform::FileSystem& files, platform::Dialogs& boxes,
                                const std::string& programDir) {
    ErrorCount = 0;
    ErrorTable.clear();
    const std::string path = programDir + (programDir.ends_with('\\') ? "" : "\\") + "TeskErr.txt";
    if (!files.FileExists(path)) {
        boxes.Say("Unable to find the error message data file: " + path +
                  ".  Interactive error message display will not be functional unless this file is "
                  "restored.\r\n\r\nReinstall Korvane to restore this file.");
        return;
    }
    try {
        const auto stamp = files.Stamp(path);
        if (stamp && stamp->Size > MaxFileSize) throw base::RunTimeError(base::errOverflow);
        Read(files.ReadFile(path));
    } catch (const base::RunTimeError&) {
        boxes.Say("Unexpected error reading the error message data file: " + path +
                  ".  Interactive error message display will not be functional or accurate unless this file "
                  "is restored.\r\n\r\nRe-install Korvane to restore this file.");
    }
}

void ErrorCodes::Read(std::string_view text) {
    ErrorCount = CountRecords(text);
    ErrorTable.resize(static_cast<std::size_t>(ErrorCount));
    LineReader reader(text);
    for (std::size_t i = 0; !reader.AtEnd(); ++i) {
        if (i >= ErrorTable.size()) throw base::RunTimeError(base::errSubscript);
        ReadEntry(reader, ErrorTable[i]);
    }
}

const ErrorEntry* ErrorCodes::Find(std::string_view code) const {
    const auto exact =
        std::find_if(ErrorTable.begin(), ErrorTable.end(), [&](const auto& e) { return e.Code == code; });
    if (exact != ErrorTable.end()) return &*exact;
    const auto family = std::find_if(ErrorTable.begin(), ErrorTable.end(),
                                     [&](const auto& e) { return SameFamily(e.Code, code); });
    return family == ErrorTable.end() ? nullptr : &*family;
}

void ErrorCodes::LookupError(const std::string& code, std::string& level, std::string& message,
                             std::string& description, std::string& information) const {
    static const ErrorEntry unknown{"", "Fatal", "Unknown Error", "",
                                    "Contact Brennick Labs, Customer Support."};
    const ErrorEntry* found = Find(code);
    const ErrorEntry& entry = found == nullptr ? unknown : *found;
    level = entry.Level;
    message = entry.Message;
    description = entry.Description;
    information = entry.Information;
}

std::optional<std::string> ParseListLine(std::string_view line) {
    if (line.size() < codeLength + 2 || line[0] != '[' || line[codeLength + 1] != ']') return std::nullopt;
    const std::string_view code = line.substr(1, codeLength);
    const bool numeric = std::all_of(code.begin(), code.begin() + 4, base::IsDigitChar);
    return numeric ? std::optional<std::string>(code) : std::nullopt;
}

}  // namespace toolchain
