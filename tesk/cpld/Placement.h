#pragma once

#include "cpld/Search.h"

namespace cpld {

// A state of the search: places, and what each block lacks.
class Placement {
  public:
    Placement(const Device& device, const Package& package, const Problem& problem, bool jtagPads);

    // First places for all, the order shuffled by `random`. The unit for which there is none, if any.
    std::optional<std::size_t> Construct(std::mt19937& random);

    // One change: exchanges what lies in two rows of macrocells, or an input's pad with another one. Zero
    // length: an input's.
    struct Change {
        std::size_t From = 0, To = 0, Length = 1;
    };
    Change Propose(std::mt19937& random) const;
    bool Allowed(const Change& change) const;
    void Apply(const Change& change);  // applied again it is undone

    // What is missing, hardWeight a miss, and how many sources no switch could bring in in addition.
    static constexpr int hardWeight = 40;
    int Cost() const { return cost_; }
    bool Complete() const { return cost_ < hardWeight; }

    Layout Result() const;
    Shortage Missing() const;

  private:
    static constexpr std::size_t nobody = static_cast<std::size_t>(-1);
    struct BlockState {
        std::vector<std::uint16_t> Readers;    // of each source
        std::vector<std::uint16_t> Foldbacks;  // users of each
        std::size_t Spare = BlockCells;        // terms that can be foldbacks
        int Cost = 0;
    };

    bool PadFree(std::size_t pad) const { return padOk_[pad] && padOf_[pad] == nobody; }
    bool Fits(std::size_t unit, std::size_t last) const;
    void Put(std::size_t unit, std::size_t last);
    void Take(std::size_t unit);
    void Count(std::size_t unit, std::size_t block, bool add);
    bool PlaceUnit(std::size_t unit, std::mt19937& random);
    int Rating(std::size_t unit, std::size_t last, std::mt19937& random) const;
    bool PlaceInputs();

    bool Whole(std::size_t first, std::size_t length) const;
    bool Movable(const Change& change, std::size_t from, std::size_t to) const;
    bool IsOutput(std::size_t pad) const {
        return padOf_[pad] != nobody && padOf_[pad] < problem_.Units.size();
    }
    void ExchangePads(std::size_t a, std::size_t b);
    void Touch(std::size_t owner);
    void Refresh();

    std::uint64_t MaskOf(const Source& source, std::size_t block) const;
    std::size_t Switch(std::size_t block, std::array<std::int16_t, BlockSwitches>& owners,
                       std::vector<std::size_t>& sources) const;
    std::size_t MissingFoldbacks(std::size_t block) const;
    int Evaluate(std::size_t block) const;

    const Device& device_;
    const Problem& problem_;
    std::vector<bool> padOk_;
    std::vector<std::vector<std::uint64_t>> padMask_,
        feedbackMask_;                                 // switches, by block and pad or macrocell
    std::vector<std::vector<std::size_t>> sourcesOf_;  // of each unit, then of each input
    std::vector<std::size_t> unitAt_;                  // of each macrocell
    std::vector<std::size_t> padOf_;                   // of each pad: the unit, or the input behind the units
    std::vector<std::size_t> last_;                    // macrocell of each unit
    std::vector<std::size_t> inputPad_;
    std::vector<BlockState> blocks_;
    std::vector<bool> dirty_;
    int cost_ = 0;
};

}  // namespace cpld
