#include "net/Design.h"

#include <algorithm>
#include <set>

#include "convert/Failure.h"
#include "net/DesignNames.h"
#include "net/Functions.h"
#include "net/ThreeState.h"

namespace net {
namespace {

using convert::Formula;

// What a name of the design stands for.
struct Signal {
    std::string Name;
    int Port = NoNet;  // a port, if the signal has one
    bool ActiveLow = false;
};

class Maker {
  public:
    Maker(const Netlist& netlist, const Wishes& wishes)
        : netlist_(netlist),
          wishes_(wishes),
          functions_(netlist, wishes.MaxTerms),
          names_(netlist, wishes, design_) {}

    Design Make() {
        Head();
        ListPorts();
        TouchAll();
        ClaimPorts(false);
        if (!wishes_.PinsAreNodes) ClaimPorts(true);
        NameNodes();
        Declare();
        useSync_ = SyncFits();
        for (const int port : outputs_) WritePort(port);
        for (const int net : buried_) {
            WriteSignal(net, signals_.at(net));
            design_.File.Body += "\r\n";
        }
        for (const Signal* signal : latches_) design_.File.Body += "MIN " + signal->Name + " = 1 ;\r\n";
        return std::move(design_);
    }

  private:
    void Head() {
        design_.File.Name = wishes_.Name;
        design_.File.Device = wishes_.Device;
        design_.File.Origin = wishes_.Origin;
    }

    void Note(MessageCode code, const std::string& detail) { design_.Notes.push_back(Say(code, detail)); }

    void ListPorts() {
        for (const auto* list : {&netlist_.Inputs, &netlist_.Outputs}) {
            for (const int net : *list) {
                if (std::find(ports_.begin(), ports_.end(), net) == ports_.end()) ports_.push_back(net);
            }
        }
        const std::set<int> inputs(netlist_.Inputs.begin(), netlist_.Inputs.end());
        for (const int net : netlist_.Outputs) {
            if (functions_.SourceOf(net) == Source::Input)
                Note("0403vh", names_.Source(net));
            else
                outputs_.push_back(net);
            // The synthesis has read the value that is not there already.
            if (inputs.contains(net) && names_.IsUnknown(functions_.Root(net)))
                convert::Fail(0, "the two-way port " + convert::Shown(names_.Source(net)) +
                                     " never drives: declare it as an input");
        }
    }

    // Every function that is written, so that all nodes are known before the first one is.
    void TouchAll() {
        for (const int port : outputs_) DataOf(port), EnableOf(port);
        for (const Register& reg : netlist_.Registers) {
            for (const Control* control :
                 {&reg.Clock, &reg.Enable, &reg.Reset, &reg.Preset, &reg.SyncReset, &reg.SyncPreset})
                functions_.Of(*control);
            functions_.Of(reg.Data);
        }
    }

    const Driver* DriverOf(int port) const {
        const int index = functions_.Index(port, Source::Driver);
        return index < 0 ? nullptr : &netlist_.Drivers[static_cast<std::size_t>(index)];
    }
    Function DataOf(int port) {
        const Driver* driver = DriverOf(port);
        return functions_.Of(driver != nullptr ? driver->Data : port);
    }
    Function EnableOf(int port) {
        const Driver* driver = DriverOf(port);
        return driver != nullptr ? functions_.Of(driver->Enable) : Function{};
    }
    bool IsRegister(int net) const { return functions_.SourceOf(net) == Source::Register; }
    bool IsBuried(int net) const { return IsRegister(net) || functions_.SourceOf(net) == Source::Gate; }

    // Whether the pin itself is read. Devices lead back the register of a macrocell that has one, so that
    // such a register needs a macrocell of its own.
    bool IsPinRead(int port) const {
        const auto isIt = [&](int net) { return net != NoNet && functions_.Root(net) == port; };
        return std::any_of(netlist_.Gates.begin(), netlist_.Gates.end(),
                           [&](const Gate& gate) {
                               return std::any_of(gate.Inputs.begin(), gate.Inputs.end(), isIt);
                           }) ||
               std::any_of(netlist_.Registers.begin(), netlist_.Registers.end(), [&](const Register& reg) {
                   return isIt(reg.Data) || isIt(reg.Clock.Net) || isIt(reg.Enable.Net) ||
                          isIt(reg.Reset.Net) || isIt(reg.Preset.Net) || isIt(reg.SyncReset.Net) ||
                          isIt(reg.SyncPreset.Net);
               });
    }
    bool MayHoldRegister(int port) const {
        return DriverOf(port) == nullptr || wishes_.Device == "virtual" || !IsPinRead(port);
    }

    // A register or node that a port shows lies at the port's pin. What is no register must not lie at a pin
    // that can be off: its name reads the pin.
    void ClaimPorts(bool inverted) {
        for (const int port : outputs_) {
            if (pins_.contains(port)) continue;
            const auto single = DataOf(port).Single();
            if (!single || single->Negated != inverted || !IsBuried(single->Net)) continue;
            if (signals_.contains(single->Net) || (DriverOf(port) && !IsRegister(single->Net))) continue;
            if ((inverted && !IsRegister(single->Net)) || !MayHoldRegister(port)) continue;
            signals_[single->Net] = {names_.Of(port), port, inverted};
            pins_[port] = single->Net;
        }
    }

