#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sim/Machine.h"

namespace sim {

// Writes a value change dump (IEEE 1364) of pin levels and node states; time unit 1 ns, lines end CR LF.
class VcdWriter {
  public:
    static constexpr std::size_t MostBytes = 64u << 20;

    explicit VcdWriter(const AbsDesign& design);

    // The values at a time not before the last one's. Beyond `MostBytes` nothing more is added.
    void Sample(std::uint64_t time, const Machine& machine);

    // The whole text; `end` is the time of its last line.
    std::string Text(std::uint64_t end) const;
    bool Full() const { return text_.size() >= MostBytes; }

  private:
    std::string text_;
    std::vector<Value> last_;
    bool started_ = false;
};

}  // namespace sim
