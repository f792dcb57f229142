// Another reader of fuse maps, the program jedutil (Debian's package mame-tools), must see the equations of
// the design. Left out where it is not installed.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

#include <unistd.h>

#include "Designs.h"
#include "base/Text.h"
#include "fit/Jedec.h"

namespace {

std::string OutputOf(const std::string& command) {
    std::string text;
    auto* pipe = popen(command.c_str(), "r");
    for (int c = 0; pipe != nullptr && (c = fgetc(pipe)) != EOF;) text += static_cast<char>(c);
    return pipe != nullptr && pclose(pipe) == 0 ? text : std::string();
}

struct View {
    struct Equation {
        bool Inverted = false;
        std::vector<std::vector<std::string>> Terms;
        std::size_t Second = SIZE_MAX;  // the first term of the other side of an exclusive or
    };
    std::map<int, Equation> Logic;
    std::map<int, Equation> Enable;
    std::map<int, bool> ActiveHigh;
    Equation Reset;
    Equation Preset;
};

int PinOf(const std::string& name) {
    const auto digit = name.find_first_of("0123456789");
    return digit == name.npos ? 0 : std::stoi(name.substr(digit));
}

View Parse(const std::string& text) {
    View view;
    View::Equation* open = nullptr;
    bool equations = false;
    for (const auto& line : base::Lines(text)) {
        std::istringstream words(line);
        std::string first;
        std::string second;
        words >> first;
        if (first == "Asynchronous" || first == "Synchronous") {
            open = first == "Asynchronous" ? &view.Reset : &view.Preset;
            continue;
        }
        if (first == "Equations:") equations = true, open = nullptr;
        if (!equations && !first.empty() && isdigit(first[0]) && line.find('(') != line.npos)
            view.ActiveHigh[std::stoi(first)] = line.find("Active high") != line.npos;
        if ((!equations && open == nullptr) || first.empty() || first.back() == ':') continue;
        std::string rest = line;
        if (words >> second; second == "=" || second == ":=") {
            const bool enable = first.ends_with(".oe");
            open = &(enable ? view.Enable : view.Logic)[PinOf(first)];
            open->Inverted = first[0] == '/';
            rest = line.substr(line.find('=') + 1);
        }
        if (open == nullptr || base::Trim(rest).empty()) continue;
        open->Terms.emplace_back();
        std::istringstream factors(rest);
        for (std::string factor; factors >> factor;) {
            if (factor == ":+:") open->Second = open->Terms.size();
            if (factor != "&" && factor != "+" && factor != ":+:") open->Terms.back().push_back(factor);
        }
    }
    return view;
}

// `turned`: polarity of the registers that are named by their column, which has the other level than the pin.
bool Value(const View& view, const View::Equation& equation, const std::vector<bool>& levels,
           std::optional<bool> turned) {
    bool sides[] = {false, false};
    for (std::size_t i = 0; i < equation.Terms.size(); ++i) {
        bool product = true;
        for (const auto& factor : equation.Terms[i]) {
            if (factor == "vcc") continue;
            const int pin = PinOf(factor);
            bool level = levels[static_cast<std::size_t>(pin)] != (factor[0] == '/');
            if (factor.find("rf") != factor.npos && turned == view.ActiveHigh.at(pin)) level = !level;
            product = product && level;
        }
        bool& side = sides[i < equation.Second ? 0 : 1];
        side = side || product;
    }
    return (sides[0] != sides[1]) != equation.Inverted;
}

// The output of a signal for one state of all pins, as jedutil sees it and as the design has it.
void Compare(const View& view, const fit::Design& design, const fit::Fit& fit, std::size_t signal,
             const std::vector<bool>& asserted, const std::vector<bool>& levels, std::optional<bool> turned) {
    const auto& placement = fit.Placements[signal];
    const bool registered = placement.Use == fit::UseKind::Register;
    const auto* data = test::TrueOf(design, signal, registered ? fit::Input::D : fit::Input::Out);
    if (data == nullptr) return;
    const auto* own = test::TrueOf(design, signal, fit::Input::Oe);
    const bool enabled = own == nullptr || test::Holds(*own, asserted);
    const auto equation = view.Logic.find(placement.Pin);
    // What is never enabled is no output there, and a row that is always true is not shown.
    if (equation == view.Logic.end()) {
        EXPECT_FALSE(enabled) << "pin " << placement.Pin;
        return;
    }
    if (equation->second.Terms.empty() || equation->second.Terms.size() < placement.Used) {
        EXPECT_LE(placement.Used, equation->second.Terms.size() + 1) << "pin " << placement.Pin;
    } else {
        EXPECT_EQ(Value(view, equation->second, levels, turned),
                  test::Holds(*data, asserted) != test::LowAt(design, fit, signal))
            << "pin " << placement.Pin;
    }
    const auto& enable = view.Enable.at(placement.Pin);
    const bool byPin = !enable.Terms.empty() && enable.Terms.front().front() == "OE";
    EXPECT_TRUE(byPin || Value(view, enable, levels, turned) == enabled) << "enable of pin " << placement.Pin;
}

// It takes the halves of the one sum of this device for a sum each.
void JoinHalves(View& view) {
    auto& low = view.Logic[18].Terms;
    auto& high = view.Logic[19].Terms;
    low.insert(low.end(), high.begin(), high.end());
    high = low;
}

void CompareSamples(const View& view, const test::Family& family, const fit::Design& design,
                    const fit::Fit& fit, std::mt19937& random) {
    // Of a V10 the column is the inverted register, of an 18CV8 the register. Of that the pin is named in
    // sums, the column in the rows that all registers share.
    const auto turnedInSums =
        std::string_view(family.Jedutil).ends_with("V10") ? std::optional(true) : std::nullopt;
    const auto turnedInShared =
        std::string_view(family.Jedutil).ends_with("18CV8") ? std::optional(false) : turnedInSums;
    for (int sample = 0; sample < 30; ++sample) {
        std::vector<bool> asserted(design.Signals.size());
        std::vector<bool> levels(static_cast<std::size_t>(test::DeviceOf(family.Mnemonic).Pins) + 1);
        for (std::size_t i = 0; i < asserted.size(); ++i) {
            asserted[i] = random() % 2;
            levels[static_cast<std::size_t>(fit.Placements[i].Pin)] =
                asserted[i] != test::LowAt(design, fit, i);
        }
        for (std::size_t i = 0; i < asserted.size(); ++i)
            Compare(view, design, fit, i, asserted, levels, turnedInSums);
        for (const auto& function : design.Functions) {
            if (function.To != fit::Input::Ar && function.To != fit::Input::Sp) continue;
            const auto& row = function.To == fit::Input::Ar ? view.Reset : view.Preset;
            EXPECT_EQ(Value(view, row, levels, turnedInShared), test::Holds(*function.True, asserted));
        }
    }
}

TEST(Jedutil, SeesTheEquationsOfTheDesign) {
    if (OutputOf("jedutil -viewlist 2>/dev/null").empty()) GTEST_SKIP() << "jedutil is not installed";
    const auto file = std::filesystem::temp_directory_path() / ("fit" + std::to_string(::getpid()) + ".jed");
    std::mt19937 random(23);
    for (const auto& family : test::Families()) {
        if (*family.Jedutil == 0) continue;
        SCOPED_TRACE(family.Mnemonic);
        const auto& device = test::DeviceOf(family.Mnemonic);
        int fitted = 0;
        for (int round = 0; round < 4000 && fitted < 5; ++round) {
            const auto design = test::RandomDesign(random, device);
            const auto fit = fit::FitDesign(device, design, {fit::Polarity::Best, random() % 2 == 0});
            if (!fit.Ok()) continue;
            ++fitted;
            std::ofstream(file, std::ios::binary) << fit::WriteJedec(device, fit, {});
            const auto told = OutputOf("jedutil -view " + file.string() + " " + family.Jedutil);
            ASSERT_NE(told.find("Equations:"), told.npos) << told;
            auto view = Parse(told);
            if (family.Mnemonic == std::string_view("P20C1")) JoinHalves(view);
            CompareSamples(view, family, design, fit, random);
            if (HasFailure()) return;
        }
        EXPECT_EQ(fitted, 5);
    }
    std::filesystem::remove(file);
}

}  // namespace
