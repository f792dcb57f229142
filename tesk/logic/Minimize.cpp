#include "logic/Minimize.h"

#include <limits>

#include "base/RunTimeError.h"
#include "logic/Minimizer.h"

namespace logic {

namespace {

void DemandSameLayout(const Cover& a, const Cover& b) {
    if (!(a.Form() == b.Form()))
        throw base::RunTimeError(base::errInvalidCall, "Covers of different inputs or outputs");
}

constexpr std::uint64_t noBound = std::numeric_limits<std::uint64_t>::max();

}  // namespace

MinimizeResult Minimize(const Cover& on, const Cover& dontCare, Level level, const Options& options) {
    DemandSameLayout(on, dontCare);
    return MinimizeProblem({on, dontCare, std::nullopt, false}, level, options);
}

Cover Minimized(const Cover& on, Level level, const Options& options) {
    return Minimize(on, Cover(on.Form()), level, options).Terms;
}

void DemandApart(const Cover& on, const Cover& off) {
    DemandSameLayout(on, off);
    Cover points = on;
    points.RemoveEmpty();
    for (std::size_t i = 0; i < points.Size(); ++i)
        for (std::size_t k = 0; k < off.Size(); ++k)
            if (on.Form().Meet(points[i], off[k]) && !on.Form().IsEmpty(off[k]))
                throw base::RunTimeError(base::errInvalidCall, "The on-set meets the off-set");
}

MinimizeResult MinimizeOnOff(const Cover& on, const Cover& off, Level level, const Options& options) {
    DemandApart(on, off);
    return MinimizeProblem({on, Cover(on.Form()), off, true}, level, options);
}

std::optional<bool> CoversWithin(const Cover& outer, const Cover& inner, std::uint64_t bound) {
    DemandSameLayout(outer, inner);
    Budget budget(bound);
    RegionSearch search(outer.Form(), budget);
    const CubeList list = CubesOf(outer);
    for (std::size_t i = 0; i < inner.Size(); ++i) {
        if (outer.Form().IsEmpty(inner[i])) continue;
        const bool covered = search.Covered(inner[i], list);
        if (budget.Exhausted()) return std::nullopt;
        if (!covered) return false;
    }
    return true;
}

bool Covers(const Cover& outer, const Cover& inner) {
    return CoversWithin(outer, inner, noBound).value_or(false);
}

bool IsTautology(const Cover& cover) { return Covers(cover, Everything(cover.Form())); }

bool Equivalent(const Cover& a, const Cover& b) { return Covers(a, b) && Covers(b, a); }

bool Implements(const Cover& result, const Cover& on, const Cover& dontCare) {
    Cover lower = result;
    lower.AddAll(dontCare);
    Cover upper = on;
    upper.AddAll(dontCare);
    return Covers(lower, on) && Covers(upper, result);
}

std::optional<Cover> Complement(const Cover& cover, std::size_t cubeLimit) {
    std::uint64_t steps = 2000000000;
    return Complement(cover, cubeLimit, steps);
}

std::optional<Cover> Complement(const Cover& cover, std::size_t cubeLimit, std::uint64_t& steps) {
    Budget budget(steps);
    Cover result(cover.Form());
    const bool made = ComplementWithin(cover, cubeLimit, budget, result);
    steps = budget.Left();
    if (!made || budget.Exhausted()) return std::nullopt;
    return result;
}

}  // namespace logic
