#include "dis/Complex.h"

#include <algorithm>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/Inline.h"
#include "cpld/JedecText.h"
#include "dis/Programmed.h"
#include "front/ComplexName.h"

namespace dis {
namespace {

using convert::Formula;
using convert::Operator;
using proof::Macrocell;
using proof::RegisterKind;
using proof::Signal;

class Writer {
  public:
    Writer(convert::PldFile& file, const ComplexMap& map, const PinNames& names, bool places)
        : file_(file), map_(map), given_(names), places_(places) {
        const auto& package = *map.Device.FindPackage(map.Package);
        auto read = cpld::ReadBack(map.Device, package, map.From);
        parts_ = std::move(read.Parts);
        pins_ = package.PinCount;
        std::vector<bool> keep;
        for (const auto& part : parts_) keep.push_back(part.Of != cpld::Part::Foldback);
        std::vector<std::size_t> tooLarge;
        chip_ = cpld::Inlined(read.Chip, keep, tooLarge);
        if (!tooLarge.empty()) chip_ = std::move(read.Chip);
        FindLive();
    }

    void Write() {
        for (std::size_t i = 0; i < live_.size(); ++i)
            if (live_[i]) Declare(i);
        for (auto& [number, name] : names_) file_.Pins.push_back({name, number, false});
        AddProperties();
        for (std::size_t i = 0; i < live_.size(); ++i)
            if (live_[i]) AddCell(i);
    }

  private:
    void Add(const std::string& statement) { file_.Body += statement + " ;\r\n"; }

    bool HasPin(const Macrocell& cell) const { return cell.Drives() && cell.Pin <= pins_; }
    std::optional<std::size_t> DriverOf(std::size_t pin) const {
        for (std::size_t i = 0; i < chip_.Cells.size(); ++i)
            if (chip_.Cells[i].Drives() && chip_.Cells[i].Pin == static_cast<int>(pin)) return i;
        return std::nullopt;
    }

    void FindLive() {
        live_.assign(chip_.Cells.size(), false);
        inner_.assign(chip_.Cells.size(), false);
        std::vector<std::size_t> open;
        const auto mark = [&](std::size_t cell) {
            if (!live_[cell]) open.push_back(cell);
            live_[cell] = true;
        };
        for (std::size_t i = 0; i < live_.size(); ++i)
            if (HasPin(chip_.Cells[i])) mark(i);
        while (!open.empty()) {
            const auto& cell = chip_.Cells[open.back()];
            open.pop_back();
            for (const auto* sum : SumsOf(cell))
                for (const auto& term : *sum)
                    for (const auto& literal : term) Read(literal.Of, mark);
        }
    }

    template <typename Mark>
    void Read(const Signal& signal, const Mark& mark) {
        if (signal.From == Signal::Kind::Cell) {
            const auto& cell = chip_.Cells[signal.At];
            inner_[signal.At] =
                HasPin(cell) && cell.Register == RegisterKind::None && cell.Enable.When != proof::Always();
            return mark(signal.At);
        }
        const auto driver = DriverOf(signal.At);
        if (driver) return mark(*driver);
        if (signal.At <= static_cast<std::size_t>(pins_)) NamePin(static_cast<int>(signal.At));
    }

    const std::string& NamePin(int pin) {
        std::string& name = names_[pin];
        const auto given = given_.find(pin);
        if (name.empty())
            name = maker_.Of(std::to_string(pin),
                             given == given_.end() ? "P" + std::to_string(pin) : given->second.Name);
        return name;
    }
    std::string NameOf(std::size_t cell) {
        if (HasPin(chip_.Cells[cell])) return NamePin(chip_.Cells[cell].Pin);
        const auto& part = parts_[cell];
        const bool isFirst = cell < map_.From.Cells.size();
        const char* stem = isFirst ? "N" : part.Of == cpld::Part::Foldback ? "F" : "X";
        const auto number = std::to_string(part.Macrocell + 1);
        return maker_.Of(stem + number, stem + number);
    }
    std::string InnerName(std::size_t cell) {
        const auto number = std::to_string(parts_[cell].Macrocell + 1);
        return maker_.Of("inner " + number, "X" + number);
    }

    void Declare(std::size_t cell) {
        const auto name = NameOf(cell);
        if (inner_[cell]) Add("NODE " + InnerName(cell));
        if (HasPin(chip_.Cells[cell])) return;
        const bool isPlaced = places_ && cell < map_.From.Cells.size();
        Add(isPlaced ? "PINNODE " + std::to_string(parts_[cell].Macrocell + 1) + " = " + name
                     : "NODE " + name);
    }

    Formula Of(const proof::Literal& literal) {
        std::string name;
        if (literal.Of.From == Signal::Kind::Cell) {
            name = inner_[literal.Of.At] ? InnerName(literal.Of.At) : NameOf(literal.Of.At);
        } else if (const auto driver = DriverOf(literal.Of.At)) {
            const bool isPin = HasPin(chip_.Cells[*driver]);
            name = NameOf(*driver);
            const auto& cell = chip_.Cells[*driver];
            const bool isAlwaysOn = cell.Enable.When == proof::Always();
            if (isPin && !isAlwaysOn && cell.Register != RegisterKind::None) name += ".IO";
        } else {
            name = NamePin(static_cast<int>(literal.Of.At));
        }
        return literal.Negated ? Formula::Not(Formula::Name(name)) : Formula::Name(name);
    }
    Formula Of(const proof::Sum& sum) {
        return convert::SumOfProducts(sum, [&](const proof::Literal& literal) { return Of(literal); });
    }

