#include <algorithm>

#include "fit/ModeFit.h"
#include "fit/Sums.h"

// Outputs that take their terms from the same rows.
namespace fit {
namespace {

constexpr std::size_t mostVaried = 12;  // outputs whose polarities are all tried together

using Numbers = std::vector<std::size_t>;  // of the terms of a sum

Numbers NumbersOf(Sum sum, const Sum& all) {
    Sort(sum);
    Numbers numbers;
    for (const auto& term : sum)
        numbers.push_back(static_cast<std::size_t>(std::find(all.begin(), all.end(), term) - all.begin()));
    return numbers;
}

// One way for each output, so that there are the fewest different terms together.
class Fewest {
  public:
    Fewest(const std::vector<std::vector<Numbers>>& outputs, std::size_t terms)
        : Best(outputs.size(), 0), outputs_(outputs), ways_(outputs.size(), 0), uses_(terms, 0) {
        From(0, 0);
    }

    std::vector<std::size_t> Best;

  private:
    void From(std::size_t output, std::size_t terms) {
        if (terms >= least_) return;
        if (output == outputs_.size()) {
            least_ = terms;
            Best = ways_;
            return;
        }
        for (std::size_t way = 0; way < outputs_[output].size(); ++way) {
            ways_[output] = way;
            auto more = terms;
            for (const auto number : outputs_[output][way]) more += uses_[number]++ == 0 ? 1 : 0;
            From(output + 1, more);
            for (const auto number : outputs_[output][way]) --uses_[number];
        }
    }

    const std::vector<std::vector<Numbers>>& outputs_;
    std::vector<std::size_t> ways_;
    std::vector<std::size_t> uses_;
    std::size_t least_ = static_cast<std::size_t>(-1);
};

}  // namespace

Sum ModeFit::SharedTerms() const {
    Sum terms;
    for (const auto& choice : Choices) {
        if (choice && choice->Use->OrFuse >= 0)
            terms.insert(terms.end(), choice->Rows->begin(), choice->Rows->end());
    }
    Sort(terms);
    return terms;
}

void ModeFit::ShareTerms() {
    std::size_t limit = 0;
    for (const auto& choice : Choices) {
        if (choice && choice->Use->OrFuse >= 0) limit = choice->Use->Terms;
    }
    if (limit == 0) return;
    if (options_.Choose == Polarity::Best) TakeFewestTerms();
    const auto need = SharedTerms().size();
    if (need <= limit) return;
    std::string detail = "the outputs need " + std::to_string(need) + ", the limit of " + device_.Mnemonic +
                         " is " + std::to_string(limit);
    if (options_.Choose == Polarity::Natural) {
        TakeFewestTerms();
        if (SharedTerms().size() <= limit) detail += "; fits with kb";
    }
    Messages.push_back(model::MakeMessage(MessageCode("7215tc").Entry(), {}, detail));
}

void ModeFit::TakeFewestTerms() {
    std::vector<std::size_t> signals;
    std::vector<std::vector<Choice>> ways;
    Sum all;
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) {
        const auto& choice = Choices[signal];
        if (!choice || choice->Use->OrFuse < 0) continue;
        auto own = SumChoices(signal, *mode_.CellAt(Pins[signal]), *choice);
        std::erase_if(own, [](const Choice& one) { return one.Rows->size() > one.Use->Terms; });
        if (signals.size() >= mostVaried) own = {*choice};
        for (const auto& one : own) all.insert(all.end(), one.Rows->begin(), one.Rows->end());
        signals.push_back(signal);
        ways.push_back(std::move(own));
    }
    Sort(all);
    std::vector<std::vector<Numbers>> numbers;
    for (const auto& own : ways) {
        auto& output = numbers.emplace_back();
        for (const auto& one : own) output.push_back(NumbersOf(*one.Rows, all));
    }
    const auto best = Fewest(numbers, all.size()).Best;
    for (std::size_t i = 0; i < signals.size(); ++i) Choices[signals[i]] = ways[i][best[i]];
}

}  // namespace fit
