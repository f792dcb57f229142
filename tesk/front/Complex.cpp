#include "front/Complex.h"

#include <algorithm>
#include <array>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/Report.h"
#include "front/Files.h"

namespace front {
namespace {

constexpr std::array<std::string_view, 2> kDevices{"C1502", "C1504"};

template <typename Value>
Value Second(const Property& property, Value first, Value second) {
    return property.Value == 0 ? first : second;
}

// Puts what PROPERTY statements say into a configuration.
class Settler {
  public:
    Settler(const Design& design, const Fitted& fitted, const cpld::Fit& fit, Report& report)
        : design_(design), fitted_(fitted), fit_(fit), report_(report), result_(fit.Result) {}

    cpld::Configuration Run(bool secure) {
        for (const Property& property : design_.Properties) Set(property);
        if (secure) result_.Settings.ReadProtection = cpld::Switched::On;
        return std::move(result_);
    }

  private:
    void Set(const Property& property) {
        using namespace cpld;
        cpld::Settings& settings = result_.Settings;
        switch (property.Kind) {
            case PropertyKind::Keeper:
                settings.Pins = Second(property, Termination::BusKeeper, Termination::HighZ);
                return;
            case PropertyKind::PullUp:
                settings.Tms = settings.Tdi = Second(property, PullUp::HighZ, PullUp::PullUp);
                return;
            case PropertyKind::Jtag:
                settings.Jtag = Second(property, JtagPins::Jtag, JtagPins::User);
                return;
            case PropertyKind::Protect:
                settings.ReadProtection = Second(property, Switched::Off, Switched::On);
                return;
            case PropertyKind::Signature:
                result_.Signature = static_cast<std::uint16_t>(property.Value);
                return;
            default:
                return SetCells(property);
        }
    }

    void SetCells(const Property& property) {
        if (property.Variables.empty())
            for (std::size_t cell = 0; cell < result_.Cells.size(); ++cell)
                if (!fit_.Names.Cells[cell].empty()) SetCell(property, cell);
        for (const int variable : property.Variables) SetName(property, variable);
    }

    void SetName(const Property& property, int variable) {
        const std::string& name = design_.Variables[static_cast<std::size_t>(variable)].Name;
        const cpld::Place& place = fit_.Places[fitted_.Signals[static_cast<std::size_t>(variable)]];
        const bool isPin = property.Kind != PropertyKind::Power;
        if (!place.Cell || (isPin && place.Pin == 0))
            return report_.Add(Code::PropertyUnused, property.At,
                               name + (isPin ? " is no output" : " has no macrocell"));
        if (isPin) return SetCell(property, *place.Cell);
        // The function's parts have the name with a number behind it.
        for (std::size_t cell = 0; cell < result_.Cells.size(); ++cell) {
            const std::string& own = fit_.Names.Cells[cell];
            if (own == name || own.starts_with(name + ".")) SetCell(property, cell);
        }
    }

    void SetCell(const Property& property, std::size_t index) {
        using namespace cpld;
        Cell& cell = result_.Cells[index];
        if (property.Kind == PropertyKind::Slew)
            cell.SlewRate = Second(property, Slew::Slow, Slew::Fast);
        else if (property.Kind == PropertyKind::Driver)
            cell.OutputDriver = Second(property, Driver::PushPull, Driver::OpenDrain);
        else
            cell.LowPower = Second(property, Switched::Off, Switched::On);
    }

