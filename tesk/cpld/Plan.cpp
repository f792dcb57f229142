#include "cpld/Plan.h"

#include <algorithm>

#include "fit/Sums.h"

namespace cpld {
namespace {

constexpr std::size_t mostWork = 2'000;  // macrocells of a design, before it is told to be too large

class Planner {
  public:
    Planner(const Wants& wants, const Globals& globals, const Means& means, FormCache& forms)
        : globals_(globals), means_(means), forms_(forms), wants_(wants.All) {
        result_.Names = wants.Names;
        for (std::size_t i = 0; i < result_.Names.size(); ++i)
            if (result_.Names[i].Place && result_.Names[i].Driven) fixed_.push_back(*result_.Names[i].Place);
    }

    Plans Run() {
        std::size_t next = 0;
        for (; next < wants_.size() && wants_.size() < mostWork; ++next) {
            const auto& name = result_.Names[wants_[next].Owner];
            if (name.Drives || name.Read || name.Place) Add(wants_[next]);
        }
        result_.Unplanned = wants_.size() - next;
        return std::move(result_);
    }

  private:
    // A buried function, once for all who ask for it.
    Literal HelperFor(const Sum& sum, std::size_t owner) {
        for (const auto& [known, index] : helpers_)
            if (fit::IsSame(known, sum)) return {index, false, false};
        const auto literal = NewHelper(sum, owner);
        helpers_.emplace_back(sum, literal.Signal);
        return literal;
    }

    Literal NewHelper(const Sum& sum, std::size_t owner) {
        Want want;
        want.Owner = AddPart(result_.Names, owner);
        want.On = sum;
        wants_.push_back(want);
        return {want.Owner, false, false};
    }

    // The sum as one product: through a foldback, or through a macrocell of its own.
    Product ProductOf(const Sum& sum, std::size_t owner) {
        if (sum.size() == 1) return sum.front();
        const auto single = [](const Product& term) { return term.size() == 1; };
        if (sum.empty() || !std::all_of(sum.begin(), sum.end(), single)) return {HelperFor(sum, owner)};
        Product none;
        for (const auto& term : sum) none.push_back(Negated(term.front()));
        return {FoldbackOf(none, result_.Foldbacks)};
    }
    Sum ComplementOf(const Sum& sum, std::size_t owner) {
        if (auto complement = Not(sum)) return *complement;
        return {{Negated(HelperFor(sum, owner))}};
    }
    std::optional<Product> Asynchronous(const Sum& sum, std::size_t owner) {
        if (sum.empty()) return std::nullopt;
        return ProductOf(sum, owner);
    }

    void AddClock(Want& want, Plan& plan) {
        plan.GlobalClock = globals_.ClockOf(want.Clock);
        if (plan.GlobalClock) {
            if (want.ClockEnable) plan.ClockEnable = ProductOf(*want.ClockEnable, want.Owner);
            return;
        }
        plan.Clock = ProductOf(want.Clock, want.Owner);
        if (want.ClockEnable) HoldByData(want);
    }

    // One term can't clock and enable: the enable goes into the data.
    void HoldByData(Want& want) {
        if (want.Toggle) {
            want.Toggle = Minimised(And(*want.ClockEnable, *want.Toggle));
            want.ClockEnable.reset();
            return;
        }
        want.Sides.reset();
        const auto off = ComplementOf(*want.ClockEnable, want.Owner);
        const Sum state{{{want.Owner, false, false}}};
        want.On = Minimised(Or(And(*want.ClockEnable, *want.On), And(off, state)));
        want.ClockEnable.reset();
    }

    void AddAsynchronous(const Want& want, Plan& plan) {
        auto clear = plan.Low ? want.Preset : want.Reset;
        const auto& set = plan.Low ? want.Reset : want.Preset;
        const auto global = [&](const Product& term) {
            return term.size() == 1 && globals_.Clear && term.front().Signal == globals_.Clear->From.Signal &&
                   term.front().Negated == globals_.Clear->From.Negated;
        };
        plan.GlobalClear = std::erase_if(clear, global) > 0;
        plan.Clear = Asynchronous(clear, want.Owner);
        plan.Set = Asynchronous(set, want.Owner);
    }

    // The fifth term sets or enables. Where it should do both, the pin gets a macrocell of its own.
    bool NeedsOutputCell(const Want& want, bool low) const {
        const auto& set = low ? want.Reset : want.Preset;
        return !set.empty() && want.Enable && !want.Enable->empty() && !globals_.EnableOf(*want.Enable);
    }

    void AddEnable(const Want& want, Plan& plan) {
        if (!want.Enable) return;
        plan.Never = want.Enable->empty();
        if (plan.Never) return;
        plan.GlobalEnable = globals_.EnableOf(*want.Enable);
        if (!plan.GlobalEnable) plan.Enable = ProductOf(*want.Enable, want.Owner);
    }

