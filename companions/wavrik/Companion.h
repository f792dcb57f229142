#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// How the program beside tells this one what to do.
namespace wavrik {

// In twips, with the window's frame.
struct Placement {
    float Top, Left, Width, Height;
};
struct OpenFile {
    std::string Path;
};
struct Display {};

// "Tile 0 14400 14400 10800" (top, left, width, height), "Open C:\WORK\COUNT8.SI", "Display"; none for
// others.
using Command = std::variant<Placement, OpenFile, Display>;
std::optional<Command> ReadCommand(std::string_view text);

// The file of a command line, empty without one. It may come in several words, as its blanks are not quoted;
// the switch /NoSplash behind it is understood, there is no splash window anyway.
std::string FileOf(const std::vector<std::string>& arguments);

}  // namespace wavrik
