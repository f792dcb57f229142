#include "base/ToolInterface.h"

#include <algorithm>

namespace base {

RunRecord EmptyRecord() {
    RunRecord record{};
    for (RunRecord::Text* text :
         {&record.szProgramDir, &record.szOptions, &record.szLibrary, &record.szDevice, &record.szDesign,
          &record.szReserved1, &record.szReserved2, &record.szProgramPath})
        SetText(*text, {});
    return record;
}

void SetText(RunRecord::Text& field, std::string_view text) {
    field.fill(' ');
    const std::size_t count = std::min(text.size(), field.size());
    std::copy_n(text.begin(), count, field.begin());
    if (count < field.size()) field[count] = '\0';
}

std::string TextOf(const RunRecord::Text& field) {
    const auto end = std::find(field.begin(), field.end(), '\0');
    std::string text(field.begin(), end);
    if (end == field.end()) text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

}  // namespace base