    Want OutputCell(Want& want) {
        Want output;
        output.Owner = want.Owner;
        output.Enable = std::move(want.Enable);
        want.Enable.reset();
        const auto state = AddPart(result_.Names, want.Owner);
        result_.Names[state].Register = true;
        result_.Names[want.Owner].State = state;
        output.On = {{{state, false, false}}};
        want.Owner = state;
        return output;
    }

    void Add(Want want) {
        Plan plan;
        bool low = result_.Names[want.Owner].Low;
        if (NeedsOutputCell(want, low)) {
            AddPlan(OutputCell(want), low);
            low = false;
        }
        AddPlan(std::move(want), low);
    }

    void AddPlan(Want want, bool low) {
        Plan plan;
        plan.Owner = want.Owner;
        plan.Register = want.Register;
        plan.Low = low;
        if (want.Register != RegisterKind::None) {
            AddClock(want, plan);
            AddAsynchronous(want, plan);
        }
        AddEnable(want, plan);
        const bool free = !plan.Clear && !plan.Set && !plan.GlobalClear;
        AddData(want, plan, free && !result_.Names[plan.Owner].Drives);
        result_.All.push_back(std::move(plan));
    }

    void AddData(const Want& want, Plan& plan, bool flip) {
        const auto own = plan.OwnTerms();
        static_cast<Form&>(plan) = Chosen(want, plan.Low, flip, own);
        if (want.Sides && plan.Terms.size() > own) KeepExclusive(want, plan);
        plan.LongestRun = RunAt(plan.Owner);
        if (means_.Smallest > 0) Factor(plan.Terms, plan.OwnTerms(), means_.Smallest, result_.Foldbacks);
        Split(plan);
    }

    const Form& Chosen(const Want& want, bool low, bool flip, std::size_t own) {
        auto& entry = forms_.ByOwner[want.Owner];
        const bool same = entry.Own == own && entry.Low == low && entry.Flip == flip &&
                          entry.Of.On == want.On && entry.Of.Toggle == want.Toggle;
        if (!same) entry = {want, low, flip, own, ChooseForm(want, low, flip, own)};
        return entry.Chosen;
    }

    // One side as the terms, the other one as the product that they are taken with: complemented both or
    // none, or one of them for the complement.
    void KeepExclusive(const Want& want, Plan& plan) {
        const auto& sides = *want.Sides;
        const bool low = result_.Names[plan.Owner].Low;
        const Sum &left = low ? sides.NotLeft : sides.Left, &notLeft = low ? sides.Left : sides.NotLeft;
        const std::pair<const Sum*, const Sum*> ways[] = {{&left, &sides.Right},
                                                          {&notLeft, &sides.NotRight},
                                                          {&sides.Right, &left},
                                                          {&sides.NotRight, &notLeft}};
        const auto cost = [](const auto& way) { return way.first->size() + 4 * (way.second->size() - 1); };
        const auto best = std::min_element(std::begin(ways), std::end(ways),
                                           [&](const auto& a, const auto& b) { return cost(a) < cost(b); });
        if (best->second->empty() || best->first->size() >= plan.Terms.size()) return;
        const auto product = ProductOf(*best->second, want.Owner);
        static_cast<Form&>(plan) = {Shape::Exclusive, low, *best->first, product};
    }

    // Macrocells that a run may take which ends where the name is fixed.
    std::size_t RunAt(std::size_t owner) const {
        const auto& place = result_.Names[owner].Place;
        if (!place) return means_.LongestRun;
        std::size_t run = 1;
        while (run < means_.LongestRun && (*place + 1 - run) % BlockCells != 0 &&
               std::find(fixed_.begin(), fixed_.end(), *place - run) == fixed_.end())
            ++run;
        return run;
    }

    // The terms beyond the run go to buried macrocells.
    void Split(Plan& plan) {
        const auto most = plan.OwnTerms() + CellTerms * (plan.LongestRun - 1);
        std::size_t first = 0;
        while (plan.Terms.size() - first > most) {
            const auto excess = plan.Terms.size() - first - most + 1;
            const auto begin = plan.Terms.begin() + static_cast<std::ptrdiff_t>(first);
            const auto count = std::min(CellTerms, std::max<std::size_t>(excess, 2));
            const Sum part(begin, begin + static_cast<std::ptrdiff_t>(count));
            first += count;
            plan.Terms.push_back({NewHelper(part, plan.Owner)});
        }
        plan.Terms.erase(plan.Terms.begin(), plan.Terms.begin() + static_cast<std::ptrdiff_t>(first));
    }

    const Globals& globals_;
    Means means_;
    FormCache& forms_;
    std::vector<Want> wants_;
    std::vector<std::size_t> fixed_;
    std::vector<std::pair<Sum, std::size_t>> helpers_;
    Plans result_;
};

}  // namespace

Plans MakePlans(const Wants& wants, const Globals& globals, const Means& means, FormCache& forms) {
    return Planner(wants, globals, means, forms).Run();
}

}  // namespace cpld
