#include "front/Exclusive.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "logic/Minimize.h"

namespace front {

namespace {

constexpr std::size_t kMostTerms = 64;        // of a side that is worth a look
constexpr std::size_t kMostToSplit = 24;      // of a sum, or of its complement, that is worth one
constexpr std::size_t kMostCandidates = 128;  // products that are tried for a sum
constexpr int kMostTrials = 1500;             // of all sums of a design: a second or so
constexpr int kMostProducts = 2;              // in one side
constexpr int kMostVariables = 64;            // one standing for the next

using Cube = std::vector<logic::Word>;

logic::Cover Reduced(const logic::Cover& on, logic::Level level) {
    return logic::Minimized(on, level, {.Shared = false});
}

// A function and its complement.
struct Both {
    logic::Cover On;
    logic::Cover Off;
    std::size_t Least() const { return std::min(On.Size(), Off.Size()); }
};

// `inside` in the cube, `outside` out of it.
logic::Cover Joined(const logic::Cover& inside, const logic::Cover& outside, const Cube& cube) {
    const logic::Layout& form = inside.Form();
    logic::Cover where(form);
    where.Add(cube.data());
    logic::Cover result = logic::Intersection(inside, where);
    for (const auto& [input, negated] : form.LiteralsOf(cube.data())) {
        logic::Cover beyond = logic::Everything(form);
        form.Restrict(beyond[0], static_cast<int>(input), negated);
        result.AddAll(logic::Intersection(outside, beyond));
    }
    return Reduced(result, logic::Level::m3);
}

Both ExclusiveOr(const Both& function, const Cube& cube) {
    return {Joined(function.Off, function.On, cube), Joined(function.On, function.Off, cube)};
}

// Products that may be one of a side: single names, the terms, and the terms with a literal less.
std::vector<Cube> Candidates(const Both& function) {
    const logic::Layout& form = function.On.Form();
    std::vector<Cube> cubes;
    const auto add = [&](const Cube& cube) {
        if (cubes.size() < kMostCandidates && std::find(cubes.begin(), cubes.end(), cube) == cubes.end())
            cubes.push_back(cube);
    };
    const logic::Cover whole = logic::Everything(form);
    const Cube free(whole[0], whole[0] + form.Words());
    for (int k = 0; k < function.On.Inputs(); ++k) {
        Cube name = free;
        form.SetInput(name.data(), k, logic::Literal::One);
        add(name);
    }
    for (const logic::Cover* cover : {&function.On, &function.Off}) {
        for (std::size_t i = 0; i < cover->Size(); ++i) {
            const Cube term((*cover)[i], (*cover)[i] + form.Words());
            add(term);
            for (int k = 0; k < cover->Inputs(); ++k) {
                Cube less = term;
                form.SetInput(less.data(), k, logic::Literal::Free);
                if (less != term && less != free) add(less);
            }
        }
    }
    return cubes;
}

class Splitter {
  public:
    Splitter(const XorRoom& room, const Variable& variable) : room_(room) {
        const bool node = variable.Kind != VariableKind::Pin;
        complement_ = node || (variable.ActiveLow ? room.High : room.Low);
        plain_ = node || (variable.ActiveLow ? room.Low : room.High);
    }

    // The sides, if there are some. What was tried goes off `trials`.
    std::optional<std::pair<Both, Both>> Split(const logic::Cover& sum, int& trials) const {
        Both rest{Reduced(sum, logic::Level::m4), logic::Cover(sum.Form())};
        const auto off = logic::Complement(rest.On, kMostTerms);
        if (!off) return std::nullopt;
        rest.Off = Reduced(*off, logic::Level::m4);
        Both side{logic::Cover(sum.Form()), logic::Everything(sum.Form())};
        for (int products = 0; products < kMostProducts; ++products) {
            std::optional<std::pair<Both, Both>> best;
            for (const Cube& cube : Candidates(rest)) {
                if (--trials < 0) return std::nullopt;
                std::pair<Both, Both> sides{ExclusiveOr(side, cube), ExclusiveOr(rest, cube)};
                if (Fits(sides.first, sides.second)) return sides;
                if (!best || sides.second.Least() < best->second.Least()) best = std::move(sides);
            }
            if (!best || best->second.Least() > kMostToSplit) return std::nullopt;
            side = std::move(best->first);
            rest = std::move(best->second);
        }
        return std::nullopt;
    }

