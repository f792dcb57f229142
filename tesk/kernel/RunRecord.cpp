#include "kernel/RunRecord.h"

#include <algorithm>

namespace kernel {

std::string TextOf(const RunRecord::Text& field) {
    const auto end = std::find(field.begin(), field.end(), '\0');
    std::string text(field.begin(), end);
    if (end == field.end()) text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

void SetText(RunRecord::Text& field, std::string_view text) {
    field.fill(' ');
    const std::size_t count = std::min(text.size(), field.size());
    std::copy_n(text.begin(), count, field.begin());
    if (count < field.size()) field[count] = '\0';
}

}  // namespace kernel
