#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/Run.h"

namespace sim {

// The vectors of a run as a JEDEC file (JESD3-C) tells them: one character a pin, pin 1 first. Pins that the
// design does not use are N, used ones that are not in ORDER are X; what the simulation computed stands for L
// H Z and *.
class JedVectors {
  public:
    // As many as programmers take; the first ones of a longer run.
    static constexpr std::size_t Most = 65535;

    JedVectors(const AbsDesign& design, const SiHead& head);

    void Add(const VectorRecord& record);
    // The JEDEC text with the vectors: old QV and V fields go, new ones stand before the end of text, and the
    // transmission checksum is that of the new text. Empty, with a message, if the text has no frame (STX …
    // ETX).
    std::string AppendTo(std::string_view jedec, MessageLog& log) const;

  private:
    std::vector<std::size_t> places_;  // of each column in a vector; none: beyond its end
    std::string unused_;
    std::string fields_;
    std::size_t count_ = 0;
    bool more_ = false;
};

}  // namespace sim