    const Design& design_;
    const Fitted& fitted_;
    const cpld::Fit& fit_;
    Report& report_;
    cpld::Configuration result_;
};

cpld::FitOptions OptionsFor(const Design& design, const Fitted& fitted) {
    cpld::FitOptions options;
    for (const Property& property : design.Properties) {
        if (property.Kind == PropertyKind::Jtag) options.JtagPins = property.Value != 0;
        if (property.Kind != PropertyKind::Driver || property.Value == 0) continue;
        for (std::size_t i = 0; i < design.Variables.size(); ++i) {
            const auto& these = property.Variables;
            const bool isMeant =
                these.empty() || std::find(these.begin(), these.end(), static_cast<int>(i)) != these.end();
            if (isMeant && design.Variables[i].Kind == VariableKind::Pin)
                options.OpenDrain.push_back(fitted.Signals[i]);
        }
    }
    return options;
}

// Where the names of the design went.
void Note(Design& design, Fitted& fitted, const cpld::Fit& fit, const cpld::Package& package) {
    design.PinCount = package.PinCount;
    fitted.Result.Placements.resize(fitted.Input.Signals.size());
    for (std::size_t i = 0; i < design.Variables.size(); ++i) {
        Variable& variable = design.Variables[i];
        if (variable.Kind == VariableKind::Intermediate) continue;
        const cpld::Place& place = fit.Places[fitted.Signals[i]];
        fit::Placement& placement = fitted.Result.Placements[fitted.Signals[i]];
        const bool isNode = variable.Kind != VariableKind::Pin;
        variable.Number = !isNode ? place.Pin : place.Cell ? static_cast<int>(*place.Cell) + 1 : 0;
        variable.PowerUp = place.PowerUp;
        placement.Pin = variable.Number;
        if (!place.Cell) continue;
        placement.Use = fit::UseKind::Output;
        for (const cpld::Occupied& cell : fit.Cells)
            if (cell.Cell == *place.Cell) placement.PolarityHigh = !cell.Low;
    }
}

const cpld::Device* NextLarger(const std::vector<cpld::Device>& devices, const cpld::Device& device) {
    for (const cpld::Device& other : devices)
        if (other.CellCount() > device.CellCount()) return &other;
    return nullptr;
}

std::optional<Fitted> Fit(Design& design, const std::vector<cpld::Device>& devices, bool secure,
                          Report& report) {
    const auto name = SplitComplex(design.Device);
    const cpld::Device* device = name ? cpld::FindDevice(devices, name->Device) : nullptr;
    if (device == nullptr) {
        report.Add(Code::DeviceUnknown, {0, 1, 0}, design.Device);
        return std::nullopt;
    }
    Fitted fitted;
    fitted.Input = ToFitter(design, fitted.Signals);
    auto options = OptionsFor(design, fitted);
    options.Larger = NextLarger(devices, *device);
    const cpld::Fit fit = cpld::FitDesign(*device, name->Package, fitted.Input, options);
    ReportWhereDeclared(design, fit.Messages, report);
    if (!fit.Ok()) return std::nullopt;
    const cpld::Package& package = *device->FindPackage(name->Package);
    design.Device = fitted.Result.Mnemonic = device->Name + package.Suffix;
    Note(design, fitted, fit, package);
    fitted.Result.Implied = fit.Implied;
    auto settled = Settler(design, fitted, fit, report).Run(secure);
    fitted.Result.Fuses = cpld::WriteFuses(*device, settled);
    fitted.Complex = std::make_shared<ComplexFit>(ComplexFit{*device, std::move(settled), fit.Names});
    return fitted;
}

}  // namespace

std::optional<ComplexName> SplitComplex(std::string_view mnemonic) {
    for (const std::string_view device : kDevices)
        if (base::EqualNoCase(mnemonic.substr(0, device.size()), device))
            return ComplexName{std::string(device), base::Upper(mnemonic.substr(device.size()))};
    return std::nullopt;
}

std::string ComplexLibrary(std::string_view library) { return Beside(library, "Cplds.dl"); }

std::optional<Fitted> FitIntoComplex(Design& design, std::string_view library, bool secure, Report& report) {
    try {
        return Fit(design, cpld::ReadDevices(library), secure, report);
    } catch (const base::RunTimeError& error) {
        report.Add(Code::LibraryUnreadable, {0, 1, 0}, std::string("Cplds.dl: ") + error.Description());
        return std::nullopt;
    }
}

cpld::ChipOfParts ReadComplex(const cpld::Device& device, const std::string& package,
                              const std::vector<bool>& fuses) {
    return cpld::ReadBack(device, *device.FindPackage(package), cpld::ReadConfiguration(device, fuses));
}

std::string ComplexReport(const ComplexFit& fit) {
    return cpld::WriteReport(fit.Device, fit.Settled, fit.Names);
}

}  // namespace front
