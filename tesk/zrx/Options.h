#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zrx {

// What a partition counts, in the order of its total.
enum class Figure { Devices, Cost, Power };

// The letters of the option string. A letter is found wherever it stands, as the dialog finds it; a number
// that is missing or no number is as unlimited as the figures below.
struct Options {
    bool FirstFit = false;  // "a2"; else best fit
    bool History = false;   // "h" without "a1" and "a2": the solutions of the last search that still hold
    bool Split = false;
    bool Report = false;
    bool List = false;
    bool Pld = false;
    std::size_t MostChips = 999;
    std::size_t MostSolutions = 25;
    int Utilization = 100;  // of a macrocell's product terms, per cent
    int Seconds = 55;
    std::array<Figure, 3> Order{Figure::Devices, Figure::Cost, Figure::Power};  // the first decides first

    static Options Parse(std::string_view letters);
};

}  // namespace zrx
