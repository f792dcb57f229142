#include <algorithm>
#include <map>
#include <tuple>

#include "cpld/Plan.h"
#include "fit/Sums.h"

namespace cpld {
namespace {

// More would take long for nothing: what is as large as this has no small exclusive or.
constexpr std::size_t mostInputs = 14;
constexpr std::size_t mostTerms = 40;

std::size_t CellsFor(std::size_t terms, std::size_t own) {
    return 1 + (terms <= own ? 0 : (terms - own + CellTerms - 1) / CellTerms);
}

std::size_t OwnOf(Shape shape, std::size_t own) { return shape == Shape::Exclusive ? own - 1 : own; }

class Chooser {
  public:
    Chooser(const Want& want, bool low, bool flip, std::size_t own)
        : want_(want), low_(low), flip_(flip), own_(own), on_(want.On), toggle_(want.Toggle) {}

    Form Run() {
        if (!on_) MakeData();
        if (on_) Offer({low_ ? Shape::Complement : Shape::Plain, low_, *on_, {}});
        if (toggle_) OfferToggles();
        if (best_->Terms.size() <= own_) return *best_;
        if (on_ && !off_) off_ = Not(*on_);
        if (!off_) return *best_;
        Offer({low_ ? Shape::Plain : Shape::Complement, low_, *off_, {}});
        if (want_.Register == RegisterKind::D && !toggle_) {
            toggle_ = With({want_.Owner, false, false});
            OfferToggles();
        }
        if (on_->size() <= mostTerms) OfferExclusives();
        return *best_;
    }

  private:
    void Offer(Form form) {
        const auto cost = [&](const Form& one) {
            const bool asserted = want_.Register != RegisterKind::None && one.StartsAsserted();
            return std::tuple(CellsFor(one.Terms.size(), OwnOf(one.As, own_)), asserted, one.Terms.size(),
                              one.As);
        };
        if (!best_ || cost(form) < cost(*best_)) best_ = std::move(form);
    }

    // The next state of a register that is told by its changes.
    void MakeData() {
        on_ = toggle_;
        off_ = Not(*toggle_);
        if (off_) on_ = With({want_.Owner, false, false});
        if (!off_) on_.reset();
        off_.reset();
    }

    // f with a variable: f and not x, or x and not f.
    Sum With(const Literal& literal) const {
        return Minimised(Or(And(*on_, {{Negated(literal)}}), And(*off_, {{literal}})));
    }

    void OfferToggles() {
        Offer({Shape::Toggle, low_, *toggle_, {}});
        if (toggle_->size() <= own_) return;
        if (const auto keep = Not(*toggle_)) Offer({Shape::ToggleComplement, low_, *keep, {}});
    }

    void OfferExclusives() {
        std::vector<Literal> literals, variables;
        for (const auto& term : *on_)
            for (const auto& literal : term) literals.push_back(literal);
        const auto known = [](const std::vector<Literal>& all, const Literal& literal) {
            return std::find(all.begin(), all.end(), literal) != all.end();
        };
        // What stands in the terms in one sense only has seldom a part in an exclusive or.
        for (const auto& literal : literals)
            if (!literal.Negated && known(literals, Negated(literal)) && !known(variables, literal))
                variables.push_back(literal);
        if (variables.size() > mostInputs) return;
        for (const auto& literal : variables) {
            const auto sum = With(literal);
            OfferExclusive(sum, {literal});
            if (const auto complement = Not(sum)) OfferExclusive(*complement, {Negated(literal)});
        }
    }

    // The function is the exclusive or of both. Its complement is that of the sum and the literal's
    // complement.
    void OfferExclusive(const Sum& sum, const Product& product) {
        const Product opposite{Negated(product.front())};
        Offer({Shape::Exclusive, low_, sum, low_ ? opposite : product});
        if (flip_) Offer({Shape::Exclusive, !low_, sum, low_ ? product : opposite});
    }

    const Want& want_;
    bool low_, flip_;
    std::size_t own_;
    std::optional<Sum> on_, off_, toggle_;
    std::optional<Form> best_;
};

// Terms by what they hold beside one literal.
struct Group {
    Product Rest;
    std::vector<Literal> Others;
    std::vector<std::size_t> Terms;
};

using Key = std::vector<std::tuple<std::size_t, bool, bool>>;

std::optional<Group> LargestGroup(const Sum& sum, std::size_t smallest) {
    std::map<Key, Group> groups;
    for (std::size_t i = 0; i < sum.size(); ++i) {
        for (const auto& literal : sum[i]) {
            Key key;
            Product rest;
            for (const auto& other : sum[i])
                if (!(other == literal)) {
                    key.emplace_back(other.Signal, other.Pin, other.Negated);
                    rest.push_back(other);
                }
            std::sort(key.begin(), key.end());
            auto& group = groups[key];
            group.Rest = std::move(rest);
            group.Others.push_back(literal);
            group.Terms.push_back(i);
        }
    }
    const auto fewer = [](const auto& a, const auto& b) {
        return a.second.Terms.size() < b.second.Terms.size();
    };
    const auto largest = std::max_element(groups.begin(), groups.end(), fewer);
    if (largest == groups.end() || largest->second.Terms.size() < smallest) return std::nullopt;
    return largest->second;
}

}  // namespace

std::size_t Plan::OwnTerms() const {
    const bool fourth = Clock || ClockEnable;
    const std::size_t controls = (Clear ? 1u : 0u) + (fourth ? 1u : 0u) + (Set || Enable ? 1u : 0u);
    return OwnOf(As, CellTerms - controls);
}

std::size_t Plan::Cells() const { return CellsFor(Terms.size(), OwnTerms()); }

Form ChooseForm(const Want& want, bool low, bool flip, std::size_t own) {
    return Chooser(want, low, flip, own).Run();
}

Literal FoldbackOf(const Product& product, std::vector<Product>& foldbacks) {
    const auto same = [&](const Product& other) { return fit::IsSame({product}, {other}); };
    const auto found = std::find_if(foldbacks.begin(), foldbacks.end(), same);
    const auto index = static_cast<std::size_t>(found - foldbacks.begin());
    if (found == foldbacks.end()) foldbacks.push_back(product);
    return {firstFoldback + index, false, false};
}

// A run has fewer terms than this, and a block sixteen foldbacks.
constexpr std::size_t mostToFactor = 96;

void Factor(Sum& sum, std::size_t most, std::size_t smallest, std::vector<Product>& foldbacks) {
    while (sum.size() > most && sum.size() <= mostToFactor) {
        const auto group = LargestGroup(sum, smallest);
        if (!group) return;
        Product product;
        for (const auto& literal : group->Others) {
            // A foldback is not read negated: its complement would take another one.
            if (literal.Signal >= firstFoldback) return;
            product.push_back(Negated(literal));
        }
        auto term = group->Rest;
        term.push_back(FoldbackOf(product, foldbacks));
        for (auto i = group->Terms.rbegin(); i != group->Terms.rend(); ++i)
            sum.erase(sum.begin() + static_cast<std::ptrdiff_t>(*i));
        sum.push_back(std::move(term));
    }
}

}  // namespace cpld
