#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sim/Machine.h"
#include "sim/Streams.h"

namespace sim {

// Writes a value change dump (IEEE 1364) of pin levels and node states; time unit 1 ns, lines end CR LF.
class VcdWriter {
  public:
    static constexpr std::size_t MostBytes = 1u << 30;

    VcdWriter(const AbsDesign& design, Sink& sink);

    // The values at a time not before the last one's. Beyond `MostBytes` nothing more is added.
    void Sample(std::uint64_t time, const Machine& machine);

    // The last line, at the time `end`.
    void Finish(std::uint64_t end);
    bool Full() const { return bytes_ >= MostBytes; }

  private:
    void Flush();

    Sink& sink_;
    std::string text_;  // not yet put
    std::size_t bytes_ = 0;
    std::vector<std::string> names_;  // the short name of each net, with its line end
    std::vector<Value> last_;
    bool started_ = false;
};

}  // namespace sim
