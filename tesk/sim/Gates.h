#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "sim/AbsFile.h"

namespace sim {

// A signal's value. Z stands only at pins; it is unknown to whatever reads it.
enum class Value : std::uint8_t { Zero, One, Unknown, HighZ };

char Letter(Value value);  // 0 1 X Z

// For each net the level at its pin (of a node its state), then for each net its asserted state: the
// function, or the register.
using Snapshot = std::vector<Value>;

// The functions of a design, made ready for quick evaluation in three-valued logic.
class Gates {
  public:
    explicit Gates(const AbsDesign& design);

    bool Has(std::size_t net, Input input) const { return IndexOf(net, input) >= 0; }
    // The value of a net's function; `missing` if it has no such function.
    Value Part(std::size_t net, Input input, Value missing, const Snapshot& from) const {
        const int index = IndexOf(net, input);
        return index < 0 ? missing : Sum(gates_[static_cast<std::size_t>(index)], from);
    }
    // The nets that these functions of a net read, ascending.
    std::vector<std::size_t> Support(std::size_t net, std::initializer_list<Input> inputs) const;

    // Terms and literals looked at so far.
    std::uint64_t Work() const { return work_; }

  private:
    struct Gate {
        std::size_t Begin = 0;  // terms
        std::size_t End = 0;
        bool Negative = false;
    };

    int IndexOf(std::size_t net, Input input) const { return of_[net][static_cast<std::size_t>(input)]; }
    Value Sum(const Gate& gate, const Snapshot& from) const;

    std::size_t nets_;
    std::vector<std::array<int, model::InputCount>> of_;  // a net's gates by input; -1: none
    std::vector<Gate> gates_;
    std::vector<std::uint32_t> terms_;     // the first literal of each term, and the end of the last one
    std::vector<std::uint32_t> literals_;  // twice the place in a snapshot, plus 1 for its complement
    mutable std::uint64_t work_ = 0;
};

}  // namespace sim
