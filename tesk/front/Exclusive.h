#pragma once

#include <cstddef>
#include <vector>

#include "fit/Device.h"
#include "front/Analysis.h"
#include "front/Expander.h"

// Exclusive ors for the macrocells that take one of two sums.
namespace front {

// The most that macrocells of devices have for one: product terms of either side, and the senses of the pins.
struct XorRoom {
    std::size_t First = 0;  // 0: there is none
    std::size_t Second = 0;
    bool Low = false;
    bool High = false;

    void Add(const fit::Device& device);
};

// The two sides of a definition that is an exclusive or by its outermost operator; else none.
std::vector<Equation> SidesOf(const Definition& definition, Analysis& analysis, Expander& expander);

// Reduces the sides and their complements by the equation's level. Those that no macrocell would have are
// dropped.
void ReduceSides(Equation& equation);

// Looks for sides of the registers whose sum no macrocell has, as counters have them: a product or two, and
// the rest. Many have none.
void SplitSums(Design& design, const XorRoom& room);

}  // namespace front
