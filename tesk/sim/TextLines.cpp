#include "sim/TextLines.h"

#include <algorithm>

namespace sim {

bool TextLines::Fill() {
    if (piece_.empty()) {
        piece_ = source_.Next();
        bytes_ += piece_.size();
    }
    return !piece_.empty();
}

bool TextLines::Next(std::string_view& line) {
    carried_.clear();
    bool carries = false;
    cut_ = false;
    while (Fill()) {
        const auto end = piece_.find('\n');
        line = piece_.substr(0, end);
        piece_.remove_prefix(std::min(line.size() + 1, piece_.size()));
        const bool whole = end != std::string_view::npos;
        if (line.size() > MostBytes - carried_.size()) {
            line = line.substr(0, MostBytes - carried_.size());
            cut_ = true;
        }
        if (whole && !carries) return true;
        carried_ += line;
        carries = true;
        line = carried_;
        if (whole) return true;
    }
    return carries;
}

}  // namespace sim
