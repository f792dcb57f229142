#include "net/Blif.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "base/Text.h"
#include "convert/Failure.h"
#include "net/Cells.h"

namespace net {
namespace {

using convert::Fail;
using convert::Shown;

class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {
        if (text.size() > MaxNetlistBytes) Fail(0, "the netlist is larger than 256 MB");
    }

    Netlist Read() {
        while (!isDone_ && NextLine()) {
            if (words_[0].starts_with('.'))
                Command();
            else
                Row();
        }
        if (line_ == 0 || !hasModel_) Fail(0, "this is no netlist: no .model");
        if (!isDone_) Fail(line_, "the netlist ends before its .end");
        return std::move(netlist_);
    }

  private:
    // The words of the next line that has any, continued lines put together.
    bool NextLine() {
        words_.clear();
        while (words_.empty() && !rest_.empty()) {
            for (bool goesOn = true; goesOn && !rest_.empty();) {
                ++line_;
                std::string_view line = base::TrimView(base::TakeLine(rest_));
                if (const auto comment = line.find('#'); comment == 0) line = {};
                goesOn = line.ends_with('\\');
                if (goesOn) line.remove_suffix(1);
                for (const std::string_view word : base::Words(line)) words_.push_back(word);
            }
        }
        return !words_.empty();
    }

    int Net(std::string_view name) {
        const auto [at, isNew] = nets_.try_emplace(name, static_cast<int>(netlist_.Names.size()));
        if (isNew) {
            if (netlist_.Names.size() >= MaxNets) Fail(line_, "the netlist has more than 4000000 nets");
            netlist_.Names.emplace_back(name);
            driven_.push_back(false);
        }
        return at->second;
    }
    int Driven(std::string_view name) {
        const int net = Net(name);
        if (driven_[static_cast<std::size_t>(net)])
            Fail(line_, "the signal " + Shown(name) + " is driven from two places");
        driven_[static_cast<std::size_t>(net)] = true;
        return net;
    }

    void Need(std::size_t least) {
        if (words_.size() < least) Fail(line_, Shown(words_[0]) + " lacks something");
    }

    void Command() {
        const std::string_view what = words_[0];
        isInNames_ = false;
        if (what == ".model")
            Model();
        else if (!hasModel_)
            Fail(line_, "this is no netlist: .model comes first");
        else if (what == ".inputs" || what == ".outputs")
            Ports(what == ".inputs" ? netlist_.Inputs : netlist_.Outputs);
        else if (what == ".names")
            Names();
        else if (what == ".conn")
            Connection();
        else if (what == ".latch")
            Latch();
        else if (what == ".subckt" || what == ".gate")
            Cell();
        else if (what == ".end")
            isDone_ = true;
        else if (what != ".attr" && what != ".param" && what != ".cname")
            Fail(line_, Shown(what) + " is not taken");
    }

    void Model() {
        if (hasModel_) Fail(line_, "a second model: the hierarchy must be flattened");
        hasModel_ = true;
        if (words_.size() > 1) netlist_.Model = words_[1];
    }

    void Ports(std::vector<int>& ports) {
        for (std::size_t i = 1; i < words_.size(); ++i) ports.push_back(Net(words_[i]));
    }

    void Names() {
        Need(2);
        if (words_.size() - 2 > MaxGateInputs) Fail(line_, "a gate has more than 64 inputs");
        Gate gate;
        gate.Line = line_;
        for (std::size_t i = 1; i + 1 < words_.size(); ++i) gate.Inputs.push_back(Net(words_[i]));
        gate.Output = Driven(words_.back());
        netlist_.Gates.push_back(std::move(gate));
        isInNames_ = true;
    }

    void Connection() {
        Need(3);
        const int from = Net(words_[1]);
        netlist_.Gates.push_back({Driven(words_[2]), {from}, "1", true, line_});
    }

    void Row() {
        if (!isInNames_) Fail(line_, Shown(words_[0]) + " is not taken here");
        Gate& gate = netlist_.Gates.back();
        const std::string_view plane = gate.Inputs.empty() ? "1" : words_[0];
        const std::string_view value = words_.back();
        if (words_.size() != (gate.Inputs.empty() ? 1u : 2u) || (value != "0" && value != "1") ||
            (!gate.Inputs.empty() && plane.size() != gate.Inputs.size()) ||
            plane.find_first_not_of("01-") != plane.npos)
            Fail(line_, "this is no row of a gate: " + Shown(words_[0]));
        if (!gate.Rows.empty() && gate.Value != (value == "1"))
            Fail(line_, "a gate has rows for 1 and for 0");
        gate.Value = value == "1";
        gate.Rows += plane;
    }

    void Latch() {
        Need(3);
        Register reg;
        reg.Line = line_;
        reg.Data = Net(words_[1]);
        reg.Output = Driven(words_[2]);
        const bool hasKind = words_.size() >= 5;
        if (hasKind) {
            const std::string_view kind = words_[3];
            if (kind != "re" && kind != "fe" && kind != "ah" && kind != "al")
                Fail(line_, "the register kind " + Shown(kind) + " is not taken");
            reg.IsLatch = kind[0] == 'a';
            reg.Clock = {Net(words_[4]), kind == "fe" || kind == "al"};
        }
        if (words_.size() > (hasKind ? 5u : 3u)) reg.StartsAtOne = words_.back() == "1";
        netlist_.Registers.push_back(reg);
    }

    void Cell() {
        Need(3);
        const std::optional<CellPorts> ports = PortsOf(words_[1]);
        if (!ports) Fail(line_, "the cell " + Shown(words_[1]) + " is not taken");
        Register reg;
        Driver driver;
        reg.Line = driver.Line = line_;
        const auto join = [&](const CellPort& port, std::string_view name) {
            switch (port.Role) {
                case CellRole::Data:
                    reg.Data = driver.Data = Net(name);
                    break;
                case CellRole::Output:
                    reg.Output = driver.Output = ports->IsDriver ? Net(name) : Driven(name);
                    break;
                default:
                    ControlOf(port.Role, reg) = {Net(name), port.Inverted};
            }
        };
        for (std::size_t i = 2; i < words_.size(); ++i) {
            const std::size_t cut = words_[i].find('=');
            const CellPort* port = ports->Find(words_[i].substr(0, cut));
            if (port == nullptr || cut == words_[i].npos)
                Fail(line_, "the cell " + Shown(words_[1]) + " has no " + Shown(words_[i]));
            join(*port, words_[i].substr(cut + 1));
        }
        AddCell(*ports, reg, driver);
    }

    void AddCell(const CellPorts& ports, Register& reg, Driver& driver) {
        if (reg.Data == NoNet || reg.Output == NoNet) Fail(line_, "a cell without data or output");
        if (ports.IsDriver) {
            driver.Enable = reg.Enable;
            if (!driver.Enable.IsThere()) Fail(line_, "a three-state driver without an enable");
            netlist_.Drivers.push_back(driver);
        } else {
            reg.IsLatch = ports.IsLatch;
            netlist_.Registers.push_back(reg);
        }
    }

    std::string_view rest_;
    std::vector<std::string_view> words_;
    int line_ = 0;
    bool hasModel_ = false, isDone_ = false, isInNames_ = false;
    Netlist netlist_;
    std::unordered_map<std::string_view, int> nets_;
    std::vector<bool> driven_;
};

}  // namespace

Netlist ReadBlif(std::string_view text) { return Reader(text).Read(); }

}  // namespace net
