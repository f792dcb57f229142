#include "proof/Compare.h"

#include <optional>

#include "logic/Minimize.h"
#include "logic/Variables.h"

namespace proof {
namespace {

using logic::Cover;
using Result = Comparison::Result;

constexpr std::size_t kMostCubes = 20'000;  // of a complement

class Comparer {
  public:
    Comparer(const std::vector<const Products*>& all, std::uint64_t bound) : bound_(bound) {
        for (const Products* products : all) columns_.Add(*products);
        columns_.Sort();
    }

    Cover CoverOf(const Products& products) const { return columns_.CoverOf(products); }

    // Nothing if it takes too much.
    std::optional<Cover> Xor(const Cover& a, const Cover& b) const {
        std::uint64_t steps = bound_;
        const auto notA = logic::Complement(a, kMostCubes, steps);
        const auto notB = logic::Complement(b, kMostCubes, steps);
        if (!notA || !notB || notA->Size() * b.Size() + notB->Size() * a.Size() > kMostCubes)
            return std::nullopt;
        Cover result = logic::Intersection(*notA, b);
        result.AddAll(logic::Intersection(a, *notB));
        return result;
    }

    // Whether they have a point in common; the first product that they share.
    bool Meet(const Cover& a, const Cover& b, Cover& shared) const {
        for (std::size_t i = 0; i < a.Size(); ++i)
            for (std::size_t k = 0; k < b.Size(); ++k) {
                if (!a.Form().InputsMeet(a[i], b[k])) continue;
                shared = Nothing();
                shared.Form().Intersect(shared.Append(), a[i], b[k]);
                return true;
            }
        return false;
    }

    // Whether `outer` holds `inner`, else a point where it does not.
    Result Holds(const Cover& outer, const Cover& inner, Cover& point) const {
        const auto whole = logic::CoversWithin(outer, inner, bound_);
        if (!whole) return Result::Open;
        if (*whole) return Result::Same;
        for (std::size_t i = 0; i < inner.Size(); ++i) {
            point = Nothing();
            point.Add(inner[i]);
            const auto covers = logic::CoversWithin(outer, point, bound_);
            if (!covers) return Result::Open;
            if (!*covers) return Narrow(outer, point);
        }
        return Result::Open;
    }

    // Makes a point of a cube that holds one outside.
    Result Narrow(const Cover& outer, Cover& point) const {
        for (int v = 0; v < point.Inputs(); ++v) {
            if (point.Form().Input(point[0], v) != logic::Literal::Free) continue;
            point.Form().SetInput(point[0], v, logic::Literal::Zero);
            const auto covers = logic::CoversWithin(outer, point, bound_);
            if (!covers) return Result::Open;
            if (*covers) point.Form().SetInput(point[0], v, logic::Literal::One);
        }
        return Result::Different;
    }

    Comparison Made(Result result, const Cover& point, bool found) const {
        Comparison made{result, {}};
        if (result != Result::Different) return made;
        made.At.Found = found;
        const Products where = columns_.SumOf(point);
        for (const KeyLiteral& literal : where.front()) made.At.Values[literal.Of] = !literal.Negated;
        return made;
    }

    Cover Nothing() const { return Cover(columns_.Form()); }

  private:
    std::uint64_t bound_;
    logic::Variables<KeyLiteral> columns_;
};

Cover With(Cover a, const Cover& b) {
    a.AddAll(b);
    return a;
}

}  // namespace

Comparison Compare(const Products& rows, const Products* rows2, bool inverted, const Products& on,
                   const Products& dontCare, std::uint64_t bound) {
    static const Products none;
    const Comparer comparer({&rows, rows2 == nullptr ? &none : rows2, &on, &dontCare}, bound);
    Cover sum = comparer.CoverOf(rows);
    if (rows2 != nullptr) {
        auto both = comparer.Xor(sum, comparer.CoverOf(*rows2));
        if (!both) return {Result::Open, {}};
        sum = std::move(*both);
    }
    const Cover one = comparer.CoverOf(on);
    const Cover open = comparer.CoverOf(dontCare);
    Cover point;
    // Where the equations say 1, the fuses must not say 0.
    Result result = Result::Same;
    if (!inverted) {
        result = comparer.Holds(With(sum, open), one, point);
    } else if (comparer.Meet(one, sum, point)) {
        result = comparer.Narrow(comparer.Nothing(), point);
    }
    if (result != Result::Same) return comparer.Made(result, point, false);
    // Nor 1 where the equations say 0.
    const Cover most = With(one, open);
    result = inverted ? comparer.Holds(With(most, sum), logic::Everything(most.Form()), point)
                      : comparer.Holds(most, sum, point);
    return comparer.Made(result, point, true);
}

}  // namespace proof
