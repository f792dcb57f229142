#include <algorithm>
#include <array>
#include <functional>
#include <optional>

#include "base/Text.h"
#include "convert/Converters.h"
#include "convert/Equations.h"
#include "convert/Netlist.h"
#include "convert/PldFile.h"

namespace convert {
namespace {

// What a net of this name carries; none for a signal.
std::optional<bool> PowerOf(const std::string& net) {
    constexpr std::array<std::string_view, 5> high{"VCC", "VDD", "+5V", "V+", "+5"};
    constexpr std::array<std::string_view, 4> low{"GND", "VSS", "0V", "DGND"};
    const auto is = [&](std::string_view name) { return base::EqualNoCase(net, name); };
    if (std::any_of(high.begin(), high.end(), is)) return true;
    if (std::any_of(low.begin(), low.end(), is)) return false;
    return std::nullopt;
}

// Reads the formula of a cell with the nets of a part in place of its pins.
class FormulaReader : public TokenReader {
  public:
    using Resolve = std::function<Formula(const std::string& pin)>;

    FormulaReader(const CellEquation& equation, Resolve resolve)
        : TokenReader(equation.Value, CellLanguage()), resolve_(std::move(resolve)) {}

    Formula Read() {
        const Group group = Expression();
        if (Peek().Kind != TokenKind::End) FailHere("an operator is expected");
        return group.Bits.front();
    }

  private:
    Group Operand() override {
        if (Is("0") || Is("1")) return {{Formula::Constant(Next().Text == "1")}};
        return {{resolve_(base::Upper(NeedWord("a name")))}};
    }

    Resolve resolve_;
};

struct Signal {
    std::map<std::string, Formula> Equations;  // by extension
    std::set<std::string> Reads;               // of the combinational equation
    std::string Driver;                        // "U1 pin 3" for messages
    int Line = 0;
    bool IsRead = false;
    bool IsPin = false;
};

class Builder {
  public:
    Builder(const Netlist& netlist, const CellLibrary& library) : netlist_(netlist), library_(library) {}

    PldFile Build() {
        for (const std::string& port : netlist_.Ports) Of(port).IsPin = true;
        for (const Part& part : netlist_.Parts) Take(part);
        CheckLoops();
        PldFile file;
        Declare(file);
        for (const auto& [net, signal] : signals_)
            for (const auto& [extension, value] : signal.Equations)
                file.AddEquation(names_.Of(net) + (extension.empty() ? "" : "." + extension), value);
        if (file.Body.empty()) Fail(0, "there are no gates");
        return file;
    }

  private:
    Signal& Of(const std::string& net) { return signals_[net]; }

    void Take(const Part& part) {
        const Cell* cell = library_.Find(part.Type);
        if (cell == nullptr) return TakeOther(part);
        std::map<std::string, std::string> nets;  // by the names of the pins
        for (const auto& [pin, net] : part.Nets) {
            const auto number = cell->Pins.find(pin);
            const auto isPin = [&name = pin](const auto& entry) { return entry.second == name; };
            const bool isName = std::any_of(cell->Pins.begin(), cell->Pins.end(), isPin);
            if (number == cell->Pins.end() && !isName)
                Fail(part.Line, part.Type + " " + part.Reference + " has no pin " + Shown(pin));
            nets[isName ? pin : number->second] = net;
        }
        for (const std::string& target : Needed(*cell, nets)) TakeTarget(part, *cell, nets, target);
    }

    // Capacitors between the supplies do nothing; the nets of a connector are pins.
    void TakeOther(const Part& part) {
        const bool isPower = std::all_of(part.Nets.begin(), part.Nets.end(),
                                         [](const auto& entry) { return PowerOf(entry.second).has_value(); });
        if (isPower) return;
        const bool isConnector = part.Reference[0] == 'J' || part.Reference[0] == 'P' ||
                                 base::StartsWith(base::Upper(part.Type), "CON");
        if (!isConnector)
            Fail(part.Line, "the part " + part.Reference + " (" + part.Type + ") is not in the cell library");
        for (const auto& [pin, net] : part.Nets)
            if (!PowerOf(net)) Of(net).IsPin = true;
    }

    // The equations whose results leave the part, and those that they read.
    static std::set<std::string> Needed(const Cell& cell, const std::map<std::string, std::string>& nets) {
        std::set<std::string> targets, needed;
        for (const CellEquation& equation : cell.Equations) targets.insert(equation.Target);
        std::vector<std::string> open;
        for (const std::string& target : targets)
            if (nets.contains(target)) open.push_back(target);
        while (!open.empty()) {
            const std::string target = open.back();
            open.pop_back();
            if (!needed.insert(target).second) continue;
            for (const CellEquation& equation : cell.Equations) {
                if (equation.Target != target) continue;
                for (const Token& token : equation.Value)
                    if (targets.contains(base::Upper(token.Text))) open.push_back(base::Upper(token.Text));
            }
        }
        return needed;
    }

