#include "zrx/PldFile.h"

#include <algorithm>

#include "base/Text.h"

namespace zrx {

namespace {

constexpr std::size_t deviceWord = 8;  // in model::headerWords
constexpr std::string_view lineEnd = "\r\n";

// A text that ends where the header's statement does, and opens no comment.
std::string HeaderText(std::string_view text) {
    std::string clean;
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= ' ' && c != ';' && c != '*') clean += c;
    return base::Trim(clean);
}

std::string SumText(const fit::Design& design, const fit::Sum& sum) {
    if (sum.empty()) return "    'b'0";
    std::string text;
    for (const fit::Term& term : sum) {
        text += text.empty() ? "    " : std::string(lineEnd) + "  # ";
        if (term.empty()) text += "'b'1";
        for (std::size_t i = 0; i < term.size(); ++i) {
            const fit::Literal& literal = term[i];
            text += (i > 0 ? " & " : "") + std::string(literal.Negated ? "!" : "") +
                    design.Signals[literal.Signal].Name + (literal.Pin ? ".IO" : "");
        }
    }
    return text;
}

std::string Numbers(const std::vector<std::size_t>& chips) {
    std::string text;
    for (const std::size_t chip : chips) text += (text.empty() ? "" : ", ") + std::to_string(chip + 1);
    return text;
}

}  // namespace

Partition::Partition(const Problem& problem, const Solution& solution, const Document& document)
    : problem_(problem), solution_(solution), document_(document) {
    nets_.assign(problem.Design().Signals.size(), {solution.Chips.size(), {}});
    for (std::size_t chip = 0; chip < solution.Chips.size(); ++chip) {
        const Share& share = solution.Chips[chip];
        chips_.push_back(problem.Place(share.Items, share.Candidate));
        for (const std::size_t item : share.Items)
            for (const std::size_t unit : problem.UnitsOf(item)) nets_[unit].From = chip;
    }
    for (std::size_t chip = 0; chip < chips_.size(); ++chip)
        for (const std::size_t signal : chips_[chip].Whole)
            if (nets_[signal].From != chip) nets_[signal].To.push_back(chip);
}

std::string Partition::Name(std::size_t chip) const {
    return HeaderText(document_.Name()) + "_" + std::to_string(chip + 1);
}

const std::string& Partition::Device(std::size_t chip) const {
    return problem_.Candidates()[solution_.Chips[chip].Candidate].Device.Mnemonic;
}

int Partition::EnablePin(std::size_t chip) const {
    const fit::Device& device = problem_.Candidates()[solution_.Chips[chip].Candidate].Device;
    const auto mode = std::find_if(device.Modes.begin(), device.Modes.end(),
                                   [&](const fit::Mode& one) { return one.Name == chips_[chip].Fit.Mode; });
    if (mode == device.Modes.end() || mode->EnablePin == 0) return 0;
    const auto& placed = chips_[chip].Fit.Placements;
    const bool isUsed = std::any_of(placed.begin(), placed.end(),
                                    [&](const fit::Placement& one) { return one.Pin == mode->EnablePin; });
    return isUsed ? 0 : mode->EnablePin;
}

std::string Partition::Connection(std::size_t chip, std::size_t signal) const {
    const Net& net = nets_[signal];
    if (net.From == chips_.size()) return {};
    if (net.From != chip) return "from chip " + std::to_string(net.From + 1);
    return net.To.empty() ? std::string() : "to chip " + Numbers(net.To);
}

std::string Partition::Declarations(std::size_t chip) const {
    const Problem::Chip& placed = chips_[chip];
    std::string text;
    for (std::size_t i = 0; i < placed.Whole.size(); ++i) {
        const fit::Signal& signal = placed.Design.Signals[i];
        const std::string net = Connection(chip, placed.Whole[i]);
        text += (signal.Node ? "PINNODE " : "PIN ") + std::to_string(placed.Fit.Placements[i].Pin) + " = " +
                (signal.ActiveLow && !signal.Node ? "!" : "") + signal.Name + " ;" +
                (net.empty() ? "" : "  /* " + net + " */") + std::string(lineEnd);
    }
    return text;
}

std::string Partition::Equations(std::size_t chip) const {
    const fit::Design& design = chips_[chip].Design;
    std::string text;
    for (const fit::Function& function : design.Functions) {
        const std::string input(model::InputWords.Of(function.To));
        text += design.Signals[function.Signal].Name + (function.To == model::Input::Out ? "" : "." + input) +
                " =" + std::string(lineEnd) + SumText(design, *function.True) + " ;" + std::string(lineEnd) +
                std::string(lineEnd);
    }
    return text;
}

std::string Partition::PldText(std::size_t chip) const {
    std::string text;
    for (std::size_t i = 0; i < model::headerWords.size(); ++i) {
        const std::string value = i == 0            ? Name(chip)
                                  : i == deviceWord ? Device(chip)
                                                    : HeaderText(document_.Header[i]);
        if (!value.empty())
            text += base::PadRight(std::string(model::headerWords[i].Name), 10) + value + " ;" +
                    std::string(lineEnd);
    }
    text += std::string(lineEnd) + writtenHere + std::to_string(chip + 1) + " of " + std::to_string(Chips()) +
            " of " + HeaderText(document_.Name()) + " */" + std::string(lineEnd);
    if (const int pin = EnablePin(chip); pin != 0)
        text +=
            "/* Pin " + std::to_string(pin) + " enables the outputs: wire it low. */" + std::string(lineEnd);
    return text + std::string(lineEnd) + Declarations(chip) + std::string(lineEnd) + Equations(chip);
}

std::string Partition::ChipReport(std::size_t chip) const {
    const Problem::Chip& placed = chips_[chip];
    std::string text = "Chip " + std::to_string(chip + 1) + ": " + Device(chip) + ", " + Name(chip) +
                       "\r\n\r\n" + "  Pin  Name                             Terms   Net\r\n";
    for (std::size_t i = 0; i < placed.Whole.size(); ++i) {
        const fit::Placement& place = placed.Fit.Placements[i];
        const std::string terms =
            place.Available == 0 ? "" : std::to_string(place.Used) + "/" + std::to_string(place.Available);
        text += "  " + base::PadRight(std::to_string(place.Pin), 5) +
                base::PadRight(placed.Design.Signals[i].Name, 33) + base::PadRight(terms, 8) +
                Connection(chip, placed.Whole[i]);
        while (text.back() == ' ') text.pop_back();
        text += lineEnd;
    }
    if (const int pin = EnablePin(chip); pin != 0) text += "  Wire pin " + std::to_string(pin) + " low.\r\n";
    return text + "\r\n";
}

std::string Partition::Report() const {
    const auto figure = [&](Figure which) {
        return std::to_string(solution_.Sum[static_cast<std::size_t>(which)]);
    };
    const auto between = std::count_if(nets_.begin(), nets_.end(), [&](const Net& net) {
        return net.From < chips_.size() && !net.To.empty();
    });
    std::string text =
        "Partition of " + HeaderText(document_.Name()) + "\r\n\r\nDevices: " + solution_.Devices +
        "\r\nCost " + figure(Figure::Cost) + ", power " + figure(Figure::Power) +
        " (figures of zrxlib.db)\r\nNets between chips: " + std::to_string(between) + "\r\n\r\n";
    for (std::size_t chip = 0; chip < chips_.size(); ++chip) text += ChipReport(chip);
    return text;
}

}  // namespace zrx
