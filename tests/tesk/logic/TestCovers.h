#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "logic/Minimize.h"

// Covers for the tests: random ones from a fixed generator, and functions given by arithmetic.
namespace logictest {

class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed * 2654435761u + 12345) {}
    std::uint32_t Below(std::uint32_t bound) {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>((state_ >> 33) % bound);
    }

  private:
    std::uint64_t state_;
};

// Cubes with about `free` of 10 inputs free and one to three outputs.
inline logic::Cover RandomCover(Random& random, int inputs, int outputs, int cubes, std::uint32_t free) {
    logic::Cover cover(inputs, outputs);
    for (int i = 0; i < cubes; ++i) {
        logic::Word* cube = cover.Append();
        for (int v = 0; v < inputs; ++v)
            if (random.Below(10) >= free)
                cover.Form().SetInput(cube, v,
                                      random.Below(2) != 0 ? logic::Literal::One : logic::Literal::Zero);
        for (std::uint32_t n = 0, end = 1 + random.Below(3); n < end; ++n)
            cover.Form().SetOutput(cube, static_cast<int>(random.Below(static_cast<std::uint32_t>(outputs))),
                                   true);
    }
    return cover;
}

// One minterm for each point where the function (bit o of its value is output o) is not 0.
inline logic::Cover Minterms(int inputs, int outputs, const std::function<unsigned(unsigned)>& function) {
    logic::Cover cover(inputs, outputs);
    for (unsigned point = 0; point < (1u << inputs); ++point) {
        const unsigned value = function(point);
        if (value == 0) continue;
        logic::Word* cube = cover.Append();
        for (int v = 0; v < inputs; ++v)
            cover.Form().SetInput(cube, v, (point >> v) & 1 ? logic::Literal::One : logic::Literal::Zero);
        for (int o = 0; o < outputs; ++o) cover.Form().SetOutput(cube, o, ((value >> o) & 1) != 0);
    }
    return cover;
}

// The outputs of a cover at a point, bit by bit, by nothing but evaluation.
inline unsigned Value(const logic::Cover& cover, unsigned point) {
    unsigned value = 0;
    for (int o = 0; o < cover.Outputs(); ++o)
        if (cover.Evaluate({point}, o)) value |= 1u << o;
    return value;
}

}  // namespace logictest
