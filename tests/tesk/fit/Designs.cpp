#include "Designs.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "fit/Sums.h"

namespace test {

std::string FullSetText() {
    std::ifstream file(FULLSET_DL, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

const fit::Device& DeviceOf(const std::string& mnemonic) {
    static const auto library = fit::ReadLibrary(FullSetText());
    return *library.Find(mnemonic);
}

fit::Design MakeDesign(const std::string& lines) {
    static const std::map<std::string, fit::RegisterKind> registers{{"D", fit::RegisterKind::D},
                                                                    {"T", fit::RegisterKind::T},
                                                                    {"JK", fit::RegisterKind::Jk},
                                                                    {"LATCH", fit::RegisterKind::Latch}};
    fit::Design design;
    std::map<std::string, std::size_t> index;
    std::istringstream in(lines);
    const auto literal = [&](std::string word) {
        fit::Literal result;
        result.Negated = word[0] == '!';
        if (result.Negated) word.erase(0, 1);
        result.Pin = word.ends_with(".IO");
        result.Signal = index.at(word.substr(0, word.find('.')));
        return result;
    };
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string first, second, third;
        words >> first >> second;
        if (first.empty()) continue;
        if (second != "=") {
            fit::Signal signal;
            signal.Node = first == "node";
            signal.Pin = signal.Node ? 0 : std::stoi(first);
            signal.ActiveLow = second[0] == '!';
            signal.Name = second.substr(signal.ActiveLow ? 1 : 0);
            if (words >> third) signal.Register = registers.at(third);
            index[signal.Name] = design.Signals.size();
            design.Signals.push_back(signal);
            continue;
        }
        fit::Function function;
        function.Signal = index.at(first.substr(0, first.find('.')));
        const auto extension = first.find('.') == first.npos ? "OUT" : first.substr(first.find('.') + 1);
        function.To = model::InputWords.Find(extension).value();
        fit::Sum sum(1);
        bool zero = false;
        while (words >> third) {
            if (third == "+") sum.emplace_back();
            zero = zero || third == "0";
            if (third != "+" && third != "0" && third != "1") sum.back().push_back(literal(third));
        }
        function.True = zero ? fit::Sum{} : sum;
        design.Functions.push_back(function);
    }
    return design;
}

const std::vector<Family>& Families() {
    static const std::vector<Family> families{
        {"G16V8S", "16V8", "GAL16V8"},   {"G16V8MA", "16V8", "GAL16V8"},
        {"G16V8MS", "16V8", "GAL16V8"},  {"G16V8", "16V8", "GAL16V8"},
        {"G20V8S", "20V8", "GAL20V8"},   {"G20V8MA", "20V8", "GAL20V8"},
        {"G20V8MS", "20V8", "GAL20V8"},  {"G20V8", "20V8", "GAL20V8"},
        {"G22V10", "22V10", "GAL22V10"}, {"G22V10PD", "22V10", "ATF22V10"},
        {"P22V10", "22V10", "PAL22V10"}, {"G18V10", "", "GAL18V10"},
        {"P16L8", "16L8", "PAL16L8"},    {"P16R4", "16R4", "PAL16R4"},
        {"P16R6", "16R6", "PAL16R6"},    {"P16R8", "16R8", "PAL16R8"},
        {"P20L8", "20L8", "PAL20L8"},    {"P20R4", "20R4", "PAL20R4"},
        {"P20R6", "20R6", "PAL20R6"},    {"P20R8", "20R8", "PAL20R8"},
        {"P10L8", "", "PAL10L8"},        {"P10H8", "", "PAL10H8"},
        {"P10P8", "", "PAL10P8"},        {"P12L6", "", "PAL12L6"},
        {"P12H6", "", "PAL12H6"},        {"P12P6", "", "PAL12P6"},
        {"P14L4", "", "PAL14L4"},        {"P14H4", "", "PAL14H4"},
        {"P14P4", "", "PAL14P4"},        {"P16L2", "", "PAL16L2"},
        {"P16H2", "", "PAL16H2"},        {"P16P2", "", "PAL16P2"},
        {"P12L10", "", "PAL12L10"},      {"P12H10", "", "PAL12H10"},
        {"P14L8", "", "PAL14L8"},        {"P14H8", "", "PAL14H8"},
        {"P16L6", "", "PAL16L6"},        {"P16H6", "", "PAL16H6"},
        {"P18L4", "", "PAL18L4"},        {"P18H4", "", "PAL18H4"},
        {"P20L2", "", "PAL20L2"},        {"P6L16", "", "PAL6L16"},
        {"P8L14", "", "PAL8L14"},        {"P16P8", "", "PAL16P8"},
        {"P20L10", "", "PAL20L10"},      {"P16RP4", "", "PAL16RP4"},
        {"P16RP6", "", "PAL16RP6"},      {"P16RP8", "", "PAL16RP8"},
        {"P18P8", "", "AMPAL18P8"},      {"P20RA10", "20RA10", ""},
        {"G20RA10", "20RA10", ""},       {"F100", "", "82S100"},
        {"F101", "", "82S101"},          {"F153", "", "82S153"},
        {"P18CV8", "", "18CV8"},         {"P20X4", "20X4", "PAL20X4"},
        {"P20X8", "20X8", "PAL20X8"},    {"P20X10", "20X10", "PAL20X10"},
        {"P16C1", "", "PAL16C1"},        {"P20C1", "", "PAL20C1"},
    };
    return families;
}

namespace {

fit::Sum RandomSum(std::mt19937& random, const std::vector<std::size_t>& sources, std::size_t most) {
    fit::Sum sum;
    for (auto terms = random() % 3 == 0 ? most : random() % (most + 1); terms > 0; --terms) {
        sum.emplace_back();
        for (auto n = 1 + random() % 4; n > 0; --n) {
            const auto source = sources[random() % sources.size()];
            auto& term = sum.back();
            const auto same = [&](const fit::Literal& l) { return l.Signal == source; };
            if (std::none_of(term.begin(), term.end(), same))
                term.push_back({source, random() % 2 == 0, false});
        }
    }
    return sum;
}

// What the rows of one term of a macrocell hold.
void AddRows(std::mt19937& random, fit::Design& design, const std::vector<std::size_t>& sources,
             std::size_t signal, const fit::CellUse& use, int enablePin) {
    const auto add = [&](fit::Input to) -> fit::Sum& {
        design.Functions.push_back({signal, to, RandomSum(random, sources, 1), {}});
        return *design.Functions.back().True;
    };
    if (use.HasOwnRows()) {
        add(fit::Input::Ck);
        if (random() % 2) add(fit::Input::Ar);
        if (random() % 2) add(fit::Input::Ap);
    }
    if (use.Enable != fit::EnableKind::Row || design.Signals[signal].Node || random() % 3 != 0) return;
    auto& enable = add(fit::Input::Oe);
    const auto& common = design.Signals.back();
    if (use.EnableAndPin && common.Pin == enablePin && !enable.empty())
        enable.front().push_back({design.Signals.size() - 1, !common.ActiveLow, false});
}

// Resets of all registers; they keep the sums as they are.
void AddShared(std::mt19937& random, fit::Design& design, const std::vector<std::size_t>& sources,
               fit::Input to) {
    if (random() % 3 != 0) return;
    const auto sum = RandomSum(random, sources, 1);
    for (std::size_t i = 0; i < design.Signals.size(); ++i) {
        if (design.Signals[i].Register != fit::RegisterKind::None)
            design.Functions.push_back({i, to, sum, {}});
    }
}

// A register whose pin leads back may be read there alone.
void ReadPins(fit::Design& design, const std::vector<std::pair<std::size_t, const fit::CellUse*>>& driven) {
    std::vector<bool> pins(design.Signals.size());
    for (const auto& [i, use] : driven)
        pins[i] = use->Kind == fit::UseKind::Register && use->Feedback == fit::FeedbackKind::Pin;
    for (auto& function : design.Functions)
        for (auto& term : *function.True)
            for (auto& literal : term) literal.Pin = pins[literal.Signal];
}

fit::Sum Product(const fit::Sum& a, const fit::Sum& b) {
    fit::Sum product;
    for (const auto& x : a) {
        for (auto y : b) {
            const bool isFalse = std::any_of(x.begin(), x.end(), [&](fit::Literal literal) {
                literal.Negated = !literal.Negated;
                return std::find(y.begin(), y.end(), literal) != y.end();
            });
            y.insert(y.end(), x.begin(), x.end());
            if (!isFalse) product.push_back(std::move(y));
        }
    }
    return product;
}

fit::Function RandomExclusiveOr(std::mt19937& random, const std::vector<std::size_t>& sources,
                                const fit::CellUse& use) {
    fit::Sides sides;
    std::size_t budget = 1'000'000;
    while (sides.Left.empty()) sides.Left = RandomSum(random, sources, use.Terms);
    while (sides.Right.empty()) sides.Right = RandomSum(random, sources, use.XorTerms);
    sides.NotLeft = fit::ComplementOf(sides.Left, budget).value();
    sides.NotRight = fit::ComplementOf(sides.Right, budget).value();
    fit::Function function;
    function.True = Product(sides.Left, sides.NotRight);
    for (const auto& term : Product(sides.NotLeft, sides.Right)) function.True->push_back(term);
    function.Xor = std::move(sides);
    return function;
}

// For a macrocell: an exclusive or where it has one, the function of a macrocell with the same rows, of
// shared terms some of another one's.
fit::Function RandomData(std::mt19937& random, const std::vector<std::size_t>& sources, const fit::Mode& mode,
                         const fit::CellUse& use, const fit::CellUse* last, const fit::Design& design) {
    if (last != nullptr && use.SharesSum(*last)) return design.Functions.back();
    if (use.XorTerms > 0 && random() % 2) return RandomExclusiveOr(random, sources, use);
    const bool shares = use.OrFuse >= 0;
    fit::Function function;
    function.True = RandomSum(random, sources, shares ? 2 * mode.SharedTerms / mode.Cells.size() : use.Terms);
    if (shares && !design.Functions.empty()) {
        const auto& other = *design.Functions[random() % design.Functions.size()].True;
        function.True->insert(function.True->end(), other.begin(), other.end());
    }
    return function;
}

}  // namespace

std::string BuriedText() {
    return "TESK-DL 1\nDEVICE BURIED 8 178\nMODE only 16\nCLOCK 7\n"
           "INPUT 1 0\nINPUT 2 2\nINPUT 3 4\nINPUT 4 6\n"
           "CELL 5 - high\nUSE output 0 2 always none\n"
           "CELL 9 8 low\nUSE output 2 2 always level\n"
           "CELL 10 10 176\nUSE output 4 2 always notsum\n"
           "CELL 11 12 high\nUSE register 6 2 always level\n"
           "CELL 12 14 177\nUSE register 8 1 always notsum xor=9*2\nEND\n";
}

fit::Design RandomDesign(std::mt19937& random, const fit::Device& device) {
    const auto& mode = device.Modes[random() % device.Modes.size()];
    fit::Design design;
    std::vector<std::size_t> sources;
    const auto add = [&](int pin) -> fit::Signal& {
        fit::Signal signal;
        signal.Name = "N" + std::to_string(pin);
        signal.Pin = random() % 3 == 0 ? 0 : pin;
        signal.ActiveLow = random() % 2;
        return design.Signals.emplace_back(signal);
    };
    for (const auto& input : mode.Inputs) {
        if (!sources.empty() && random() % 4 == 0) continue;
        sources.push_back(design.Signals.size());
        add(input.first);
    }
    std::vector<std::pair<std::size_t, const fit::CellUse*>> driven;
    for (const auto& cell : mode.Cells) {
        if (random() % 4 == 0) continue;
        const auto& use = cell.Uses[random() % cell.Uses.size()];
        const bool drives = use.Kind != fit::UseKind::Input;
        if (drives) driven.emplace_back(design.Signals.size(), &use);
        if (use.Feedback != fit::FeedbackKind::None && (!drives || random() % 2))
            sources.push_back(design.Signals.size());
        auto& signal = add(cell.Pin);
        // The complement of a sum seldom fits.
        if (cell.Polarity != fit::PolarityKind::Fuse && random() % 8 != 0)
            signal.ActiveLow = cell.Polarity == fit::PolarityKind::Low;
        signal.Node = (drives && random() % 6 == 0) || cell.Pin > device.Pins;
        if (signal.Node) signal.ActiveLow = false;
        if (use.Kind == fit::UseKind::Register) signal.Register = fit::RegisterKind::D;
    }
    const bool common = mode.AnyUse([](const fit::CellUse& use) { return use.EnableAndPin; });
    if (common && random() % 2) add(mode.EnablePin).Pin = mode.EnablePin;
    const fit::CellUse* last = nullptr;
    for (const auto& [i, use] : driven) {
        auto function = RandomData(random, sources, mode, *use, last, design);
        function.Signal = i;
        function.To = use->Kind == fit::UseKind::Register ? fit::Input::D : fit::Input::Out;
        design.Functions.push_back(std::move(function));
        last = use;
        AddRows(random, design, sources, i, *use, mode.EnablePin);
    }
    if (mode.ResetRow >= 0) AddShared(random, design, sources, fit::Input::Ar);
    if (mode.PresetRow >= 0) AddShared(random, design, sources, fit::Input::Sp);
    ReadPins(design, driven);
    return design;
}

bool Holds(const fit::Sum& sum, const std::vector<bool>& asserted) {
    return std::any_of(sum.begin(), sum.end(), [&](const fit::Term& term) {
        return std::all_of(term.begin(), term.end(),
                           [&](const fit::Literal& l) { return asserted[l.Signal] != l.Negated; });
    });
}

const fit::Sum* TrueOf(const fit::Design& design, std::size_t signal, fit::Input input) {
    for (const auto& function : design.Functions) {
        if (function.Signal == signal && function.To == input) return &*function.True;
    }
    return nullptr;
}

bool LowAt(const fit::Design& design, const fit::Fit& fit, std::size_t signal) {
    const auto& placement = fit.Placements[signal];
    if (placement.Use == fit::UseKind::Input) return design.Signals[signal].ActiveLow;
    return placement.Complemented == placement.PolarityHigh;
}

}  // namespace test
