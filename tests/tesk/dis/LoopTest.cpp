#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Support.h"
#include "dis/Disassembly.h"
#include "proof/Chip.h"
#include "tesk/fit/Designs.h"

// Disassembled, compiled, disassembled again: the same fuses where they have an effect, the same text.

namespace {

using Fuses = std::vector<bool>;

const std::string& Library() {
    static const auto text = test::FullSetText();
    return text;
}

proof::JedecFile FileOf(const fit::Device& device, const Fuses& fuses) {
    proof::JedecFile file;
    file.Pins = static_cast<std::size_t>(device.Pins);
    file.FuseCount = fuses.size();
    file.Fuses = fuses;
    return file;
}

std::string Told(const std::vector<dis::Message>& messages) {
    std::string text;
    for (const auto& message : messages)
        if (message.Level != model::Severity::Information && message.Number != "7608tc" &&
            message.Number != "7612tc")
            text += model::Headline(message) + "\n";
    return text;
}

bool IsFalse(const Fuses& fuses, std::size_t first, std::size_t columns) {
    for (auto i = first; i < first + columns; i += 2)
        if (!fuses[i] && !fuses[i + 1]) return true;
    return false;
}

// The rows of macrocells that drive their pins, with the fuses of those that are not false.
std::string RowsThatDrive(const fit::Device& device, const fit::Mode& mode, const Fuses& fuses,
                          const Fuses& where) {
    const auto chip = proof::ReadBack(device, fuses).Found.value();
    std::string text;
    for (std::size_t i = 0; i < mode.Cells.size(); ++i) {
        if (!chip.Cells[i].Drives() || (chip.Cells[i].Rows.empty() && mode.Cells[i].Uses.size() == 1))
            continue;
        const bool isRegister = chip.Cells[i].Register != model::RegisterKind::None;
        text += "pin " + std::to_string(mode.Cells[i].Pin) + (isRegister ? " D" : "") +
                (chip.Cells[i].PinInverted ? " low" : "") + (chip.Cells[i].Inverted ? " inverted\n" : "\n");
        for (const auto& use : mode.Cells[i].Uses) {
            if (use.Kind != (isRegister ? fit::UseKind::Register : fit::UseKind::Output)) continue;
            std::vector<std::string> rows;
            const bool isShared = use.OrFuse >= 0;
            for (auto row = use.FirstRow; row < use.FirstRow + use.Terms; ++row) {
                const auto first = mode.FirstFuse(row);
                const bool isCut = isShared && fuses[first + static_cast<std::size_t>(use.OrFuse)];
                if (isCut || IsFalse(isShared ? fuses : where, first, mode.Columns)) continue;
                auto& one = rows.emplace_back();
                for (std::size_t c = 0; c < mode.Columns; ++c) one += fuses[first + c] ? '1' : '0';
            }
            // Shared terms lie anywhere, and beside one that is always true the others go.
            const std::string always(mode.Columns, '1');
            if (isShared && std::find(rows.begin(), rows.end(), always) != rows.end()) rows = {always};
            if (isShared) std::sort(rows.begin(), rows.end());
            const auto end = isShared ? std::unique(rows.begin(), rows.end()) : rows.end();
            for (auto row = rows.begin(); row != end; ++row) text += *row + "\n";
        }
    }
    return text;
}

void ExpectLoop(const fit::Device& device, const Fuses& fuses) {
    dis::Request request;
    request.Device = device.Mnemonic;
    request.Name = "LOOP";
    const auto first = dis::Disassemble(FileOf(device, fuses), Library(), request);
    ASSERT_EQ(Told(first.Messages), "") << device.Mnemonic << "\n" << first.Pld;
    const auto compiled = CompileWhole(first.Pld, "jm4", {{"tesk.dl", Library()}});
    ASSERT_TRUE(compiled->Run->Ok()) << compiled->Lines()[0] << first.Pld;
    const auto file = proof::ReadJedec(compiled->Text(".JED"));
    ASSERT_TRUE(file.Ok());
    const auto mode = compiled->Run->Fit->Result.Mode;
    ASSERT_EQ(mode, proof::ReadBack(device, fuses).Found->Mode);
    for (const auto& each : device.Modes) {
        if (each.Name != mode) continue;
        ASSERT_EQ(RowsThatDrive(device, each, file.Fuses, fuses), RowsThatDrive(device, each, fuses, fuses))
            << device.Mnemonic << "\n"
            << first.Pld;
    }
    const auto& signature = device.Signature;  // from fuse 0 on: there is none
    for (auto i = signature.First; i > 0 && i < signature.First + signature.Count; ++i)
        ASSERT_EQ(file.Fuses[i], fuses[i]) << i;
    request.Device.clear();
    const auto second = dis::Disassemble(file, Library(), request);
    ASSERT_EQ(second.Pld, first.Pld) << device.Mnemonic;
}

// A row as it may stand in a device: connected at random, false, or true.
void FillRow(Fuses& fuses, std::size_t first, std::size_t columns, std::mt19937& random) {
    const auto kind = random() % 20;
    for (std::size_t i = 0; i < columns; ++i) fuses[first + i] = kind > 3;
    if (kind == 4) return;
    if (kind == 5) fuses[first] = fuses[first + 1] = false;
    for (std::size_t n = random() % 5 + 1; kind > 3 && n > 0; --n) fuses[first + random() % columns] = false;
}

Fuses RandomFuses(const fit::Device& device, const fit::Mode& mode, std::mt19937& random) {
    Fuses fuses(device.Fuses);
    for (std::size_t i = 0; i < fuses.size(); ++i) fuses[i] = random() % 2 != 0;
    for (std::size_t row = 0; mode.FirstFuse(row) + mode.Columns <= fuses.size(); ++row)
        FillRow(fuses, mode.FirstFuse(row), mode.Columns, random);
    for (const auto& cell : mode.Cells) {
        if (cell.Polarity == fit::PolarityKind::Fuse) fuses[cell.PolarityFuse] = random() % 2 != 0;
        for (const auto& run : cell.Uses[random() % cell.Uses.size()].Fuses)
            for (std::size_t i = 0; i < run.Count; ++i) fuses[run.First + i] = run.Value;
    }
    for (const auto& run : mode.Fuses)
        for (std::size_t i = 0; i < run.Count; ++i) fuses[run.First + i] = run.Value;
    return fuses;
}

TEST(Loop, RandomMapsOfEachModeOfEachDevice) {
    std::mt19937 random(41);
    for (const auto& device : fit::ReadLibrary(Library()).Devices) {
        for (const auto& mode : device.Modes) {
            if (!HasFatalFailure()) ExpectLoop(device, RandomFuses(device, mode, random));
            Fuses ones(device.Fuses, true), zeros(device.Fuses, false);
            for (auto* map : {&ones, &zeros}) {
                for (const auto& run : mode.Fuses)
                    for (std::size_t i = 0; i < run.Count; ++i) (*map)[run.First + i] = run.Value;
                if (!HasFatalFailure()) ExpectLoop(device, *map);
            }
        }
    }
}

TEST(Loop, RandomDesigns) {
    std::mt19937 random(42);
    for (const auto& family : test::Families()) {
        for (int round = 0, fitted = 0; round < 300 && fitted < 1 && !HasFatalFailure(); ++round) {
            const auto& device = test::DeviceOf(family.Mnemonic);
            const auto fit = fit::FitDesign(device, test::RandomDesign(random, device), {});
            if (!fit.Ok()) continue;
            ++fitted;
            ExpectLoop(device, fit.Fuses);
            const auto shorter =
                dis::Disassemble(FileOf(device, fit.Fuses), Library(), {device.Mnemonic, "T", {}, true});
            EXPECT_EQ(Told(shorter.Messages), "") << "proved to do the same\n" << shorter.Pld;
        }
    }
}

}  // namespace
