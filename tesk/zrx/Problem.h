#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fit/Fitter.h"

namespace zrx {

struct Candidate {
    fit::Device Device;
    int Cost = 0;
    int Power = 0;
};

// Leaves each macrocell so many per cent of its product terms.
void Utilize(fit::Device& device, int percent);

// Indices of items, ascending.
using Set = std::vector<std::size_t>;

// A design to be spread over devices: which of its outputs can share a chip.
//
// An item is what has to be on one chip: an output with all its equations, together with those that read its
// register while its pin may be off. Every chip gets the signals of other chips at input pins.
class Problem {
  public:
    // All data inputs have both sums; registers have their clock. The pins of the design are not looked at.
    Problem(fit::Design design, std::vector<Candidate> candidates);

    std::size_t Items() const { return items_.size(); }
    const std::vector<Candidate>& Candidates() const { return candidates_; }
    const fit::Design& Design() const { return design_; }
    const std::vector<std::size_t>& UnitsOf(std::size_t item) const { return items_[item].Units; }
    std::size_t TermsOf(std::size_t item) const { return items_[item].Terms; }
    const std::vector<std::size_t>& ReadsOf(std::size_t item) const { return items_[item].Reads; }
    std::string NameOf(std::size_t item) const;  // of its outputs, "A, B"

    // By counting alone: false if the set can't fit the candidate.
    bool MayFit(const Set& set, std::size_t candidate) const;
    // By the fitter. What was asked once is known.
    bool Fits(const Set& set, std::size_t candidate);

    // One chip of a partition.
    struct Chip {
        fit::Design Design;              // outputs and inputs of the chip
        std::vector<std::size_t> Whole;  // of each of its signals, the index in the whole design
        fit::Fit Fit;
    };
    Chip Place(const Set& set, std::size_t candidate) const;

    // By the number of macrocells: no partition has fewer chips.
    std::size_t FewestChips(const std::vector<std::size_t>& candidates) const;

  private:
    struct Item {
        std::vector<std::size_t> Units;  // driven signals
        std::vector<std::size_t> Reads;  // signals, ascending
        std::vector<std::size_t>
            Array;              // those of them that go through the array: not as a clock or enable alone
        std::size_t Terms = 0;  // the largest sum
    };
    struct Room {                    // of a mode
        std::size_t Pins = 0;        // for inputs, clock and enable among them
        std::size_t ArrayPins = 0;   // for inputs of the array
        std::size_t InputCells = 0;  // macrocells whose pin can be an input
        std::size_t Feedbacks = 0;   // macrocells whose output can be read
        std::size_t Cells = 0;
        std::vector<std::size_t> Output, Register;  // product terms of macrocells of the kind, most first
        fit::PolarityKind Polarity = fit::PolarityKind::Fuse;
        bool OwnRows = false;  // reset and preset of each register ask for no polarity
    };
    struct Demand {  // of a set, apart from its product terms
        std::size_t Units = 0;
        std::size_t Inputs = 0;
        std::size_t ArrayInputs = 0;
        std::size_t Feedbacks = 0;
    };

    static Room RoomOf(const fit::Mode& mode);
    void FindItems();
    void AddFunctions(Chip& chip, const std::map<std::size_t, std::size_t>& local, std::size_t units) const;
    std::vector<std::size_t> Groups() const;
    std::size_t Need(std::size_t unit, fit::PolarityKind polarity, bool ownRows) const;
    Demand DemandOf(const Set& set) const;
    bool MayFit(const Set& set, const Demand& demand, const Room& room) const;

    fit::Design design_;
    std::vector<Candidate> candidates_;
    std::vector<std::vector<Room>> rooms_;                  // of each candidate's modes
    std::vector<std::vector<const fit::Function*>> given_;  // of each signal
    std::vector<Set> readers_;                              // of each signal, the items
    std::vector<std::size_t> itemOf_;                       // of each signal; of inputs none
    std::vector<Item> items_;
    std::map<std::pair<std::size_t, Set>, bool> known_;
};

}  // namespace zrx
