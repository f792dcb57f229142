#pragma once

#include "cpld/Plan.h"

namespace cpld {

// What switches bring into a block: a name's register, its pin, or either where both are the same.
struct Source {
    std::size_t Name = 0;
    bool Pad = false;
    bool Feedback = false;
    std::optional<std::size_t> Unit;   // where it comes from
    std::optional<std::size_t> Input;  // where it comes from, if not from a unit
};

// Macrocells one behind the other in a block: the last one has the function, the others lead terms to it.
struct Unit {
    std::size_t Length = 1;
    bool Pad = false;                  // the last one has an output
    std::optional<std::size_t> Place;  // of the last one
    std::vector<std::size_t> Reads;    // sources, ascending
    std::vector<std::size_t> Foldbacks;
    std::size_t Spare = 0;  // terms left that can be foldbacks
};

struct InputPin {
    std::size_t Name = 0;
    std::optional<std::size_t> Place;
};

// What has to be placed.
struct Problem {
    std::vector<Unit> Units;  // one a plan
    std::vector<InputPin> Inputs;
    std::vector<Source> Sources;

    explicit Problem(const Plans& plans);
    // The source that a literal reads; none for a foldback.
    std::optional<std::size_t> SourceOf(const Literal& literal) const;

  private:
    using Key = std::pair<std::size_t, bool>;  // name, its pin
    Key KeyOf(const Literal& literal) const;
    void Read(const Literal& literal, Unit& unit);
    void AddSource(const Key& key);
    void AddUnit(const Plan& plan);

    const Plans& plans_;
    std::vector<std::optional<std::size_t>> unitOf_, inputOf_;  // of each name
    std::map<Key, std::size_t> sources_;
};

}  // namespace cpld
