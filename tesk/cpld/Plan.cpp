#include "cpld/Plan.h"

#include <algorithm>

#include "fit/Sums.h"

namespace cpld {
namespace {

constexpr std::size_t mostWork = 2'000;  // macrocells of a design, before it is told to be too large

class Planner {
  public:
    Planner(const Wants& wants, const Globals& globals, const Means& means)
        : globals_(globals), means_(means), wants_(wants.All) {
        result_.Names = wants.Names;
        for (std::size_t i = 0; i < result_.Names.size(); ++i)
            if (result_.Names[i].Place && result_.Names[i].Driven) fixed_.push_back(*result_.Names[i].Place);
    }

    Plans Run() {
        for (std::size_t i = 0; i < wants_.size() && wants_.size() < mostWork; ++i) {
            const auto& name = result_.Names[wants_[i].Owner];
            if (name.Drives || name.Read || name.Place) Add(wants_[i]);
        }
        return std::move(result_);
    }

  private:
    // A buried function, once for all who ask for it.
    Literal HelperFor(const Sum& sum, std::size_t owner) {
        for (const auto& [known, index] : helpers_)
            if (fit::IsSame(known, sum)) return {index, false, false};
        Want want;
        want.Owner = AddName(owner);
        want.On = sum;
        helpers_.emplace_back(sum, want.Owner);
        wants_.push_back(want);
        return {want.Owner, false, false};
    }

    std::size_t AddName(std::size_t owner) {
        const auto index = result_.Names.size();
        Name name;
        name.Text = result_.Names[owner].Text + "." + std::to_string(++parts_[owner]);
        name.Driven = name.Read = true;
        name.State = index;
        result_.Names.push_back(std::move(name));
        return index;
    }

    // The sum as one product: through a foldback, or through a macrocell of its own.
    Product ProductOf(const Sum& sum, std::size_t owner) {
        if (IsProduct(sum)) return sum.front();
        const auto single = [](const Product& term) { return term.size() == 1; };
        if (sum.empty() || !std::all_of(sum.begin(), sum.end(), single)) return {HelperFor(sum, owner)};
        Product none;
        for (const auto& term : sum) none.push_back(Negated(term.front()));
        return {FoldbackOf(none, result_.Foldbacks)};
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
        const auto off = Not(*want.ClockEnable);
        if (!off) return Tell(want.Owner, "7808tc", result_.Names[want.Owner].Text + ".CE");
        const Sum state{{{want.Owner, false, false}}};
        want.On = Minimised(Or(And(*want.ClockEnable, *want.On), And(*off, state)));
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
        const auto state = AddName(want.Owner);
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
        static_cast<Form&>(plan) =
            want.Xor ? Exclusive(want, plan.Low, own) : ChooseForm(want, plan.Low, flip, own);
        plan.LongestRun = RunAt(plan.Owner);
        if (means_.Smallest > 0) Factor(plan.Terms, plan.OwnTerms(), means_.Smallest, result_.Foldbacks);
        Split(plan);
    }

    // A kept exclusive or, unless the function is small without it.
    Form Exclusive(const Want& want, bool low, std::size_t own) {
        Want expanded = want;
        if (const auto whole = ExclusiveOr(*want.On, *want.Xor)) {
            expanded.On = *whole;
            auto form = ChooseForm(expanded, low, false, own);
            if (form.Terms.size() <= own) return form;
        }
        const bool second = want.Xor->size() == 1 || want.On->size() != 1;
        const Sum& terms = second ? *want.On : *want.Xor;
        auto product = ProductOf(second ? *want.Xor : *want.On, want.Owner);
        if (!low) return {Shape::Exclusive, low, terms, product};
        // The complement is that of one side.
        if (product.size() == 1 && product.front().Signal < firstFoldback)
            return {Shape::Exclusive, low, terms, {Negated(product.front())}};
        const auto complement = Not(terms);
        if (!complement) Tell(want.Owner, "7808tc", result_.Names[want.Owner].Text);
        return {Shape::Exclusive, low, complement.value_or(Sum{}), product};
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
        while (plan.Terms.size() > most) {
            const auto excess = plan.Terms.size() - most + 1;
            const auto count =
                static_cast<std::ptrdiff_t>(std::min(CellTerms, std::max<std::size_t>(excess, 2)));
            const Sum part(plan.Terms.begin(), plan.Terms.begin() + count);
            plan.Terms.erase(plan.Terms.begin(), plan.Terms.begin() + count);
            plan.Terms.push_back({HelperFor(part, plan.Owner)});
        }
    }

    void Tell(std::size_t owner, MessageCode code, const std::string& detail) {
        result_.Messages.push_back(model::MakeMessage(code.Entry(), {}, detail, result_.Names[owner].Text));
    }

    const Globals& globals_;
    Means means_;
    std::vector<Want> wants_;
    std::vector<std::size_t> fixed_;
    std::vector<std::pair<Sum, std::size_t>> helpers_;
    std::map<std::size_t, std::size_t> parts_;
    Plans result_;
};

}  // namespace

Plans MakePlans(const Wants& wants, const Globals& globals, const Means& means) {
    return Planner(wants, globals, means).Run();
}

}  // namespace cpld
