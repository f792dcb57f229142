#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

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

// Rows of a sum that may lie anywhere, those of a use that are led to its macrocell and not false: beside one
// that is always true the others go.
std::string RowsAnywhere(const fit::Mode& mode, const Fuses& fuses, std::size_t first, std::size_t terms,
                         int orFuse) {
    std::set<std::string> rows;
    for (auto row = first; row < first + terms; ++row) {
        const auto at = mode.FirstFuse(row);
        const bool isCut = orFuse >= 0 && fuses[at + static_cast<std::size_t>(orFuse)];
        if (isCut || IsFalse(fuses, at, mode.Columns)) continue;
        std::string one;
        for (std::size_t c = 0; c < mode.Columns; ++c) one += fuses[at + c] ? '1' : '0';
        rows.insert(one);
    }
    const std::string always(mode.Columns, '1');
    if (rows.contains(always)) rows = {always};
    std::string text;
    for (const auto& row : rows) text += row + "\n";
    return text;
}

// The rows of macrocells that drive their pins, with the fuses of those that are not false.
std::string RowsThatDrive(const fit::Device& device, const fit::Mode& mode, const Fuses& fuses,
                          const Fuses& where) {
    const auto chip = proof::ReadBack(device, fuses).Found.value();
    std::string text;
    for (std::size_t i = 0; i < mode.Cells.size(); ++i) {
        const bool isEmpty =
            chip.Cells[i].Rows.empty() && (!chip.Cells[i].Rows2 || chip.Cells[i].Rows2->empty());
        if (!chip.Cells[i].Drives() || (isEmpty && mode.Cells[i].Uses.size() == 1)) continue;
        const bool isRegister = chip.Cells[i].Register != model::RegisterKind::None;
        text += "pin " + std::to_string(mode.Cells[i].Pin) + (isRegister ? " D" : "") +
                (chip.Cells[i].Pin != 0 && chip.Cells[i].PinInverted ? " low" : "") +
                (chip.Cells[i].Inverted ? " inverted\n" : "\n");
        for (const auto& use : mode.Cells[i].Uses) {
            if (use.Kind != (isRegister ? fit::UseKind::Register : fit::UseKind::Output)) continue;
            if (use.OrFuse >= 0 || use.XorTerms > 0) {
                const auto a = RowsAnywhere(mode, fuses, use.FirstRow, use.Terms, use.OrFuse);
                const auto b = RowsAnywhere(mode, fuses, use.XorRow, use.XorTerms, -1);
                text += std::min(a, b) + "$\n" + std::max(a, b);
                continue;
            }
            for (auto row = use.FirstRow; row < use.FirstRow + use.Terms; ++row) {
                const auto first = mode.FirstFuse(row);
                if (IsFalse(where, first, mode.Columns)) continue;
                for (std::size_t c = 0; c < mode.Columns; ++c) text += fuses[first + c] ? '1' : '0';
                text += "\n";
            }
        }
    }
    return text;
}

void ExpectLoop(const fit::Device& device, const Fuses& fuses, const std::string& library = Library()) {
    dis::Request request;
    request.Device = device.Mnemonic;
    request.Name = "LOOP";
    const auto first = dis::Disassemble(FileOf(device, fuses), library, request);
    ASSERT_EQ(Told(first.Messages), "") << device.Mnemonic << "\n" << first.Pld;
    const bool keeps = first.Pld.find("kx") != std::string::npos;
    const auto compiled = CompileWhole(first.Pld, keeps ? "jm4kx" : "jm4", {{"tesk.dl", library}});
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
    const auto second = dis::Disassemble(file, library, request);
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
            ones[0] = false;  // a term beside those that are always true
            for (auto* map : {&ones, &zeros}) {
                for (const auto& run : mode.Fuses)
                    for (std::size_t i = 0; i < run.Count; ++i) (*map)[run.First + i] = run.Value;
                if (!HasFatalFailure()) ExpectLoop(device, *map);
            }
        }
    }
}

// The pin reads them all, so that all have an effect.
TEST(Loop, BuriedMacrocells) {
    std::mt19937 random(43);
    const auto device = fit::ReadLibrary(test::BuriedText()).Devices.at(0);
    for (int round = 0; round < 20 && !HasFatalFailure(); ++round) {
        auto fuses = RandomFuses(device, device.Modes[0], random);
        for (std::size_t i = 0; i < 32; ++i) fuses[i] = i < 8 || (i < 16 && i % 2 != 0);
        ExpectLoop(device, fuses, test::BuriedText());
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

// Each row of the design has an effect, those of the reset and the preset as well; a register is set where
// its vector preloads.
TEST(Loop, RegistersKeepTheirRowsAndVectors) {
    const auto& device = test::DeviceOf("G22V10");
    const auto fit = fit::FitDesign(device,
                                    test::MakeDesign("1 K\n2 A\n3 B\n4 C\n5 D\n6 E\n7 F\n8 G\n9 H\n23 Q D\n"
                                                     "Q.CK = K\nQ.D = A C D E F G H\nQ.AR = B\nQ.SP = A B"),
                                    {});
    ASSERT_TRUE(fit.Ok());
    auto file = FileOf(device, fit.Fuses);
    const std::string rest = "01" + std::string(19, 'N') + "1N";
    file.Vectors = {{1, "P" + rest, 1}, {2, "C" + rest, 2}};
    const auto read = dis::Disassemble(file, Library(), {device.Mnemonic, "T", {}, false});
    ASSERT_EQ(read.Messages.size(), 1u);
    EXPECT_TRUE(read.Messages[0].Text.ends_with(": 1, now N")) << read.Messages[0].Text;
    EXPECT_EQ(read.Si.substr(read.Si.find("ORDER")),
              "ORDER: P1, P2, P3, P4, P5, P6, P7, P8,\r\n       P9, P23 ;\r\n\r\nVECTORS:\r\n"
              "P01NNNNNN1\r\nC01NNNNNNN\r\n");
}

}  // namespace
