#include "sim/SiLines.h"

#include "sim/SiFile.h"

namespace sim {

bool SiLines::IsWithinLimits() {
    const bool large = lines_.Bytes() > SiLimits::FileBytes;
    if (large) log_.Add("0210va", number_, "a file of more than 1 gigabyte");
    if (lines_.IsCut()) log_.Add("0210va", number_, "a line of more than 1 megabyte");
    return !large && !lines_.IsCut();
}

std::string_view SiLines::WithoutComments(std::string_view line) {
    blanked_ = line;
    bool quoted = false;
    for (std::size_t i = 0; i < blanked_.size(); ++i) {
        const std::string_view pair = std::string_view(blanked_).substr(i, 2);
        const bool opens = comment_ == 0 && !quoted && pair == "/*";
        const bool closes = comment_ != 0 && pair == "*/";
        if (opens || closes) {
            comment_ = opens ? number_ : 0;
            blanked_[i] = blanked_[i + 1] = ' ';
            ++i;
        } else if (comment_ != 0) {
            blanked_[i] = ' ';
        } else if (blanked_[i] == '"') {
            quoted = !quoted;
        }
    }
    return blanked_;
}

bool SiLines::Next(std::string_view& line) {
    if (ended_) return false;
    const bool any = lines_.Next(line);
    number_ += any ? 1 : 0;
    ended_ = !any || !IsWithinLimits();
    if (ended_) return false;
    if (comment_ != 0 || line.find("/*") != line.npos) line = WithoutComments(line);
    return true;
}

}  // namespace sim