    void NameNodes() {
        const auto bury = [this](int net) {
            if (signals_.contains(net)) return;
            signals_[net] = {names_.Of(net)};
            buried_.push_back(net);
        };
        for (const Register& reg : netlist_.Registers) bury(reg.Output);
        for (const int net : functions_.Loops()) bury(net);
        for (const int net : functions_.Nodes()) bury(net);
        TellNodes(functions_.Nodes());
    }

    void TellNodes(const std::vector<int>& nodes) {
        constexpr std::size_t shown = 10;
        std::string list;
        for (std::size_t i = 0; i < std::min(nodes.size(), shown); ++i)
            list += (i > 0 ? ", " : "") + signals_.at(nodes[i]).Name;
        if (nodes.size() > shown) list += " and " + std::to_string(nodes.size() - shown) + " more";
        if (!nodes.empty()) Note("0406vh", list);
    }

    // A signal as the source calls it; what only a port names has the port's name.
    std::string SourceOf(int net, const Signal& signal) {
        return names_.Source(signal.Port != NoNet ? signal.Port : net);
    }

    void Declare() {
        for (const int port : ports_) {
            const auto claim = pins_.find(port);
            const bool low = claim != pins_.end() && signals_.at(claim->second).ActiveLow;
            if (wishes_.PinsAreNodes)
                design_.File.Nodes.push_back(names_.Of(port));
            else
                design_.File.Pins.push_back({names_.Of(port), names_.PinOf(port), low});
        }
        names_.DemandPinsUsed();
        for (const int net : buried_) design_.File.Nodes.push_back(signals_.at(net).Name);
    }

    // Whether all registers are set or reset by one control, and in no other way.
    bool SyncFits() const {
        if (wishes_.Sync != SyncControls::Shared) return wishes_.Sync == SyncControls::Each;
        std::set<std::pair<int, bool>> controls;
        for (const Register& reg : netlist_.Registers) {
            const Control& control = reg.SyncReset.IsThere() ? reg.SyncReset : reg.SyncPreset;
            if (reg.IsLatch || reg.Reset.IsThere() || reg.Preset.IsThere()) return false;
            controls.insert({control.IsThere() ? functions_.Root(control.Net) : NoNet, control.Inverted});
        }
        return controls.size() == 1 && controls.begin()->first != NoNet;
    }

    Formula Of(const Literal& literal) {
        const auto signal = signals_.find(literal.Net);
        std::string name = signal != signals_.end() ? signal->second.Name : names_.Of(literal.Net);
        // The bare name of a register at a pin is the register.
        if (signal == signals_.end() && pins_.contains(literal.Net)) name += ".IO";
        return literal.Negated ? Formula::Not(Formula::Name(name)) : Formula::Name(name);
    }

    Formula Of(const Sum& sum) {
        return convert::SumOfProducts(sum, [&](const Literal& literal) { return Of(literal); });
    }

    // The shorter of the sum and the complement of the other sum.
    Formula Of(const Function& function) {
        if (!function.On && !function.Off) convert::Fail(0, "a function is too large");
        if (function.On && (!function.Off || function.On->size() <= function.Off->size()))
            return Of(*function.On);
        return Formula::Not(Of(*function.Off));
    }

    void Equation(const Signal& signal, const char* extension, const Function& function) {
        if (!function.On && !function.Off) return;  // a control that is not there
        const std::string_view kind = extension;
        const bool isIdle =
            kind == ".CE" || kind == ".OE";  // nothing is gained by what always or never holds
        const bool isControl = isIdle || kind == ".AR" || kind == ".AP" || kind == ".SR" || kind == ".SP";
        if (isControl && function.Constant() == isIdle) return;
        for (const Product& term : function.On.value_or(Sum{})) {
            if (wishes_.Describe && term.size() > wishes_.MaxInputs) {
                Note("0408vh", signal.Name + extension);
                break;
            }
        }
        design_.File.AddEquation(signal.Name + extension, Of(function));
    }

    void WritePort(int port) {
        const auto claim = pins_.find(port);
        if (claim != pins_.end()) {
            WriteSignal(claim->second, signals_.at(claim->second));
        } else {
            const Function data = DataOf(port);
            if (names_.IsUnknown(functions_.Root(port))) Note("0402vh", names_.Source(port));
            Equation({names_.Of(port), port}, "", data);
        }
        if (DriverOf(port) != nullptr) {
            Equation({names_.Of(port), port}, ".OE", EnableOf(port));
            if (wishes_.Describe) Note("0407vh", names_.Of(port) + ": three-state pin");
        }
        design_.File.Body += "\r\n";
    }

    void WriteSignal(int net, const Signal& signal) {
        if (IsRegister(net))
            WriteRegister(
                netlist_.Registers[static_cast<std::size_t>(functions_.Index(net, Source::Register))],
                signal);
        else
            WriteNode(net, signal);
    }

