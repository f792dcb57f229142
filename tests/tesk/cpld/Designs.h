#pragma once

#include <random>
#include <string>

#include "cpld/Fitter.h"

namespace test {

// What random designs are like.
struct Shape {
    std::size_t Functions = 0;
    std::size_t Inputs = 0;
    std::size_t Terms = 3;     // of a function
    std::size_t Literals = 4;  // of a term
    std::size_t Sources = 0;   // signals that are read, inputs first; 0: all
    bool Plain = false;        // D registers with one clock and outputs at pins alone
};
fit::Design RandomDesign(std::mt19937& random, const Shape& shape);

// Empty if the chip does what the design says, for random levels and states; else what differs.
std::string Compare(const cpld::Device& device, const fit::Design& design, const cpld::Fit& fit,
                    std::mt19937& random);

}  // namespace test