    void TakeTarget(const Part& part, const Cell& cell, const std::map<std::string, std::string>& nets,
                    const std::string& target) {
        const auto connected = nets.find(target);
        const std::string net = connected == nets.end() ? part.Reference + "." + target : connected->second;
        Signal& signal = Of(net);
        const std::string driver = part.Reference + " pin " + target;
        if (PowerOf(net)) Fail(part.Line, driver + " drives the supply " + Shown(net));
        if (!signal.Driver.empty())
            Fail(part.Line, "the net " + Shown(net) + " is driven by " + signal.Driver + " and " + driver);
        signal.Driver = driver;
        signal.Line = part.Line;
        for (const CellEquation& equation : cell.Equations) {
            if (equation.Target != target) continue;
            const auto resolve = [&](const std::string& pin) {
                const std::string read = NetOf(part, cell, nets, pin);
                if (const auto power = PowerOf(read)) return Formula::Constant(*power);
                Of(read).IsRead = true;
                if (equation.Extension.empty()) signal.Reads.insert(read);
                return Formula::Name(names_.Of(read));
            };
            // A constant for these is what every register and output has without an equation.
            Formula value = FormulaReader(equation, resolve).Read();
            const bool isEnable = equation.Extension == "OE";
            const bool isReset = equation.Extension == "AR" || equation.Extension == "AP";
            if (isEnable ? value.Value() == true : isReset && value.Value() == false) continue;
            if (isEnable) signal.IsPin = true;
            signal.Equations.emplace(equation.Extension, std::move(value));
        }
    }

    static std::string NetOf(const Part& part, const Cell& cell,
                             const std::map<std::string, std::string>& nets, const std::string& pin) {
        if (const auto net = nets.find(pin); net != nets.end()) return net->second;
        const bool isTarget = std::any_of(cell.Equations.begin(), cell.Equations.end(),
                                          [&](const CellEquation& other) { return other.Target == pin; });
        if (!isTarget) Fail(part.Line, "the input " + pin + " of " + part.Reference + " is not connected");
        return part.Reference + "." + pin;
    }

    // Combinational gates in a ring keep a state that no equation tells. Signals are taken off whose inputs
    // are all taken off; a ring is what stays.
    void CheckLoops() {
        std::map<std::string, std::size_t> waits;
        std::map<std::string, std::vector<std::string>> readers;
        std::vector<std::string> ready;
        for (const auto& [net, signal] : signals_) {
            for (const std::string& read : signal.Reads) readers[read].push_back(net);
            waits[net] = signal.Reads.size();
            if (signal.Reads.empty()) ready.push_back(net);
        }
        while (!ready.empty()) {
            const std::string net = ready.back();
            ready.pop_back();
            waits.erase(net);
            for (const std::string& reader : readers[net])
                if (--waits[reader] == 0) ready.push_back(reader);
        }
        if (waits.empty()) return;
        const Signal& first = signals_.at(waits.begin()->first);
        Fail(first.Line,
             "gates form a ring through " + first.Driver + " and the net " + Shown(waits.begin()->first));
    }

    // What comes from nowhere or goes nowhere is a pin, as is what the netlist leads out.
    void Declare(PldFile& file) {
        for (auto& [net, signal] : signals_) {
            if (PowerOf(net)) continue;
            const bool isRegister = signal.Equations.contains("CK") || signal.Equations.contains("LE");
            const bool isInside = net.find('.') != net.npos && !signal.IsPin;
            if (signal.IsPin || signal.Equations.empty() || (!signal.IsRead && !isInside))
                file.Pins.push_back({names_.Of(net)});
            else if (isRegister)
                file.Nodes.push_back(names_.Of(net));
        }
    }

    const Netlist& netlist_;
    const CellLibrary& library_;
    NameMaker names_;
    std::map<std::string, Signal> signals_;
};

}  // namespace

Conversion ConvertNetlist(std::string_view text, const std::string& name, std::string_view cells) {
    const auto start = text.find_first_not_of(" \t\r\n");
    const bool isEdif = start != text.npos && base::EqualNoCase(text.substr(start, 5), "(edif");
    const Netlist netlist = isEdif ? ReadEdif(text) : ReadProtel(text);
    std::optional<CellLibrary> library;
    try {
        library.emplace(cells);
    } catch (const Failure& failure) {
        Fail(0, "the cell library, line " + std::to_string(failure.Line) + ": " + failure.What);
    }
    PldFile file = Builder(netlist, *library).Build();
    file.Name = netlist.Name.empty() ? name : netlist.Name;
    file.Origin = "Made from the netlist " + name;
    return {file.Text(), {}};
}

}  // namespace convert
