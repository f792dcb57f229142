#pragma once

#include <array>
#include <map>

#include "cpld/Device.h"
#include "cpld/Wants.h"

namespace cpld {

// A literal that is the foldback of product `Signal - firstFoldback` in the block where it is read.
inline constexpr std::size_t firstFoldback = std::size_t{1} << 32;

// How the terms become what the macrocell gives.
enum class Shape { Plain, Complement, Exclusive, Toggle, ToggleComplement };

struct Form {
    Shape As = Shape::Plain;
    bool Low = false;  // the macrocell gives the complement of the asserted state
    Sum Terms;
    Product Xor;  // of Exclusive: what the terms are taken with

    bool StartsHigh() const { return As != Shape::Plain && As != Shape::Toggle; }
    bool StartsAsserted() const { return StartsHigh() != Low; }
};

// A macrocell's work with all that it takes, but for where. Set and clear are of what it gives.
struct Plan : Form {
    std::size_t Owner = 0;
    RegisterKind Register = RegisterKind::None;
    std::optional<std::size_t> GlobalClock, GlobalEnable;
    bool GlobalClear = false;
    bool Never = false;  // the output is never enabled
    std::optional<Product> Clock, ClockEnable, Clear, Set, Enable;
    std::size_t LongestRun = BlockCells;  // macrocells that it may take

    // Terms for its sum in its own macrocell.
    std::size_t OwnTerms() const;
    // Macrocells with those whose terms reach it by cascade.
    std::size_t Cells() const;
};

// The input at a global, whose literal makes it 1.
struct GlobalNet {
    Literal From;
    std::size_t Pad = 0;
};

struct Globals {
    std::array<std::optional<GlobalNet>, ClockCount> Clocks;
    std::optional<GlobalNet> Clear;
    std::array<std::optional<GlobalNet>, EnableCount> Enables;

    std::optional<std::size_t> ClockOf(const Sum& sum) const;
    std::optional<std::size_t> EnableOf(const Sum& sum) const;
};

// Chooses what clocks, clears and enables by globals; inputs without a pin get the pads that this takes.
Globals ChooseGlobals(const Device& device, const Package& package, Wants& wants);

// How equations that are too large for a macrocell are to be made smaller.
struct Means {
    std::size_t Smallest = 0;  // terms that a foldback must draw together; 0: no foldbacks
    std::size_t LongestRun = BlockCells;
};

struct Plans {
    std::vector<Name> Names;
    std::vector<Plan> All;
    std::vector<Product> Foldbacks;
    std::size_t Unplanned = 0;  // macrocells and more that were not looked at, for there are far too many
};

// Forms that were chosen, for the next time that the same is asked.
struct FormCache {
    struct Entry {
        Want Of;
        bool Low = false, Flip = false;
        std::size_t Own = 0;
        Form Chosen;
    };
    std::map<std::size_t, Entry> ByOwner;
};

Plans MakePlans(const Wants& wants, const Globals& globals, const Means& means, FormCache& forms);

// The form of a function that takes the fewest macrocells; among them one that powers up at 0, then the
// fewest terms. `own` are the terms of its macrocell for the sum, `flip`: it may give the complement.
Form ChooseForm(const Want& want, bool low, bool flip, std::size_t own);

// Draws terms that differ in one literal together, `smallest` or more, by foldbacks of the others, while
// there are more than `most`.
void Factor(Sum& sum, std::size_t most, std::size_t smallest, std::vector<Product>& foldbacks);
// The literal that is 1 unless the product is.
Literal FoldbackOf(const Product& product, std::vector<Product>& foldbacks);

}  // namespace cpld
