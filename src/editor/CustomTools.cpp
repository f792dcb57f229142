#include "editor/CustomTools.h"

#include <algorithm>
#include <functional>

#include "base/Text.h"

namespace editor {
namespace {

using session::CustomUtility;

constexpr const char* macroName = "Macro";

bool IsFree(const CustomUtility& tool) { return tool.Program.empty(); }
bool BearsMacroName(const CustomUtility& tool) { return base::Contains(tool.Name, macroName); }
std::string MacroName(std::ptrdiff_t number) { return macroName + (" " + std::to_string(number)); }

}  // namespace

std::vector<CustomUtility*> CustomTools::Lines() {
    std::vector<CustomUtility*> lines;
    for (CustomUtility& tool : tools_) {
        if (!IsFree(tool)) lines.push_back(&tool);
    }
    return lines;
}

bool CustomTools::IsFull() const { return std::none_of(tools_.begin(), tools_.end(), IsFree); }

std::optional<int> CustomTools::Add(const std::string& program, const std::string& name) {
    const auto place = std::find_if(tools_.begin(), tools_.end(), IsFree);
    if (place == tools_.end()) return std::nullopt;
    *place = {.Program = program, .Name = name};
    return static_cast<int>(std::count_if(tools_.begin(), place, std::not_fn(IsFree)));
}

std::optional<int> CustomTools::AddMacro() {
    const auto count = std::count_if(tools_.begin(), tools_.end(), [](const CustomUtility& tool) {
        return !IsFree(tool) && BearsMacroName(tool);
    });
    return Add("MACRO*", MacroName(count + 1));
}

void CustomTools::Remove(int line) {
    *Lines().at(static_cast<std::size_t>(line)) = {};
    std::stable_partition(tools_.begin(), tools_.end(), std::not_fn(IsFree));
    int number = 0;
    for (CustomUtility& tool : tools_) {
        // One that the user has named keeps its name.
        if (session::IsMacro(tool) && BearsMacroName(tool)) tool.Name = MacroName(++number);
    }
}

}  // namespace editor
