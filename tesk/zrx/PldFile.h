#pragma once

#include <string>
#include <vector>

#include "zrx/Document.h"
#include "zrx/Search.h"

namespace zrx {

// Stands in every design that is written here; a file without it is the user's own.
inline constexpr const char* writtenHere = "/* Written by the partitioner: chip ";

// A solution with its chips placed.
class Partition {
  public:
    Partition(const Problem& problem, const Solution& solution, const Document& document);

    std::size_t Chips() const { return chips_.size(); }
    std::string Name(
        std::size_t chip) const;  // of the chip's design, "COUNT8_1" for the design's name COUNT8

    // The design of a chip: pins, the nets from and to other chips named, equations.
    std::string PldText(std::size_t chip) const;
    // Devices, pins and product terms of every chip, and the nets between them.
    std::string Report() const;

  private:
    struct Net {
        std::size_t From = 0;           // chip, number of chips: from outside
        std::vector<std::size_t> To{};  // chips that read it
    };

    std::string Connection(std::size_t chip, std::size_t signal) const;
    std::string Declarations(std::size_t chip) const;
    std::string Equations(std::size_t chip) const;
    const std::string& Device(std::size_t chip) const;
    // The pin that has to be low for the registers to be enabled; 0: none.
    int EnablePin(std::size_t chip) const;
    std::string ChipReport(std::size_t chip) const;

    const Problem& problem_;
    const Solution& solution_;
    const Document& document_;
    std::vector<Problem::Chip> chips_;
    std::vector<Net> nets_;  // of each signal of the whole design
};

}  // namespace zrx
