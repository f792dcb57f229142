#include "front/Fitting.h"

#include "front/Exclusive.h"
#include "front/Remedies.h"

namespace front {

namespace {

fit::Sum SumOf(const Design& design, const Equation& equation, const logic::Cover& cover,
               const std::vector<std::size_t>& signals) {
    fit::Sum sum;
    for (std::size_t i = 0; i < cover.Size(); ++i) {
        fit::Term& term = sum.emplace_back();
        for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
            const Signal& signal = design.Signals[static_cast<std::size_t>(equation.Inputs[input])];
            term.push_back({signals[static_cast<std::size_t>(signal.Variable)], negated, signal.Pin});
        }
    }
    return sum;
}

fit::Sides SidesOf(const Design& design, const std::vector<Equation>& sides,
                   const std::vector<std::size_t>& signals) {
    return {SumOf(design, sides[0], sides[0].On, signals), SumOf(design, sides[0], sides[0].Off, signals),
            SumOf(design, sides[1], sides[1].On, signals), SumOf(design, sides[1], sides[1].Off, signals)};
}

// The equation that a message names; else where its name is declared, else the design's first line.
Place PlaceOf(const Design& design, const Message& message) {
    for (const Equation& equation : design.Equations) {
        if (design.Of(equation).Name != message.Subject) continue;
        const std::string name = ": " + design.EquationName(equation);
        const bool named =
            message.Text.find(name + " needs") != std::string::npos ||
            (equation.To != Extension::None && message.Text.find(name + ",") != std::string::npos);
        if (named) return equation.At;
    }
    for (const Variable& variable : design.Variables)
        if (variable.Name == message.Subject) return variable.At;
    return {0, 1, 0};
}

Equation* Find(Design& design, int variable, Extension to) {
    for (Equation& equation : design.Equations)
        if (equation.Variable == variable && equation.To == to) return &equation;
    return nullptr;
}

// What the rows hold.
void NoteSides(Equation& equation, const fit::Placement& placement) {
    if (placement.Exclusive == fit::Exclusive::Sides) {
        equation.Sides[0].Inverted = placement.LeftComplemented;
        equation.Sides[1].Inverted = placement.LeftComplemented != placement.Complemented;
        return;
    }
    equation.Sides.clear();
    if (placement.Exclusive == fit::Exclusive::None) return;
    Equation sum = equation;
    sum.Inverted = !equation.Inverted;
    Equation always;
    always.On = logic::Everything({0, 1});
    equation.Sides = {std::move(sum), std::move(always)};
}

void Note(Design& design, const Fitted& fitted) {
    design.PinCount = fitted.Device.Pins;
    for (std::size_t i = 0; i < design.Variables.size(); ++i) {
        Variable& variable = design.Variables[i];
        if (variable.Kind == VariableKind::Intermediate) continue;
        const fit::Placement& placement = fitted.Result.Placements[fitted.Signals[i]];
        variable.Number = placement.Pin;
        variable.PowerUp = placement.PowerUp;
        const Extension data = variable.Register == Extension::D ? Extension::D : Extension::None;
        Equation* equation = Find(design, static_cast<int>(i), data);
        if (equation == nullptr) continue;
        equation->Available = static_cast<int>(placement.Available);
        if (placement.Complemented && !equation->HasOff) {
            equation->Sides.clear();
            continue;
        }
        equation->Inverted = placement.Complemented;
        NoteSides(*equation, placement);
    }
}

// Of the library, with exclusive ors where that may help.
const fit::Device* OtherFor(Design design, const fit::Library& devices, const fit::Device& instead,
                            const fit::Options& options) {
    XorRoom room;
    for (const fit::Device& device : devices.Devices) room.Add(device);
    SplitSums(design, room);
    std::vector<std::size_t> signals;
    return fit::FindOther(devices, instead, ToFitter(design, signals), options);
}

// Errors that no other reduction mends end with a device that would do.
void AddOther(const Design& design, const fit::Library& devices, Fitted& fitted, const fit::Options& options,
              const std::set<std::string>& helped) {
    const fit::Device* other = nullptr;
    bool sought = false;
    for (Message& message : fitted.Result.Messages) {
        if (message.Level != Severity::Error || helped.contains(message.Subject)) continue;
        if (!sought) other = OtherFor(design, devices, fitted.Device, options);
        sought = true;
        if (other != nullptr) message.Text += "; would fit " + other->Mnemonic;
    }
}

}  // namespace

void ReportWhereDeclared(const Design& design, std::vector<Message> messages, Report& report) {
    for (Message& message : messages) {
        if (message.At.Line > 0)
            message.Text += ", line " + std::to_string(message.At.Line) + " of the library";
        message.At = message.Level == Severity::Information ? Place{} : PlaceOf(design, message);
        report.AddForeign(message);
    }
}

fit::Design ToFitter(const Design& design, std::vector<std::size_t>& signals) {
    fit::Design result;
    for (const Variable& variable : design.Variables) {
        signals.push_back(result.Signals.size());
        if (variable.Kind == VariableKind::Intermediate) continue;
        result.Signals.push_back({variable.Name, variable.Number, variable.ActiveLow,
                                  variable.Kind != VariableKind::Pin, RegisterKindOf(variable.Register)});
    }
    for (const Equation& equation : design.Equations) {
        fit::Function function;
        function.Signal = signals[static_cast<std::size_t>(equation.Variable)];
        function.To = InputOf(equation.To);
        function.True = SumOf(design, equation, equation.On, signals);
        if (equation.HasOff) function.False = SumOf(design, equation, equation.Off, signals);
        if (!equation.Sides.empty()) function.Xor = SidesOf(design, equation.Sides, signals);
        result.Functions.push_back(std::move(function));
    }
    for (const Fuse& fuse : design.Fuses)
        result.Fuses.emplace_back(static_cast<std::size_t>(fuse.Number), fuse.Value != 0);
    return result;
}

bool IsLow(const fit::Placement& placement) {
    return placement.Use != fit::UseKind::Input && placement.Complemented == placement.PolarityHigh;
}

fit::Options ToFitter(const Options& options) {
    fit::Options how;
    if (options.Best) how.Choose = fit::Polarity::Best;
    if (options.Demorgan) how.Choose = fit::Polarity::Complement;
    how.DropUnused = options.Deactivate;
    return how;
}

std::optional<Fitted> FitInto(Design& design, std::string_view library, const Options& options,
                              Report& report) {
    const fit::Library devices = fit::ReadLibrary(library);
    ReportWhereDeclared(design, devices.Messages, report);
    const fit::Device* device = devices.Ok() ? devices.Find(design.Device) : nullptr;
    if (device == nullptr) {
        if (devices.Ok()) report.Add(Code::DeviceUnknown, {0, 1, 0}, design.Device);
        return std::nullopt;
    }
    if (device->IsVirtual()) return std::nullopt;
    Fitted fitted;
    fitted.Device = *device;
    XorRoom room;
    room.Add(*device);
    if (options.Keep && room.First == 0) report.Add(Code::XorExpanded, {});
    SplitSums(design, room);
    fitted.Input = ToFitter(design, fitted.Signals);
    fitted.Result = fit::FitDesign(fitted.Device, fitted.Input, ToFitter(options));
    const auto helped = AddRemedies(design, options, fitted.Device, fitted.Result.Messages);
    AddOther(design, devices, fitted, ToFitter(options), helped);
    ReportWhereDeclared(design, fitted.Result.Messages, report);
    if (!fitted.Result.Ok()) return std::nullopt;
    Note(design, fitted);
    return fitted;
}

}  // namespace front