    void WriteRegister(const Register& reg, const Signal& signal) {
        if (reg.StartsAtOne) Note("0405vh", SourceOf(reg.Output, signal));
        if (wishes_.Describe)
            Note("0407vh", signal.Name + (reg.IsLatch ? ": latch" : ": register") +
                               (signal.Port == NoNet ? " in a node" : " at the pin"));
        const Function data = functions_.Of(reg.Data);
        if (reg.IsLatch) {
            Note("0401vh", SourceOf(reg.Output, signal));
            return WriteLatch(reg.Output, signal, functions_.Of(reg.Clock), data, &reg);
        }
        Equation(signal, ".D", WithSync(reg, data));
        Equation(signal, ".CK", functions_.Of(reg.Clock));
        Equation(signal, ".CE", functions_.Of(reg.Enable));
        Equation(signal, ".AR", functions_.Of(reg.Reset));
        Equation(signal, ".AP", functions_.Of(reg.Preset));
        if (!useSync_) return;
        Equation(signal, ".SR", functions_.Of(reg.SyncReset));
        Equation(signal, ".SP", functions_.Of(reg.SyncPreset));
    }

    Function WithSync(const Register& reg, Function data) {
        if (useSync_) return data;
        const std::size_t limit = 2 * functions_.Limit();
        if (reg.SyncPreset.IsThere()) data = Or(data, functions_.Of(reg.SyncPreset), limit);
        if (reg.SyncReset.IsThere()) data = And(data, Not(functions_.Of(reg.SyncReset)), limit);
        return data;
    }

    // Logic that keeps its own value: a latch where the device has it, else the loop as it is.
    void WriteNode(int net, const Signal& signal) {
        const Function& function = functions_.Behind(net);
        if (!function.On || !function.Off || !IsLoop(net)) return Equation(signal, "", function);
        const Sum follows = Where(*function.On, net, false);
        const Sum clears = Where(*function.Off, net, true);
        Note("0401vh", SourceOf(net, signal));
        const auto clash = And(follows, clears, 1);
        if (clash && clash->empty()) {
            const std::size_t limit = functions_.Limit();
            Function enable{Or(follows, clears, limit), {}};
            const Function data{follows, clears};
            if (enable.On) enable.On = Reduced(*enable.On);
            if (enable.On) return WriteLatch(net, signal, enable, data, nullptr);
        }
        Equation(signal, "", function);
    }
    bool IsLoop(int net) const {
        return std::find(functions_.Loops().begin(), functions_.Loops().end(), net) !=
               functions_.Loops().end();
    }

    void WriteLatch(int net, const Signal& signal, const Function& enable, const Function& data,
                    const Register* reg) {
        const Function reset = reg != nullptr ? functions_.Of(reg->Reset) : Function{};
        const Function preset = reg != nullptr ? functions_.Of(reg->Preset) : Function{};
        if (wishes_.Device == "virtual") {
            Equation(signal, ".L", data);
            Equation(signal, ".LE", enable);
            Equation(signal, ".AR", reset);
            return Equation(signal, ".AP", preset);
        }
        // The term that holds while the enable changes is redundant; without it the value could be lost.
        const std::size_t limit = 4 * functions_.Limit();
        const Function self{OneLiteral(net, false), OneLiteral(net, true)};
        Function loop = Or(And(enable, data, limit), And(self, data, limit), limit);
        const Function closed = enable.Off ? Not(enable) : Function{Holding(*enable.On, limit), {}};
        loop = Or(loop, And(self, closed, limit), limit);
        loop.Off.reset();
        if (preset.On) loop = Or(loop, {preset.On, {}}, limit);
        if (reset.On || reset.Off) loop = And(loop, Not(reset), limit);
        if (!loop.On)
            convert::Fail(0, "the latch " + convert::Shown(SourceOf(net, signal)) + " is too large");
        latches_.push_back(&signal);
        Equation(signal, "", {loop.On, {}});
    }

    // The complement of a short sum.
    static std::optional<Sum> Holding(const Sum& sum, std::size_t limit) {
        std::optional<Sum> off = ConstantSum(true);
        for (const Product& term : sum) {
            Sum not_term;
            for (const Literal& literal : term) not_term.push_back({{literal.Net, !literal.Negated}});
            if (off) off = And(*off, not_term, limit);
        }
        return off;
    }

    const Netlist& netlist_;
    const Wishes& wishes_;
    Design design_;
    Functions functions_;
    DesignNames names_;
    std::vector<int> ports_, outputs_;  // outputs: those that drive

    std::map<int, int> pins_;        // port to the register or node that lies at it
    std::map<int, Signal> signals_;  // by the net of a register or node
    std::vector<int> buried_;
    std::vector<const Signal*> latches_;
    bool useSync_ = true;
};

}  // namespace

SyncControls SyncControlsOf(std::string_view device) {
    if (device == "virtual") return SyncControls::Each;
    return device.ends_with("V10") ? SyncControls::Shared : SyncControls::None;
}

Design MakeDesign(Netlist netlist, const Wishes& wishes) {
    ResolveThreeState(netlist);
    return Maker(netlist, wishes).Make();
}

}  // namespace net
