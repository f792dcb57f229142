#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/SiFile.h"

namespace sim {

// Reads the test values of a vector line: one character a column, blanks between them are free, quoted values
// as told at ReadSi.
class VectorReader {
  public:
    VectorReader(const AbsDesign& design, const SiFile& file, unsigned base);

    // One test value a column. Faults go to the log; values that do not fit their net become X with a
    // warning.
    std::string Read(std::string_view row, int line, MessageLog& log) const;

  private:
    struct Work;

    void TakeQuoted(Work& work) const;
    std::string Bits(std::string_view digits, std::size_t width, bool& good) const;
    std::string AsDriven(std::string_view bits, const OrderItem& item, bool driving) const;
    void CheckValues(Work& work) const;
    bool Fits(char value, const Net& net, bool hasEnable, bool preload) const;

    const AbsDesign& design_;
    const SiFile& file_;
    unsigned base_;
    std::vector<bool> hasEnable_;                 // a net: has an output enable
    std::vector<const OrderItem*> itemOfColumn_;  // the entry that begins at a column, or null
};

}  // namespace sim
