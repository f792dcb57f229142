#include "cpld/Inline.h"

#include <optional>

#include "logic/Minimize.h"
#include "logic/Variables.h"

namespace cpld {
namespace {

using logic::Cover;
using proof::Literal;
using proof::Sum;

constexpr std::size_t mostCubes = 2000;
constexpr std::uint64_t mostSteps = 2'000'000;

// Nothing: too large.
using Bounded = std::optional<Cover>;

class Inliner {
  public:
    Inliner(const proof::Chip& chip, const std::vector<bool>& keep)
        : chip_(chip), keep_(keep), covers_(2 * chip.Cells.size()), isOpen_(chip.Cells.size()) {
        for (const auto& cell : chip.Cells)
            for (const Sum* sum : SumsOf(cell)) variables_.Add(*sum);
    }

    // False if it is too large; the cell is then as it was.
    bool Inline(proof::Macrocell& cell) {
        proof::Macrocell result = cell;
        for (Sum* sum : SumsOf(result)) {
            const Bounded cover = Expanded(*sum);
            if (!cover) return false;
            *sum = variables_.SumOf(*cover);
        }
        cell = std::move(result);
        return true;
    }

  private:
    static Bounded Product(const Cover& a, const Cover& b) {
        Bounded result = logic::Intersection(a, b, mostCubes);
        if (result) result->Absorb();
        return result;
    }

    static Bounded Complement(const Cover& cover) {
        std::uint64_t steps = mostSteps;
        return logic::Complement(cover, mostCubes, steps);
    }

    bool IsRead(const proof::Signal& signal) const {
        if (signal.From != proof::Signal::Kind::Cell) return true;
        const auto& cell = chip_.Cells[signal.At];
        return keep_[signal.At] || cell.Register != proof::RegisterKind::None || isOpen_[signal.At];
    }

    Bounded CoverOf(const Literal& literal) {
        if (!IsRead(literal.Of)) return FunctionOf(literal.Of.At, literal.Negated);
        return variables_.CoverOf({{literal}});
    }

    Bounded Expanded(const Sum& sum) {
        Cover result(variables_.Form());
        for (const auto& term : sum) {
            Bounded product = logic::Everything(result.Form());
            for (const Literal& literal : term) {
                const Bounded factor = CoverOf(literal);
                if (!factor || !(product = Product(*product, *factor))) return std::nullopt;
            }
            result.AddAll(*product);
        }
        result.Absorb();
        return result.Size() > mostCubes ? std::nullopt : Bounded(result);
    }

    // What an unnamed cell gives, or its complement.
    Bounded FunctionOf(std::size_t cell, bool negated) {
        auto& known = covers_[2 * cell + negated];
        if (!known) {
            isOpen_[cell] = true;
            known = Made(chip_.Cells[cell], negated);
            isOpen_[cell] = false;
        }
        return *known;
    }

    Bounded Made(const proof::Macrocell& cell, bool negated) {
        Bounded rows = Expanded(cell.Rows);
        if (rows && cell.Rows2) {
            const Bounded other = Expanded(*cell.Rows2);
            rows = other ? Exclusive(*rows, *other) : std::nullopt;
        }
        return rows && cell.Inverted != negated ? Complement(*rows) : rows;
    }

    static Bounded Exclusive(const Cover& a, const Cover& b) {
        const Bounded notA = Complement(a), notB = Complement(b);
        if (!notA || !notB) return std::nullopt;
        Bounded result = Product(a, *notB);
        const Bounded second = Product(*notA, b);
        if (!result || !second) return std::nullopt;
        result->AddAll(*second);
        return result;
    }

    const proof::Chip& chip_;
    const std::vector<bool>& keep_;
    logic::Variables<Literal> variables_;
    std::vector<std::optional<Bounded>> covers_;  // of each cell, and of its complement
    std::vector<bool> isOpen_;
};

}  // namespace

proof::Chip Inlined(const proof::Chip& chip, const std::vector<bool>& keep,
                    std::vector<std::size_t>& tooLarge) {
    Inliner inliner(chip, keep);
    proof::Chip result = chip;
    for (std::size_t i = 0; i < result.Cells.size(); ++i)
        if (!inliner.Inline(result.Cells[i])) tooLarge.push_back(i);
    return result;
}

}  // namespace cpld
