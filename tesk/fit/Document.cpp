#include "fit/Document.h"

#include <algorithm>

#include "base/Text.h"
#include "model/Jedec.h"

namespace fit {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t labelWidth = 32;

std::vector<std::string> PinLabels(const Device& device, const Design& design, const Fit& fit) {
    std::vector<std::string> labels(static_cast<std::size_t>(device.Pins) + 1);
    if (device.GroundPin > 0) labels[static_cast<std::size_t>(device.GroundPin)] = "GND";
    if (device.SupplyPin > 0) labels[static_cast<std::size_t>(device.SupplyPin)] = "VCC";
    for (std::size_t i = 0; i < design.Signals.size(); ++i) {
        const auto pin = static_cast<std::size_t>(fit.Placements[i].Pin);
        const auto& signal = design.Signals[i];
        if (pin != 0 && pin < labels.size())
            labels[pin] = (signal.ActiveLow && !signal.Node ? "!" : "") + signal.Name;
    }
    return labels;
}

class Plot {
  public:
    Plot(int pins, const Mode& mode, const std::vector<bool>& fuses)
        : pins_(pins), mode_(mode), fuses_(fuses), listed_(fuses.size(), false) {}

    std::string Text() {
        if (mode_.ResetRow >= 0) AddRows("Asynchronous reset", static_cast<std::size_t>(mode_.ResetRow), 1);
        if (mode_.SharedTerms > 0) AddRows("Shared product terms and their outputs", 0, mode_.SharedTerms);
        for (const auto& cell : mode_.Cells) AddCell(cell);
        if (mode_.PresetRow >= 0) AddRows("Synchronous preset", static_cast<std::size_t>(mode_.PresetRow), 1);
        AddOthers();
        return std::move(text_);
    }

  private:
    void Line(const std::string& line) { (text_ += line) += lineEnd; }

    void AddCell(const Cell& cell) {
        std::size_t first = fuses_.size();
        std::size_t end = 0;
        for (const auto& use : cell.Uses) {
            if (use.Kind == UseKind::Input) continue;
            if (use.Enable == EnableKind::Row) {
                first = std::min(first, use.EnableRow);
                end = std::max(end, use.EnableRow + 1);
            }
            if (use.OrFuse >= 0) continue;
            first = std::min({first, use.FirstRow, use.XorTerms > 0 ? use.XorRow : first});
            end = std::max(end, use.EndRow());
        }
        if (first < end && listed_[mode_.FirstFuse(first)]) return;
        std::string title = Title(cell);
        if (cell.Polarity == PolarityKind::Fuse)
            title +=
                ", polarity fuse " + model::FuseNumber(cell.PolarityFuse) + " " + Symbol(cell.PolarityFuse);
        if (first < end) AddRows(title, first, end - first);
    }

    // "Pin 12", with the other macrocells of the same sum.
    std::string Title(const Cell& cell) const {
        std::string title = (cell.Pin > pins_ ? "Node " : "Pin ") + std::to_string(cell.Pin);
        for (const auto& other : mode_.Cells) {
            const bool shares = &other != &cell && !cell.Uses.empty() && !other.Uses.empty() &&
                                cell.Uses.back().SharesSum(other.Uses.back());
            if (shares) title += " and " + std::to_string(other.Pin);
        }
        return title;
    }

    char Symbol(std::size_t fuse) const { return fuses_[fuse] ? '-' : 'x'; }

    void AddRows(const std::string& title, std::size_t first, std::size_t count) {
        Line(title);
        for (std::size_t row = first; row < first + count; ++row) {
            const auto start = mode_.FirstFuse(row);
            std::string line = model::FuseNumber(start) + " ";
            for (std::size_t i = 0; i < mode_.RowFuses(row); ++i) {
                if (i % 4 == 0) line += ' ';
                line += Symbol(start + i);
                listed_[start + i] = true;
            }
            Line(line);
        }
        Line("");
    }

    void AddOthers() {
        std::string line;
        for (std::size_t fuse = 0; fuse < fuses_.size(); ++fuse) {
            if (listed_[fuse]) continue;
            if (line.empty()) {
                if (!others_) Line("Other fuses");
                others_ = true;
                line = model::FuseNumber(fuse) + "  ";
            }
            line += fuses_[fuse] ? '1' : '0';
            const bool last = fuse + 1 == fuses_.size() || listed_[fuse + 1] || (fuse + 1) % 32 == 0;
            if (!last) continue;
            Line(line);
            line.clear();
        }
    }

    int pins_;
    const Mode& mode_;
    const std::vector<bool>& fuses_;
    std::vector<bool> listed_;
    bool others_ = false;
    std::string text_;
};

}  // namespace

std::string ChipDiagram(const Device& device, const Design& design, const Fit& fit) {
    if (device.Pins == 0 || fit.Placements.size() != design.Signals.size()) return {};
    const auto labels = PinLabels(device, design, fit);
    const auto half = static_cast<std::size_t>(device.Pins) / 2;
    const std::string indent(labelWidth + 2, ' ');
    std::string text = indent + " _____    _____ " + std::string(lineEnd) + indent + "|     \\__/     |";
    text += lineEnd;
    for (std::size_t i = 1; i <= half; ++i) {
        const auto right = 2 * half + 1 - i;
        const auto left = base::PadLeft(labels[i].substr(0, labelWidth), labelWidth);
        text += left + " -| " + base::PadRight(std::to_string(i), 2) + "        " +
                base::PadLeft(std::to_string(right), 2) + " |- " + labels[right];
        while (text.back() == ' ') text.pop_back();
        text += lineEnd;
    }
    return text + indent + "|______________|" + std::string(lineEnd);
}

std::string FusePlot(const Device& device, const Fit& fit) {
    const auto mode = std::find_if(device.Modes.begin(), device.Modes.end(),
                                   [&](const Mode& m) { return m.Name == fit.Mode; });
    if (fit.Fuses.empty() || mode == device.Modes.end()) return {};
    return "Fuses: x connected, - not connected" + std::string(lineEnd) + std::string(lineEnd) +
           Plot(device.Pins, *mode, fit.Fuses).Text();
}

}  // namespace fit
