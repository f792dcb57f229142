#include "devpage/DevicePage.h"

#include <algorithm>
#include <map>
#include <vector>

namespace devpage {
namespace {

constexpr const char* preface =
    "# The devices\n\n"
    "Made of `Fullset.dl` and `Cplds.dl` in `data/devices` by `tools/devpage`; [TeskRef.md](help/TeskRef.md) "
    "tells how\n"
    "designs use them. A device is tried in its modes in their order. Of each pin the table tells what it "
    "can be:\n\n"
    "- *terms*: product terms of its sum, without the one of an output enable; `2 $ 2`: of two sums whose "
    "exclusive\n"
    "  or it takes. Where all outputs share theirs equal terms of several outputs count once.\n"
    "- *polarity*: `fuse`, either; `high`, the sum; `low`, its complement. The compiler complements the "
    "equation\n"
    "  where that is needed.\n"
    "- *enable*: of `.OE`, a product term of its own, a pin for all registers or all outputs, both together, "
    "or\n"
    "  none: the output is always on.\n"
    "- *feedback*: what an equation that names the output reads; where there is none the output can't be "
    "read.\n\n"
    "Registers are D registers. `.T`, `.J`, `.K`, `.S`, `.R` and `.CE` are built from them.\n";

constexpr const char* inputRow = "| input | | | | pin |";

std::string Plural(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// "1-3, 5"
std::string PinList(std::vector<int> pins) {
    std::sort(pins.begin(), pins.end());
    std::string text;
    for (std::size_t i = 0; i < pins.size();) {
        std::size_t last = i;
        while (last + 1 < pins.size() && pins[last + 1] == pins[last] + 1) ++last;
        text += (text.empty() ? "" : ", ") + std::to_string(pins[i]);
        if (last > i) text += (last > i + 1 ? "-" : ", ") + std::to_string(pins[last]);
        i = last + 1;
    }
    return text;
}

std::string EnableText(const fit::CellUse& use, const fit::Mode& mode) {
    const auto pin = "pin " + std::to_string(mode.EnablePin) + " low";
    if (use.Enable == fit::EnableKind::Row) return use.EnableAndPin ? "term and " + pin : "term";
    return use.Enable == fit::EnableKind::Pin ? pin : "none";
}

std::string FeedbackText(fit::FeedbackKind feedback) {
    if (feedback == fit::FeedbackKind::None) return "none";
    return feedback == fit::FeedbackKind::Pin ? "pin" : "register";
}

std::string TermsText(const fit::Cell& cell, const fit::CellUse& use, const fit::Mode& mode) {
    std::string text = std::to_string(use.Terms);
    if (use.XorTerms > 0) text += " $ " + std::to_string(use.XorTerms);
    for (const auto& other : mode.Cells) {
        const bool shares = &other != &cell && std::any_of(other.Uses.begin(), other.Uses.end(),
                                                           [&](const auto& u) { return u.SharesSum(use); });
        if (shares) text += ", the sum of pin " + std::to_string(other.Pin);
    }
    return text;
}

std::string RowOf(const fit::Cell& cell, const fit::CellUse& use, const fit::Mode& mode) {
    if (use.Kind == fit::UseKind::Input) return inputRow;
    const std::string polarity = cell.Polarity == fit::PolarityKind::Fuse  ? "fuse"
                                 : cell.Polarity == fit::PolarityKind::Low ? "low"
                                                                           : "high";
    return std::string("| ") + (use.Kind == fit::UseKind::Register ? "register" : "output") + " | " +
           TermsText(cell, use, mode) + " | " + polarity + " | " + EnableText(use, mode) + " | " +
           FeedbackText(use.Feedback) + " |";
}

// Pins of the same properties share a row.
std::string TableOf(const fit::Mode& mode) {
    std::vector<std::string> order;
    std::map<std::string, std::vector<int>> pins;
    const auto add = [&](const std::string& row, int pin) {
        if (!pins.contains(row)) order.push_back(row);
        pins[row].push_back(pin);
    };
    for (const auto& input : mode.Inputs) add(inputRow, input.first);
    for (const auto& cell : mode.Cells) {
        for (const auto& use : cell.Uses) {
            const bool unread = use.Kind == fit::UseKind::Input && cell.Column < 0;
            if (!unread) add(RowOf(cell, use, mode), cell.Pin);
        }
    }
    std::string text =
        "| pins | use | terms | polarity | enable | feedback |\n| --- | --- | --- | --- | --- | --- |\n";
    for (const auto& row : order) text += "| " + PinList(pins[row]) + " " + row + "\n";
    return text;
}

std::string ModeText(const fit::Mode& mode) {
    std::string text = "Mode " + mode.Name + ": " + Plural(mode.Cells.size(), "macrocell");
    text += mode.ClockPin == 0 ? ", no clock" : ", clock at pin " + std::to_string(mode.ClockPin);
    if (mode.AnyUse([](const fit::CellUse& use) { return use.HasOwnRows(); }))
        text +=
            ", one term each of clock, asynchronous reset and preset for each register (`.CK`, `.AR`, `.AP`)";
    if (mode.SharedTerms > 0)
        text += ", " + std::to_string(mode.SharedTerms) + " product terms for all outputs";
    const bool outputs = mode.PinEnables(fit::UseKind::Output);
    if (mode.EnablePin != 0)
        text += std::string(", enable of ") + (outputs ? "all outputs" : "the registers") + " at pin " +
                std::to_string(mode.EnablePin);
    if (mode.PreloadPin != 0) text += ", preload at pin " + std::to_string(mode.PreloadPin);
    if (mode.ResetRow >= 0) text += ", one term of asynchronous reset (`.AR` or `.AP`)";
    if (mode.PresetRow >= 0) text += ", one term of synchronous preset (`.SP` or `.SR`)";
    return text + ".\n\n" + TableOf(mode);
}

std::string DeviceText(const fit::Device& device) {
    if (device.IsVirtual()) return "No limits of pins and product terms, and no fuse map.\n";
    std::string text = std::to_string(device.Pins) + " pins, ground at " + std::to_string(device.GroundPin) +
                       ", supply at " + std::to_string(device.SupplyPin) + "; " +
                       std::to_string(device.Fuses) + " fuses" +
                       (device.Signature.Count > 1
                            ? ", of them " + std::to_string(device.Signature.Count) + " of user signature"
                            : "") +
                       ".\n";
    for (const auto& mode : device.Modes) text += "\n" + ModeText(mode);
    return text;
}

}  // namespace

std::string DevicePage(const fit::Library& library) {
    std::vector<std::pair<std::string, std::string>> sections;  // names, text
    for (const auto& device : library.Devices) {
        const std::string text = DeviceText(device);
        const auto same =
            std::find_if(sections.begin(), sections.end(), [&](const auto& s) { return s.second == text; });
        if (same == sections.end())
            sections.emplace_back(device.Mnemonic, text);
        else
            same->first += ", " + device.Mnemonic;
    }
    std::string page = preface;
    for (const auto& [names, text] : sections) page += "\n## " + names + "\n\n" + text;
    return page;
}

}  // namespace devpage
