#include <algorithm>

#include "base/Text.h"
#include "zrx/Input.h"

namespace zrx {

namespace {

constexpr std::size_t deviceFileBytes = 1u << 20;

// The product terms of the largest macrocell of all candidates.
std::size_t MostTerms(const std::vector<Candidate>& candidates) {
    std::size_t most = 0;
    for (const Candidate& candidate : candidates)
        for (const fit::Mode& mode : candidate.Device.Modes)
            for (const fit::Cell& cell : mode.Cells)
                for (const fit::CellUse& use : cell.Uses) most = std::max(most, use.Terms);
    return most;
}

std::string WhyNot(const Problem& problem, std::size_t item) {
    const fit::Fit fit = problem.Place({item}, 0).Fit;
    const std::string device = problem.Candidates()[0].Device.Mnemonic;
    for (const auto& message : fit.Messages)
        if (message.Level == model::Severity::Error) return device + ": " + message.Text;
    return device + " would change what it does";
}

// Tells of outputs that no candidate takes even alone. True if there is none.
bool AllFit(const Call& call, Problem& problem) {
    bool all = true;
    for (std::size_t item = 0; item < problem.Items() && call.Proceed(); ++item) {
        bool fits = false;
        for (std::size_t i = 0; i < problem.Candidates().size() && !fits; ++i) fits = problem.Fits({item}, i);
        if (!fits) call.Say(problem.NameOf(item) + " fits no candidate (" + WhyNot(problem, item) + ").");
        all = all && fits;
    }
    return all;
}

// The solutions of the last search that are still ones.
Found FromHistory(const Call& call, Problem& problem, std::size_t splitAt) {
    Found found;
    const SolutionFile last = LoadSolutions(call);
    for (const KeptSolution& kept : last.Solutions) {
        if (last.SplitAt != splitAt || !call.Proceed()) break;
        auto solution = Restore(problem, kept);
        if (solution && solution->Chips.size() <= call.Options.MostChips)
            found.Solutions.push_back(std::move(*solution));
    }
    call.Say(found.Solutions.empty() ? "No solution of the last search holds; searching anew."
                                     : "These are solutions of the last search.");
    return found;
}

void Tell(const Call& call, const Found& found) {
    if (found.Why == Ending::Time) call.Say("The search ended by its time limit.");
    if (found.Why == Ending::Solutions)
        call.Say("The search ended by its limit of " + std::to_string(call.Options.MostSolutions) +
                 " solutions.");
    if (found.Solutions.empty() && found.FewestChips > 0)
        call.Say("The best partition takes " + std::to_string(found.FewestChips) +
                 " chips, the options allow " + std::to_string(call.Options.MostChips) + ".");
    call.Say("Solutions found: " + std::to_string(found.Solutions.size()));
}

void Store(const Call& call, const std::string& extension, const std::string& text) {
    const std::string failure = call.Disk.Write(call.Design + extension, text);
    if (!failure.empty()) call.Say(call.Design + extension + " was not written: " + failure);
}

std::string TextList(const SolutionFile& file) {
    std::string text = base::PadRight("Devices", listWidth) + "   Power    Cost\r\n";
    for (const KeptSolution& solution : file.Solutions)
        text += std::string(base::TrimView(ListLine(solution))) + "\r\n";
    return text;
}

}  // namespace

std::size_t FindSolutions(const Call& call) {
    const auto document = LoadDocument(call);
    const auto database = document ? LoadDatabase(call) : std::nullopt;
    if (!database) return 0;
    const auto names = call.Disk.Read(call.DeviceFile, deviceFileBytes);
    auto candidates = CandidatesOf(call, *database, names.value_or(""));
    if (candidates.empty()) {
        call.Say("There is no candidate device in " + call.DeviceFile +
                 ". Choose devices in the partitioner's parameters.");
        return 0;
    }
    const std::size_t splitAt = call.Options.Split ? MostTerms(candidates) : 0;
    const auto problem = MakeProblem(call, *document, *database, std::move(candidates), splitAt);
    if (problem == nullptr) return 0;
    call.Say(document->Name() + ": " + std::to_string(problem->Items()) + " outputs, " +
             std::to_string(document->Terms()) + " product terms");
    if (!AllFit(call, *problem)) return 0;
    Found found = call.Options.History ? FromHistory(call, *problem, splitAt) : Found();
    if (found.Solutions.empty()) found = Search(*problem, call.Options, call.Proceed);
    Tell(call, found);
    SolutionFile file{splitAt, {}};
    for (const Solution& solution : found.Solutions) file.Solutions.push_back(Keep(*problem, solution));
    Store(call, solutionsExtension, WriteSolutions(file));
    if (call.Options.List) Store(call, ".SOL", TextList(file));
    return found.Solutions.size();
}

void ListSolutions(const Call& call) {
    for (const KeptSolution& solution : LoadSolutions(call).Solutions) call.List(ListLine(solution));
}

}  // namespace zrx
