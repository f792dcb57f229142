#include "zrx/SolutionFile.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "base/Text.h"

namespace zrx {

namespace {

constexpr std::size_t figureWidth = 8;

long Number(std::string_view word) {
    long value = 0;
    std::from_chars(word.data(), word.data() + word.size(), value);
    return value;
}

using Names = std::map<std::string, std::size_t>;

// The item of each output.
Names ItemsByName(const Problem& problem) {
    Names items;
    for (std::size_t item = 0; item < problem.Items(); ++item)
        for (const std::size_t unit : problem.UnitsOf(item))
            items[problem.Design().Signals[unit].Name] = item;
    return items;
}

std::optional<Share> RestoreChip(const Problem& problem, const Names& items, const std::string& device,
                                 const std::vector<std::string>& outputs) {
    const auto& candidates = problem.Candidates();
    const auto candidate = std::find_if(candidates.begin(), candidates.end(), [&](const Candidate& one) {
        return base::EqualNoCase(one.Device.Mnemonic, device);
    });
    if (candidate == candidates.end()) return std::nullopt;
    Share chip{{}, static_cast<std::size_t>(candidate - candidates.begin())};
    for (const std::string& output : outputs) {
        const auto item = items.find(output);
        if (item == items.end()) return std::nullopt;
        chip.Items.push_back(item->second);
    }
    std::sort(chip.Items.begin(), chip.Items.end());
    chip.Items.erase(std::unique(chip.Items.begin(), chip.Items.end()), chip.Items.end());
    return chip;
}

}  // namespace

std::string WriteSolutions(const SolutionFile& file) {
    std::string text = "ZONEREX 1\r\nSPLIT " + std::to_string(file.SplitAt) + "\r\n";
    for (const KeptSolution& solution : file.Solutions) {
        text += "SOLUTION " + std::to_string(solution.Power) + " " + std::to_string(solution.Cost) + " " +
                solution.Devices + "\r\n";
        for (const auto& [device, outputs] : solution.Chips) {
            text += "CHIP " + device;
            for (const std::string& output : outputs) text += " " + output;
            text += "\r\n";
        }
    }
    return text;
}

SolutionFile ReadSolutions(std::string_view text) {
    SolutionFile file;
    const auto lines = base::LineViews(text);
    if (lines.empty() || base::TrimView(lines[0]) != "ZONEREX 1") return file;
    for (const std::string_view line : lines) {
        const auto words = base::Words(line);
        if (words.size() == 2 && words[0] == "SPLIT")
            file.SplitAt = static_cast<std::size_t>(std::clamp(Number(words[1]), 0L, 1000L));
        if (words.size() > 3 && words[0] == "SOLUTION") {
            KeptSolution& solution = file.Solutions.emplace_back();
            solution.Power = Number(words[1]);
            solution.Cost = Number(words[2]);
            for (std::size_t i = 3; i < words.size(); ++i)
                solution.Devices += (i > 3 ? " " : "") + std::string(words[i]);
        }
        if (words.size() > 2 && words[0] == "CHIP" && !file.Solutions.empty())
            file.Solutions.back().Chips.emplace_back(
                words[1], std::vector<std::string>(words.begin() + 2, words.end()));
    }
    return file;
}

KeptSolution Keep(const Problem& problem, const Solution& solution) {
    KeptSolution kept;
    kept.Power = solution.Sum[static_cast<std::size_t>(Figure::Power)];
    kept.Cost = solution.Sum[static_cast<std::size_t>(Figure::Cost)];
    kept.Devices = solution.Devices;
    for (const Share& chip : solution.Chips) {
        auto& [device, outputs] = kept.Chips.emplace_back();
        device = problem.Candidates()[chip.Candidate].Device.Mnemonic;
        for (const std::size_t item : chip.Items)
            for (const std::size_t unit : problem.UnitsOf(item))
                outputs.push_back(problem.Design().Signals[unit].Name);
    }
    return kept;
}

std::optional<Solution> Restore(Problem& problem, const KeptSolution& kept) {
    const auto items = ItemsByName(problem);
    Solution solution;
    std::vector<bool> placed(problem.Items());
    std::size_t outputs = 0;
    for (const auto& [device, names] : kept.Chips) {
        auto chip = RestoreChip(problem, items, device, names);
        if (!chip || !problem.Fits(chip->Items, chip->Candidate)) return std::nullopt;
        outputs += names.size();
        for (const std::size_t item : chip->Items) {
            if (placed[item]) return std::nullopt;
            placed[item] = true;
        }
        solution.Chips.push_back(std::move(*chip));
    }
    const bool whole = std::find(placed.begin(), placed.end(), false) == placed.end();
    if (!whole || outputs != items.size()) return std::nullopt;
    solution.Sum = TotalOf(problem, solution.Chips);
    solution.Devices = DevicesOf(problem, solution.Chips);
    return solution;
}

std::string ListLine(const KeptSolution& solution) {
    return base::PadRight(solution.Devices, listWidth) +
           base::PadLeft(std::to_string(solution.Power), figureWidth) +
           base::PadLeft(std::to_string(solution.Cost), figureWidth) + " ";
}

}  // namespace zrx
