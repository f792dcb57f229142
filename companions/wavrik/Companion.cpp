#include "wavrik/Companion.h"

#include <charconv>
#include <cmath>

#include "base/Text.h"

namespace wavrik {
namespace {

constexpr float mostTwips = 1e6F;

std::optional<Command> ReadTile(std::string_view numbers) {
    const auto words = base::Words(numbers);
    float values[4] = {};
    if (words.size() != 4) return std::nullopt;
    for (std::size_t i = 0; i < 4; ++i) {
        const char* last = words[i].data() + words[i].size();
        const auto [end, fault] = std::from_chars(words[i].data(), last, values[i]);
        if (fault != std::errc() || end != last || !(std::fabs(values[i]) <= mostTwips)) return std::nullopt;
    }
    return Placement{values[0], values[1], values[2], values[3]};
}

}  // namespace

std::optional<Command> ReadCommand(std::string_view text) {
    if (text == "Display") return Display{};
    if (base::StartsWith(text, "Tile ")) return ReadTile(text.substr(5));
    if (base::StartsWith(text, "Open ") && text.size() > 5) return OpenFile{std::string(text.substr(5))};
    return std::nullopt;
}

std::string FileOf(const std::vector<std::string>& arguments) {
    std::string file;
    for (const std::string& argument : arguments) {
        if (base::EqualNoCase(argument, "/NoSplash")) break;
        file += (file.empty() ? "" : " ") + argument;
    }
    return file;
}

}  // namespace wavrik
