#pragma once

#include <string>
#include <string_view>

#include "sim/SiFile.h"
#include "sim/SiLines.h"
#include "sim/SiVector.h"

namespace sim {

// Gives the steps of a vector file one by one, from its start. A vector has one of 0 1 C K L H Z X N P * for
// each column; one with a fault is all X.
class SiReader {
  public:
    SiReader(Source& source, const AbsDesign& design, MessageLog& log);

    const SiHead& Head() const { return head_; }
    // False at the end, and where the vectors come to a limit.
    bool Next(Step& step);
    std::size_t Vectors() const { return vectors_; }  // given so far, repeats counted

  private:
    void Add(MessageCode code, int line, std::string_view detail);
    bool NextRow(std::string_view& row);
    bool TakeCommand(std::string_view row, Step& step);
    bool TakeRepeat(std::string_view text);
    bool TakeVector(std::string_view row, Step& step);

    MessageLog& log_;
    SiLines lines_;
    SiHead head_;
    std::string rest_;  // of the line with VECTORS:
    bool open_;         // steps may follow
    bool first_ = true;
    VectorReader vectorReader_;
    std::size_t vectors_ = 0;
    int repeat_ = 0;  // 0: no $REPEAT is open
    int repeatLine_ = 0;
};

}  // namespace sim
