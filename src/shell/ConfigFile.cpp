#include "shell/ConfigFile.h"

#include <cstdint>
#include <limits>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "editor/HighlightTables.h"

namespace shell {
namespace {

constexpr const char* versionMark = "KORVANE 5.0";  // written, never compared

// The option strings in the order of the file, with their defaults.
struct FlagRow {
    std::string session::Session::*Flags;
    const char* Default;
};
constexpr FlagRow flagTable[] = {
    {&session::Session::CompilerFlags, "jasxlbm4"},
    {&session::Session::SimulatorFlags, "l"},
    {&session::Session::VhdlFlags, "-a"},
    {&session::Session::PartitionFlags, session::DefaultPartitionFlags},
};

std::string ConfigPath(const session::Session& state) { return state.ProgramDir + "KORVANE.CFG"; }

// Takes items off the front. An item that the end of the file cuts is empty, as are all behind it.
class ItemReader {
  public:
    explicit ItemReader(std::string_view bytes) : rest_(bytes) {}

    std::string Next() {
        if (rest_.size() < 2) return Stop();
        const std::size_t length =
            static_cast<std::uint8_t>(rest_[0]) | std::size_t{static_cast<std::uint8_t>(rest_[1])} << 8;
        if (length > rest_.size() - 2) return Stop();
        std::string text(rest_.substr(2, length));
        rest_.remove_prefix(2 + length);
        return text;
    }

  private:
    std::string Stop() {
        rest_ = {};
        return {};
    }

    std::string_view rest_;
};

void AppendItem(std::string& bytes, std::string_view text) {
    if (text.size() > std::numeric_limits<std::uint16_t>::max()) throw base::RunTimeError(base::errOverflow);
    bytes += static_cast<char>(text.size() & 0xFF);
    bytes += static_cast<char>(text.size() >> 8);
    bytes += text;
}

}  // namespace

void DefaultConfig(session::Session& state) {
    for (const FlagRow& row : flagTable) state.*row.Flags = row.Default;
    state.Keywords = editor::DefaultKeywords();
}

void ParseConfig(std::string_view bytes, session::Session& state) {
    ItemReader items(bytes);
    items.Next();  // the version mark
    for (const FlagRow& row : flagTable) state.*row.Flags = items.Next();

    const std::string count = items.Next();
    const std::int16_t top = count.empty() ? std::int16_t{0} : base::TextToInt16(count);
    if (top < 0) throw base::RunTimeError(base::errSubscript);
    state.Keywords.clear();
    for (int i = 0; i <= top; ++i) {  // grows as pairs come: the top index alone proves nothing
        session::KeywordRec keyword;
        keyword.Name = items.Next();
        keyword.Color = base::TextToInt32(items.Next());
        state.Keywords.push_back(keyword);
    }
}

std::string ConfigBytes(const session::Session& state) {
    std::string bytes;
    AppendItem(bytes, versionMark);
    for (const FlagRow& row : flagTable) AppendItem(bytes, state.*row.Flags);
    AppendItem(bytes, std::to_string(static_cast<std::int64_t>(state.Keywords.size()) - 1));
    for (const session::KeywordRec& keyword : state.Keywords) {
        AppendItem(bytes, keyword.Name);
        AppendItem(bytes, std::to_string(keyword.Color));
    }
    return bytes;
}

void ReadConfig(session::Session& state, const platform::Host& host) {
    const std::string path = ConfigPath(state);
    if (!host.Files.FileExists(path)) return DefaultConfig(state);
    try {
        ParseConfig(host.Files.ReadFile(path), state);
    } catch (const base::RunTimeError&) {
        host.Boxes.Say("Invalid file KORVANE.CFG. Loaded default values.");
        DefaultConfig(state);
    }
}

void WriteConfig(const session::Session& state, const platform::Host& host) {
    const std::string path = ConfigPath(state);
    std::string bytes = ConfigBytes(state);
    if (host.Files.FileExists(path)) {
        const std::string old = host.Files.ReadFile(path);
        if (old.size() > bytes.size()) bytes += old.substr(bytes.size());  // the old tail is kept
    }
    host.Files.WriteFile(path, bytes);
}

}  // namespace shell
