#include "cpld/Fitter.h"

#include <algorithm>
#include <utility>

#include "cpld/Assemble.h"

namespace cpld {
namespace {

class Attempt {
  public:
    Attempt(const Device& device, const Package& package, const fit::Design& design,
            const FitOptions& options)
        : device_(device), package_(package), needs_(design), options_(options) {}

    Fit Run() {
        fit_.Names.Package = package_.Suffix;
        fit_.Names.Pads.resize(device_.Pads.size());
        fit_.Names.Cells.resize(device_.CellCount());
        auto wants = WantsOf(needs_, ClockInput());
        fit_.Messages = wants.Messages;
        fit_.Implied = wants.Implied;
        for (const auto signal : options_.OpenDrain) wants.Names[signal].Plain = false;
        for (const auto& function : wants.Implied)
            wants.Names[function.True->front().front().Signal].Read = true;
        for (std::size_t i = 0; i < needs_.Count(); ++i) FixPlace(wants, i);
        if (!fit_.Ok()) return std::move(fit_);
        CountPins(wants);
        const auto globals = ChooseGlobals(device_, package_, wants);
        Place(wants, globals);
        return std::move(fit_);
    }

  private:
    void Tell(MessageCode code, const std::string& detail, const std::string& subject = {}) {
        fit_.Messages.push_back(model::MakeMessage(code.Entry(), {}, detail, subject));
    }

    std::string Whole() const { return device_.Name + package_.Suffix; }

    std::optional<std::size_t> ClockInput() const {
        for (std::size_t i = 0; i < needs_.Count(); ++i) {
            const auto& signal = needs_.At(i);
            const bool input = !signal.Node && !needs_.Driven(i) && signal.Pin != 0;
            if (input && signal.Pin == package_.Pins[device_.Special.Clocks[0]]) return i;
        }
        return std::nullopt;
    }

    void FixPlace(Wants& wants, std::size_t index) {
        const auto& signal = needs_.At(index);
        auto& name = wants.Names[index];
        if (signal.Pin == 0) return;
        const auto text = signal.Name + ", " + (name.Drives || !name.Driven ? "pin " : "macrocell ") +
                          std::to_string(signal.Pin) + " of " + Whole();
        int place = package_.PadAt(signal.Pin);
        if (signal.Node) place = signal.Pin > static_cast<int>(device_.CellCount()) ? -1 : signal.Pin - 1;
        if (place < 0) return Tell("7803tc", text + " is none for signals", signal.Name);
        const auto at = static_cast<std::size_t>(place);
        if (!signal.Node && device_.IsJtagPad(at) && !options_.JtagPins)
            return Tell("7803tc", text + " is one of the JTAG pins", signal.Name);
        if (name.Drives && at >= device_.CellCount())
            return Tell("7803tc", text + " is an input", signal.Name);
        for (std::size_t other = 0; other < index; ++other) {
            const auto& earlier = wants.Names[other];
            const bool pads = !signal.Node && !needs_.At(other).Node;
            if (earlier.Place == at && (pads || (earlier.Driven && name.Driven)))
                return Tell("7804tc", text + " carries " + earlier.Text, signal.Name);
        }
        if (name.Driven || !signal.Node) name.Place = at;
    }

    void CountPins(const Wants& wants) {
        std::size_t needed = 0, available = 0;
        for (const auto& name : wants.Names)
            needed += name.Drives || (!name.Driven && (name.Read || name.Place)) ? 1 : 0;
        for (std::size_t pad = 0; pad < device_.Pads.size(); ++pad)
            available += package_.Pins[pad] != 0 && (options_.JtagPins || !device_.IsJtagPad(pad)) ? 1 : 0;
        if (needed > available)
            Tell("7802tc",
                 std::to_string(needed) + " names, " + Whole() + " has " + std::to_string(available));
    }

    // By cascades alone, then with the means that make large equations smaller.
    void Place(const Wants& wants, const Globals& globals) {
        constexpr Means ways[] = {{0, BlockCells}, {3, BlockCells}, {2, BlockCells}, {0, 1}, {3, 1}};
        std::size_t steps = options_.Steps / 2;
        std::vector<std::size_t> tried;
        auto told = fit_.Messages;
        FormCache forms;
        for (const auto& means : ways) {
            const auto plans = MakePlans(wants, globals, means, forms);
            std::vector<std::size_t> sizes{plans.Foldbacks.size()};
            for (const auto& plan : plans.All) sizes.push_back(plan.Terms.size());
            if (std::exchange(tried, sizes) == sizes) continue;
            const bool first = &means == &ways[0];
            auto messages = fit_.Messages;
            if (TryWith(plans, globals, steps)) return;
            if (first) told = fit_.Messages;
            if (plans.Unplanned > 0) break;
            fit_.Messages = std::move(messages);
            steps = options_.Steps / 8;
        }
        // How far it is without the means for emergencies says the most.
        fit_.Messages = std::move(told);
    }

