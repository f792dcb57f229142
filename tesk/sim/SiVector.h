#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sim/SiFile.h"

namespace sim {

// Reads the test values of a vector line: one character a column, blanks between them are free, quoted values
// as told at ReadSi.
class VectorReader {
  public:
    VectorReader(const AbsDesign& design, const SiHead& head);

    // One test value a column. Faults go to the log, all values are X then; values that do not fit their net
    // become X with a warning.
    void Read(std::string_view row, int line, MessageLog& log, std::string& values) const;

  private:
    struct Work;
    struct Column {
        std::size_t Net;
        const OrderItem* Entry;   // that begins here, or null
        std::uint16_t Fitting;    // a bit for each test value
        std::uint16_t Preloaded;  // the same in a vector with P
        bool Expected;            // a quoted number is expected here, '…' as well
        bool Either;              // "…" is expected, '…' drives
    };

    void TakeQuoted(Work& work) const;
    std::string Bits(std::string_view digits, std::size_t width, bool& good) const;
    void AddNumber(Work& work, std::string_view bits, bool driving) const;
    void CheckValues(Work& work) const;

    const AbsDesign& design_;
    unsigned base_;
    std::vector<Column> columns_;
};

}  // namespace sim
