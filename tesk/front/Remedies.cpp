#include "front/Remedies.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "front/Build.h"
#include "front/Effort.h"
#include "front/Fitting.h"

namespace front {

namespace {

constexpr std::string_view kTooManyTerms = fit::MessageCode("7201tc").Entry().Number;
constexpr std::size_t kMostSums = 32;
constexpr double kMostWork = 4'000'000;  // microseconds by the estimate, far less by the clock

struct Remedy {
    int Level;  // -1: as it is
    bool Best;  // option "kb"
};
// The one that costs least effort first.
constexpr std::array kRemedies{Remedy{4, false}, Remedy{2, false}, Remedy{-1, true}, Remedy{4, true}};

// The levels by what they can do: the exact one is the best.
int Strength(int level) {
    constexpr std::array order{0, 1, 3, 4, 2};
    return static_cast<int>(std::find(order.begin(), order.end(), level) - order.begin());
}

std::size_t MostTerms(const fit::Device& device) {
    std::size_t most = 0;
    for (const fit::Mode& mode : device.Modes)
        for (const fit::Cell& cell : mode.Cells)
            for (const fit::CellUse& use : cell.Uses) most = std::max(most, use.Terms);
    return most;
}

class Trial {
  public:
    Trial(const Design& design, const Options& options, const fit::Device& device)
        : design_(design), options_(options), device_(device), exactWorth_(MostTerms(device) * 5 / 4) {}

    // False if it would take too long.
    bool Take(const std::vector<Message>& messages) {
        double work = 0;
        for (std::size_t i = 0; i < design_.Equations.size(); ++i) {
            const Equation& equation = design_.Equations[i];
            const std::string& name = design_.Of(equation).Name;
            const bool told = std::any_of(messages.begin(), messages.end(), [&](const Message& message) {
                return message.Number == kTooManyTerms && message.Subject == name;
            });
            const bool data = equation.To == Extension::None || IsRegisterInput(equation.To);
            if (!told || !data) continue;
            open_.push_back(i);
            work += EstimateOf(design_.Written[i]);
        }
        return open_.size() <= kMostSums && work <= kMostWork;
    }

    void Try(const Remedy& remedy) {
        const std::vector<std::size_t> places = PlacesFor(remedy);
        if (places.empty()) return;
        Options options = options_;
        options.Best = options.Best || remedy.Best;
        Design trial = design_;
        for (const std::size_t place : places)
            if (remedy.Level >= 0) trial.Equations[place].Level = remedy.Level;
        ReduceAgain(trial, places, options);
        std::vector<std::size_t> signals;
        const fit::Fit fit = fit::FitDesign(device_, ToFitter(trial, signals), ToFitter(options));
        for (const std::size_t place : places) {
            const Equation& reduced = trial.Equations[place];
            least_[place] =
                reduced.HasOff ? std::min(reduced.On.Size(), reduced.Off.Size()) : reduced.On.Size();
            if (!HasFault(fit, design_.Of(reduced).Name)) Answer(place, remedy);
        }
    }

    // By the name that a message is about; no entry if nothing helps.
    std::map<std::string, std::string> Answers;

  private:
    // Those for which the remedy is more than what was done.
    std::vector<std::size_t> PlacesFor(const Remedy& remedy) const {
        std::vector<std::size_t> places;
        if (remedy.Best && (options_.Best || options_.Demorgan)) return places;
        for (const std::size_t place : open_) {
            const int own = design_.Equations[place].Level;
            const int gain = remedy.Level < 0 ? 0 : Strength(remedy.Level) - Strength(own);
            const auto least = least_.find(place);
            const bool hopeless = remedy.Level == 2 && least != least_.end() && least->second > exactWorth_;
            if (!hopeless && (gain > 0 || (gain == 0 && (remedy.Best || options_.Share))))
                places.push_back(place);
        }
        return places;
    }

    static bool HasFault(const fit::Fit& fit, const std::string& name) {
        return std::any_of(fit.Messages.begin(), fit.Messages.end(), [&](const Message& message) {
            return message.Level == Severity::Error && message.Subject == name;
        });
    }

    void Answer(std::size_t place, const Remedy& remedy) {
        const Variable& variable = design_.Of(design_.Equations[place]);
        std::string text;
        if (remedy.Level >= 0)
            text = (variable.Minimization < 0 ? "m" : "MIN " + variable.Name + " = ") +
                   std::to_string(remedy.Level);
        if (remedy.Best) text += text.empty() ? "kb" : " and kb";
        Answers[variable.Name] = text + (options_.Share ? " without ks" : "");
        std::erase(open_, place);
    }

    const Design& design_;
    const Options& options_;
    const fit::Device& device_;
    std::size_t exactWorth_;  // the exact level does not do so much better than m4
    std::vector<std::size_t> open_;
    std::map<std::size_t, std::size_t> least_;  // terms that the last trial came to
};

}  // namespace

std::set<std::string> AddRemedies(const Design& design, const Options& options, const fit::Device& device,
                                  std::vector<Message>& messages) {
    std::set<std::string> helped;
    Trial trial(design, options, device);
    const bool tried = trial.Take(messages);
    for (const Remedy& remedy : kRemedies)
        if (tried) trial.Try(remedy);
    for (Message& message : messages) {
        if (message.Number != kTooManyTerms) continue;
        const auto answer = trial.Answers.find(message.Subject);
        if (!tried)
            message.Text += "; too large to try other reductions";
        else if (answer == trial.Answers.end())
            message.Text += "; fits with no level of reduction";
        else
            message.Text += "; fits with " + answer->second, helped.insert(message.Subject);
    }
    return helped;
}

}  // namespace front