    bool TryWith(const Plans& plans, const Globals& globals, std::size_t steps) {
        auto cells = plans.Unplanned;
        for (const auto& plan : plans.All) cells += plan.Cells();
        if (cells > device_.CellCount()) {
            Tell("7801tc", std::to_string(cells) + " needed, " + device_.Name + " has " +
                               std::to_string(device_.CellCount()));
            return false;
        }
        if (!fit_.Ok()) return false;
        const Problem problem(plans);
        const auto found = Search(device_, package_, problem, options_.JtagPins, steps);
        fit_.Steps += found.Steps;
        if (!found.Found) {
            Explain(plans, found.Missing);
            return false;
        }
        Assemble(device_, plans, globals, problem, *found.Found, fit_);
        NamePlaces(plans, problem, *found.Found);
        return true;
    }

    void Explain(const Plans& plans, const Shortage& missing) {
        if (missing.Unit) {
            const bool unit = *missing.Unit < plans.All.size();
            const auto& plan = plans.All[unit ? *missing.Unit : 0];
            const auto name = unit ? plans.Names[plan.Owner].Text : std::string();
            Tell("7800tc",
                 unit ? name + " needs " + std::to_string(plan.Cells()) + " macrocells in a row"
                      : std::string("no pin is left for an input"),
                 name);
            return;
        }
        for (std::size_t block = 0; block < missing.Unswitched.size(); ++block) {
            const auto in = std::string(", block ") + device_.Blocks[block].Name + " of " + Whole();
            if (missing.Unswitched[block] > 0)
                Tell("7810tc", std::to_string(missing.Unswitched[block]) + " too few" + in);
            if (missing.Foldbacks[block] > 0)
                Tell("7800tc", std::to_string(missing.Foldbacks[block]) + " foldbacks too few" + in);
        }
    }

    void NamePlaces(const Plans& plans, const Problem& problem, const Layout& layout) {
        fit_.Places.assign(needs_.Count(), {});
        for (std::size_t i = 0; i < plans.All.size(); ++i) {
            const auto& plan = plans.All[i];
            const auto at = layout.Cells[i];
            if (plans.Names[plan.Owner].Drives) fit_.Names.Pads[at] = plans.Names[plan.Owner].Text;
            if (plan.Owner >= needs_.Count()) continue;
            auto& place = fit_.Places[plan.Owner];
            place.Cell = at;
            if (plans.Names[plan.Owner].Drives) place.Pin = package_.Pins[at];
            const auto state = plans.Names[plan.Owner].State;
            const auto& holder = *std::find_if(plans.All.begin(), plans.All.end(),
                                               [&](const Plan& one) { return one.Owner == state; });
            if (holder.Register != RegisterKind::None) place.PowerUp = holder.StartsAsserted() ? '1' : '0';
        }
        for (std::size_t i = 0; i < problem.Inputs.size(); ++i) {
            const auto name = problem.Inputs[i].Name;
            fit_.Places[name].Pin = package_.Pins[layout.Pads[i]];
            fit_.Names.Pads[layout.Pads[i]] = plans.Names[name].Text;
        }
    }

    const Device& device_;
    const Package& package_;
    fit::Needs needs_;
    const FitOptions& options_;
    Fit fit_;
};

// Ends what does not fit with what would.
void AddHints(const Device& device, const Package& package, const fit::Design& design, FitOptions options,
              Fit& fit) {
    options.Hints = false;
    auto free = design;
    for (auto& signal : free.Signals) signal.Pin = 0;
    const bool fixed = std::any_of(design.Signals.begin(), design.Signals.end(),
                                   [](const fit::Signal& signal) { return signal.Pin != 0; });
    std::string hint;
    if (fixed && Attempt(device, package, free, options).Run().Ok()) {
        hint = "; a free choice of pins would fit";
    } else if (options.Larger != nullptr) {
        const auto* same = options.Larger->FindPackage(package.Suffix);
        const auto& larger = same == nullptr ? options.Larger->Packages.front() : *same;
        if (Attempt(*options.Larger, larger, free, options).Run().Ok())
            hint = "; would fit " + options.Larger->Name + larger.Suffix + " with a free choice of pins";
    }
    for (auto& message : fit.Messages)
        if (message.Level == Severity::Error) message.Text += hint;
}

}  // namespace

Fit FitDesign(const Device& device, const std::string& package, const fit::Design& design,
              const FitOptions& options) {
    Fit fit;
    const auto* in = device.FindPackage(package);
    if (in == nullptr) {
        std::string all;
        for (const auto& one : device.Packages) all += (all.empty() ? "" : ", ") + one.Suffix;
        fit.Messages.push_back(model::MakeMessage(MessageCode("7811tc").Entry(), {},
                                                  package + ", " + device.Name + " is made in " + all));
        return fit;
    }
    if (!design.Fuses.empty())
        fit.Messages.push_back(model::MakeMessage(MessageCode("7812tc").Entry(), {}, device.Name));
    if (!fit.Ok()) return fit;
    fit = Attempt(device, *in, design, options).Run();
    if (!fit.Ok() && options.Hints) AddHints(device, *in, design, options, fit);
    return fit;
}

}  // namespace cpld
