#pragma once

#include <string>
#include <string_view>

#include "sim/Streams.h"

namespace sim {

// The lines of a source from its start, ended by LF.
class TextLines {
  public:
    static constexpr std::size_t MostBytes = 1u << 20;  // of a line

    explicit TextLines(Source& source) : source_(source) { source_.Restart(); }

    // Without its LF; valid until the next call. False at the end of the text. Of a longer line the first
    // `MostBytes`.
    bool Next(std::string_view& line);
    bool IsCut() const { return cut_; }           // the line given last
    std::size_t Bytes() const { return bytes_; }  // read so far

  private:
    bool Fill();

    Source& source_;
    std::string_view piece_;
    std::string carried_;  // the head of a line that goes on in the next piece
    std::size_t bytes_ = 0;
    bool cut_ = false;
};

}  // namespace sim
