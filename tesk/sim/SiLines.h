#pragma once

#include <string>
#include <string_view>

#include "sim/MessageLog.h"
#include "sim/TextLines.h"

namespace sim {

// The lines of a vector file without their comments, which become blanks. Quotes protect comment marks up to
// the end of their line.
class SiLines {
  public:
    // Starts at the head of the source. A text beyond the limits of SiLimits goes to the log and ends there.
    SiLines(Source& source, MessageLog& log) : lines_(source), log_(log) {}

    // Without its end; valid until the next call. False at the end of the text.
    bool Next(std::string_view& line);
    // Of the line given last.
    int Number() const { return number_; }
    // The line of a comment that is open; 0 if none is.
    int OpenComment() const { return comment_; }

  private:
    bool IsWithinLimits();
    std::string_view WithoutComments(std::string_view line);

    TextLines lines_;
    MessageLog& log_;
    std::string blanked_;
    int number_ = 0;
    int comment_ = 0;
    bool ended_ = false;
};

}  // namespace sim
