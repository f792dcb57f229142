#pragma once

#include <cstddef>
#include <string_view>

#include "sim/SiFile.h"
#include "sim/Streams.h"

// The steps of a vector file between check and run, so that the text is parsed once: a form of this program's
// own, never kept.
namespace sim {

void PutStep(const Step& step, Sink& to);

class StepReader {
  public:
    explicit StepReader(Source& from) : from_(from) {}
    bool Next(Step& step);  // false at the end

  private:
    bool Take(void* to, std::size_t count);

    Source& from_;
    std::string_view piece_;
};

}  // namespace sim
