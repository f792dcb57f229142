#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "proof/JedecFile.h"
#include "proof/Prove.h"

namespace {

const fit::Library& Devices() {
    static const fit::Library library = [] {
        std::ifstream in(FULLSET_DL, std::ios::binary);
        return fit::ReadLibrary(
            std::string{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()});
    }();
    return library;
}

void Check(const proof::JedecFile& file) {
    if (!file.Ok()) return;
    if (file.FuseCount != 0 && file.Fuses.size() != file.FuseCount) std::abort();
    if (file.Told > file.Fuses.size()) std::abort();
    for (std::size_t i = 1; i < file.Vectors.size(); ++i)
        if (file.Vectors[i - 1].Number >= file.Vectors[i].Number) std::abort();
}

// A name for each pin, in the sense that makes the rows of its macrocell the function.
proof::Equations Naming(const proof::Chip& chip) {
    proof::Equations equations;
    for (int pin = 1; pin <= chip.Pins; ++pin) {
        proof::Name name{"P" + std::to_string(pin), pin, false, false, proof::RegisterKind::None};
        for (const proof::Macrocell& cell : chip.Cells)
            if (cell.Pin == pin) {
                name.Register = cell.Register;
                name.ActiveLow = cell.Inverted != cell.PinInverted;
            }
        equations.Names.push_back(name);
    }
    return equations;
}

// The value of the name that a literal asks for, and the name's index; nothing for a line that has none.
std::optional<std::pair<std::size_t, char>> Place(const proof::Equations& equations, const proof::Chip& chip,
                                                  const proof::Literal& literal) {
    const bool isCell = literal.Of.From == proof::Signal::Kind::Cell;
    const proof::Macrocell* cell = isCell ? &chip.Cells.at(literal.Of.At) : nullptr;
    const auto pin = isCell ? static_cast<std::size_t>(cell->Pin) : literal.Of.At;
    if (pin == 0) return std::nullopt;
    const bool flips = equations.Names.at(pin - 1).ActiveLow != (isCell && cell->PinInverted);
    return std::pair(pin - 1, literal.Negated == flips ? '1' : '0');
}

// What the macrocell does, as an equation of its name.
void AddFunction(proof::Equations& equations, const proof::Chip& chip, const proof::Macrocell& cell) {
    proof::Wanted wanted;
    wanted.Name = static_cast<std::size_t>(cell.Pin) - 1;
    wanted.To = cell.Register == proof::RegisterKind::None ? proof::Input::Out : proof::Input::D;
    for (std::size_t i = 0; i < equations.Names.size(); ++i) wanted.Columns.push_back({i, false});
    wanted.On = wanted.DontCare = logic::Cover(chip.Pins, 1);
    for (const proof::Term& term : cell.Rows) {
        std::string text(equations.Names.size(), '-');
        bool isEmpty = false;
        for (const proof::Literal& literal : term) {
            const auto place = Place(equations, chip, literal);
            if (!place) return;
            isEmpty = isEmpty || (text[place->first] != '-' && text[place->first] != place->second);
            text[place->first] = place->second;
        }
        if (!isEmpty) wanted.On.Add(text, "1");
    }
    equations.Functions.push_back(wanted);
}

void ReadBack(const fit::Device& device, const std::vector<bool>& fuses) {
    const auto chip = proof::ReadBack(device, fuses).Found;
    if (!chip) return;
    proof::Equations equations = Naming(*chip);
    for (const proof::Macrocell& cell : chip->Cells)
        if (cell.Drives()) AddFunction(equations, *chip, cell);
    // Names here have no enable and no reset, macrocells may.
    const std::string_view apart[] = {".OE", ".AR", ".AP", ".SR", ".SP"};
    for (const proof::Finding& finding : proof::Prove(equations, *chip, 100'000).Differences) {
        const auto dot = finding.Text.find('.');
        const bool isControl =
            dot < finding.Text.find(',') &&
            std::find(std::begin(apart), std::end(apart), finding.Text.substr(dot, 3)) != std::end(apart);
        if (!isControl) std::abort();
    }
}

}  // namespace

// Any text is refused with an error or read, and what it makes of any device is the same as itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (text.find("L00000000") != text.npos) return 0;
    const proof::JedecFile file = proof::ReadJedec(text);
    Check(file);
    const fit::Device& device = Devices().Devices[data[0] % Devices().Devices.size()];
    ReadBack(device, file.FuseMap(device.Fuses));
    std::vector<bool> fuses(device.Fuses);
    if (!text.empty())
        for (std::size_t i = 0; i < fuses.size(); ++i)
            fuses[i] = (static_cast<unsigned char>(text[i / 8 % text.size()]) >> (i % 8) & 1) != 0;
    ReadBack(device, fuses);
    return 0;
}
