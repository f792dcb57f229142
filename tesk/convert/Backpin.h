#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "front/Files.h"

// Pin numbers carried between a design's text and the fit of it.
namespace convert {

enum class Annotation { Float, AssignAll, AssignPins };

struct BackpinCommand {
    Annotation What = Annotation::Float;
    std::string Device;  // mnemonic, or "virtual" for the one that the design names
    std::string Design;  // path without extension
};

// Takes "-f virtual C:\WORK\COUNT8" and "-fG22V10C:\WORK\COUNT8": device and path stand glued to the option
// as the desktop writes them. Throws Failure.
BackpinCommand ReadBackpinCommand(const std::vector<std::string>& arguments);

// What a fit gave, from the .DOC of the design.
struct FitPins {
    std::string Device;
    std::map<std::string, int> Numbers;  // by name; without a pin: not listed
};
// Throws Failure.
FitPins ReadFitPins(std::string_view document);

struct Annotated {
    std::string Text;
    std::vector<std::string> Notes;  // declarations that were left as they are
};

// The design's text with other numbers in its declarations, every other byte as it was. `path` is the .PLD,
// whose includes are read from `files`. Throws Failure if the text is no design.
Annotated Annotate(front::Files& files, const std::string& path, Annotation what, const FitPins& fit);

}  // namespace convert
