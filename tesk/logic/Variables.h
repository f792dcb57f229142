#pragma once

#include <map>
#include <vector>

#include "logic/Cover.h"

namespace logic {

// The variables of sums of products, as inputs of covers of one output. A sum is a list of products, a
// product a list of literals. A literal has an order and says `Negated`; the rest of it tells the variable.
template <typename LiteralType>
class Variables {
  public:
    using Sum = std::vector<std::vector<LiteralType>>;

    // New ones come behind those that are known.
    void Add(const Sum& sum) {
        for (const auto& product : sum)
            for (const LiteralType& literal : product)
                if (places_.emplace(Plain(literal), all_.size()).second) all_.push_back(Plain(literal));
    }
    void Sort() {
        all_.clear();
        for (auto& [variable, place] : places_) {
            place = all_.size();
            all_.push_back(variable);
        }
    }

    Layout Form() const { return {static_cast<int>(all_.size()), 1}; }
    const LiteralType& operator[](std::size_t input) const { return all_[input]; }

    // Products that want both values of a variable are left out.
    Cover CoverOf(const Sum& sum) const {
        Cover cover(Form());
        for (const auto& product : sum) {
            Word* cube = cover.Append();
            cover.Form().SetOutput(cube, 0, true);
            for (const LiteralType& literal : product)
                cover.Form().Restrict(cube, static_cast<int>(places_.at(Plain(literal))), !literal.Negated);
            if (cover.Form().IsEmpty(cube)) cover.Truncate(cover.Size() - 1);
        }
        return cover;
    }

    Sum SumOf(const Cover& cover) const {
        Sum sum(cover.Size());
        for (std::size_t i = 0; i < cover.Size(); ++i)
            for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
                sum[i].push_back(all_[input]);
                sum[i].back().Negated = negated;
            }
        return sum;
    }

  private:
    static LiteralType Plain(LiteralType literal) {
        literal.Negated = false;
        return literal;
    }

    std::vector<LiteralType> all_;
    std::map<LiteralType, std::size_t> places_;
};

// Those of one sum, in their order.
template <typename LiteralType>
Variables<LiteralType> SortedVariables(const std::vector<std::vector<LiteralType>>& sum) {
    Variables<LiteralType> variables;
    variables.Add(sum);
    variables.Sort();
    return variables;
}

}  // namespace logic