  private:
    bool Fits(const Both& a, const Both& b) const {
        const auto fit = [&](const logic::Cover& x, const logic::Cover& y) {
            return (x.Size() <= room_.First && y.Size() <= room_.Second) ||
                   (x.Size() <= room_.Second && y.Size() <= room_.First);
        };
        return (plain_ && (fit(a.On, b.On) || fit(a.Off, b.Off))) ||
               (complement_ && (fit(a.On, b.Off) || fit(a.Off, b.On)));
    }

    const XorRoom& room_;
    bool plain_;
    bool complement_;
};

// The gate behind names of variables and complements.
NodeId Outermost(NodeId node, const Analysis& analysis, bool& inverted) {
    const Network& gates = analysis.Gates;
    for (int step = 0; step < kMostVariables; ++step) {
        const Gate what = gates.What(node);
        if (what != Gate::Intermediate && what != Gate::Not) break;
        inverted ^= what == Gate::Not;
        node = what == Gate::Not ? gates.Kids(node)[0] : analysis.Intermediates[gates.Operand(node)];
    }
    return node;
}

Equation SideOf(const Equation& equation, Both function) {
    Equation side = equation;
    side.Sides.clear();
    side.DontCare = logic::Cover(function.On.Form());
    side.On = std::move(function.On);
    side.Off = std::move(function.Off);
    side.HasOff = true;
    return side;
}

}  // namespace

void XorRoom::Add(const fit::Device& device) {
    for (const fit::Mode& mode : device.Modes)
        for (const fit::Cell& cell : mode.Cells)
            for (const fit::CellUse& use : cell.Uses) {
                if (use.XorTerms == 0) continue;
                First = std::max(First, use.Terms);
                Second = std::max(Second, use.XorTerms);
                Low = Low || cell.Polarity != fit::PolarityKind::High;
                High = High || cell.Polarity != fit::PolarityKind::Low;
            }
}

std::vector<Equation> SidesOf(const Definition& definition, Analysis& analysis, Expander& expander) {
    if (definition.DontCare != Network::zero) return {};
    Network& gates = analysis.Gates;
    bool inverted = false;
    const NodeId node = Outermost(definition.On, analysis, inverted);
    if (gates.What(node) != Gate::Xor) return {};
    const std::vector<NodeId> kids(gates.Kids(node).begin(), gates.Kids(node).end());
    const auto half = kids.size() / 2;
    const NodeId left = gates.Xor(std::span(kids).first(half));
    const NodeId right = gates.Xor(std::span(kids).subspan(half));
    std::vector<Equation> sides;
    for (const NodeId side : {inverted ? gates.Not(left) : left, right}) {
        const TermList on = expander.Expand(side);
        Equation& equation = sides.emplace_back();
        equation.Variable = definition.Variable;
        equation.To = definition.To;
        equation.Inputs = Expander::SignalsOf(on, {});
        equation.On = Expander::ToCover(on, equation.Inputs);
    }
    return sides;
}

void ReduceSides(Equation& equation) {
    const auto level = static_cast<logic::Level>(equation.Level);
    for (Equation& side : equation.Sides) {
        const auto off = side.On.Size() > kMostTerms ? std::nullopt : logic::Complement(side.On, kMostTerms);
        if (!off) return equation.Sides.clear();
        side.On = Reduced(side.On, level);
        side.Off = Reduced(*off, level);
        side.HasOff = true;
    }
}

void SplitSums(Design& design, const XorRoom& room) {
    int trials = kMostTrials;
    for (Equation& equation : design.Equations) {
        if (room.First == 0 || equation.To != Extension::D || !equation.Sides.empty()) continue;
        const std::size_t least =
            equation.HasOff ? std::min(equation.On.Size(), equation.Off.Size()) : equation.On.Size();
        if (least <= std::max(room.First, room.Second) || least > kMostToSplit) continue;
        auto sides = Splitter(room, design.Of(equation)).Split(equation.On, trials);
        if (!sides) continue;
        Equation first = SideOf(equation, std::move(sides->first));
        Equation second = SideOf(equation, std::move(sides->second));
        equation.Sides = {std::move(first), std::move(second)};
    }
}

}  // namespace front