    void AddCell(std::size_t index) {
        const auto& cell = chip_.Cells[index];
        const auto name = NameOf(index);
        auto value = Of(cell.Rows);
        if (cell.Rows2) value = Formula::Combine(Operator::Xor, std::move(value), Of(*cell.Rows2));
        if (cell.Inverted) value = Formula::Not(std::move(value));
        const char* to = cell.Register == RegisterKind::D       ? ".D"
                         : cell.Register == RegisterKind::T     ? ".T"
                         : cell.Register == RegisterKind::Latch ? ".L"
                                                                : "";
        file_.AddEquation(inner_[index] ? InnerName(index) : name + to, value);
        if (inner_[index]) file_.AddEquation(name, Formula::Name(InnerName(index)));
        const auto unless = [&](const char* extension, const proof::Sum& sum, const proof::Sum& usual) {
            if (sum != usual) file_.AddEquation(name + extension, Of(sum));
        };
        const bool isLatch = cell.Register == RegisterKind::Latch;
        if (cell.Register != RegisterKind::None) {
            if (isLatch)
                unless(".LE", cell.Clock.When, proof::Always());
            else
                file_.AddEquation(name + ".CK", Of(cell.Clock.When));
            unless(".CE", cell.ClockEnable.When, proof::Always());
            unless(".AR", cell.Reset.When, {});
            unless(".AP", cell.Preset.When, {});
        }
        if (HasPin(cell)) unless(".OE", cell.Enable.When, proof::Always());
    }

    void AddProperties() {
        using namespace cpld;
        const auto& settings = map_.From.Settings;
        if (settings.Pins == Termination::HighZ) Add("PROPERTY KEEPER = OFF");
        if (settings.Tms == PullUp::PullUp && settings.Tdi == PullUp::PullUp) Add("PROPERTY PULLUP = ON");
        if (settings.Jtag == JtagPins::User) Add("PROPERTY JTAG = OFF");
        if (settings.ReadProtection == Switched::On) Add("PROPERTY PROTECT = ON");
        if (map_.From.Signature != 0xFFFF) {
            std::string digits;
            for (int shift = 12; shift >= 0; shift -= 4)
                digits += "0123456789ABCDEF"[map_.From.Signature >> shift & 0xF];
            Add("PROPERTY SIGNATURE = 'h'" + digits);
        }
        for (std::size_t i = 0; i < map_.From.Cells.size(); ++i) {
            if (!live_[i]) continue;
            const Cell& cell = map_.From.Cells[i];
            const bool isPin = HasPin(chip_.Cells[i]);
            if (isPin && cell.SlewRate == Slew::Fast) Add("PROPERTY SLEW " + NameOf(i) + " = FAST");
            if (isPin && cell.OutputDriver == Driver::OpenDrain)
                Add("PROPERTY DRIVER " + NameOf(i) + " = OPEN_DRAIN");
            if (cell.LowPower == Switched::On) Add("PROPERTY POWER " + NameOf(i) + " = LOW");
        }
        file_.Body += "\r\n";
    }

    convert::PldFile& file_;
    const ComplexMap& map_;
    const PinNames& given_;
    bool places_;
    int pins_ = 0;
    proof::Chip chip_;
    std::vector<cpld::CellPart> parts_;
    std::vector<bool> live_;   // cells that drive a pin or are read by such
    std::vector<bool> inner_;  // read although their pin can be off
    std::map<int, std::string> names_;
    convert::NameMaker maker_;
};

// What the file itself says of its device: a note, "DEVICE C1502T44".
std::string NotedDevice(const proof::JedecFile& file) {
    for (const auto& note : file.Notes) {
        const auto words = base::Words(base::TrimView(note));
        if (words.size() == 2 && base::EqualNoCase(words[0], "DEVICE")) return std::string(words[1]);
    }
    return {};
}

}  // namespace

std::optional<ComplexMap> ReadComplexMap(const proof::JedecFile& file, const Request& request,
                                         std::vector<Message>& messages) {
    const auto refuse = [&](const std::string& why) {
        messages.push_back(model::MakeMessage(MessageCode("7601tc").Entry(), {}, why));
        return std::nullopt;
    };
    const auto count = file.FuseCount != 0 ? file.FuseCount : file.Fuses.size();
    auto name = front::SplitComplex(request.Device);
    if ((!request.Device.empty() && !name) || request.ComplexLibrary.empty()) return std::nullopt;
    try {
        const auto devices = cpld::ReadDevices(request.ComplexLibrary);
        const auto* device =
            name ? cpld::FindDevice(devices, name->Device) : cpld::DeviceOfFuses(devices, count);
        if (device == nullptr) return std::nullopt;
        if (device->Fuses != count) return refuse(device->Name + ", the file " + std::to_string(count));
        const auto noted = front::SplitComplex(NotedDevice(file));
        if ((!name || name->Package.empty()) && noted && noted->Device == device->Name) name = noted;
        const auto* package = device->FindPackage(name ? name->Package : std::string());
        if (package == nullptr) return refuse(name->Device + name->Package);
        return ComplexMap{*device, package->Suffix,
                          cpld::ReadConfiguration(*device, file.FuseMap(device->Fuses))};
    } catch (const base::RunTimeError& error) {
        return refuse(error.Description());
    }
}

std::string ComplexText(convert::PldFile file, const ComplexMap& map, const PinNames& names, bool places) {
    file.Device = map.Device.Name + map.Package;
    Writer(file, map, names, places).Write();
    return file.Text();
}

}  // namespace dis
