#include <algorithm>

#include "sim/Logic3.h"
#include "sim/Machine.h"

namespace sim {
namespace {

// Strongly connected components of a graph, dependencies first. Works without recursion: a chain of logic may
// be as long as the design has nets.
class Components {
  public:
    explicit Components(const std::vector<std::vector<std::size_t>>& edges)
        : edges_(edges), number_(edges.size(), 0), low_(edges.size(), 0), onStack_(edges.size(), false) {
        for (std::size_t node = 0; node < edges.size(); ++node) {
            if (number_[node] == 0) Visit(node);
        }
    }

    std::vector<std::vector<std::size_t>> Result;

  private:
    void Enter(std::size_t node) {
        low_[node] = number_[node] = ++count_;
        stack_.push_back(node);
        onStack_[node] = true;
        path_.push_back({node, 0});
    }

    void Visit(std::size_t root) {
        Enter(root);
        while (!path_.empty()) {
            const auto node = path_.back().first;
            if (path_.back().second < edges_[node].size()) {
                const auto next = edges_[node][path_.back().second++];
                if (number_[next] == 0) {
                    Enter(next);
                } else if (onStack_[next]) {
                    low_[node] = std::min(low_[node], number_[next]);
                }
                continue;
            }
            path_.pop_back();
            if (!path_.empty()) low_[path_.back().first] = std::min(low_[path_.back().first], low_[node]);
            if (low_[node] == number_[node]) Close(node);
        }
    }

    void Close(std::size_t root) {
        Result.emplace_back();
        std::size_t node = 0;
        do {
            node = stack_.back();
            stack_.pop_back();
            onStack_[node] = false;
            Result.back().push_back(node);
        } while (node != root);
    }

    const std::vector<std::vector<std::size_t>>& edges_;
    std::vector<std::size_t> number_;
    std::vector<std::size_t> low_;
    std::vector<bool> onStack_;
    std::vector<std::size_t> stack_;
    std::vector<std::pair<std::size_t, std::size_t>> path_;  // node, edges already followed
    std::size_t count_ = 0;
};

Value PowerUp(const Net& net) {
    if (net.Register == RegisterKind::None) return Value::Unknown;
    return net.PowerUp == '0' ? Value::Zero : net.PowerUp == '1' ? Value::One : Value::Unknown;
}

}  // namespace

Machine::Machine(const AbsDesign& design)
    : design_(design),
      logic_(design.Nets.size()),
      gates_(design),
      position_(design.Nets.size(), Marks::None),
      clockSupport_(design.Nets.size(), false),
      external_(design.Nets.size(), Value::HighZ) {
    for (const Net& net : design.Nets)
        now_.push_back(net.Kind == NetKind::Input ? Value::HighZ : Value::Unknown);
    for (std::size_t net = 0; net < design.Nets.size(); ++net) {
        now_.push_back(PowerUp(design.Nets[net]));
        if (!IsClocked(net)) continue;
        clocked_.push_back(net);
        if (!gates_.Has(net, Input::Ck)) usesDefaultClock_ = true;
    }
    FindOrder();
    FindReaders();
    FindClockSupport();
    due_.SetAll();
    Trouble ignored;
    Settle(ignored);
    for (const auto net : clocked_) clocks_.push_back(ClockOf(net));
}

// The nets that decide on a net's value while the registers stand still.
std::vector<std::size_t> Machine::SettleDependencies(std::size_t net) const {
    return gates_.Support(net, {Input::Out, Input::Oe, Input::L, Input::Le, Input::Ar, Input::Ap});
}

void Machine::FindOrder() {
    std::vector<std::vector<std::size_t>> edges;
    for (std::size_t net = 0; net < design_.Nets.size(); ++net) edges.push_back(SettleDependencies(net));
    for (auto& component : Components(edges).Result) {
        std::sort(component.begin(), component.end());
        const auto first = component.front();
        const bool self = std::binary_search(edges[first].begin(), edges[first].end(), first);
        for (const auto net : component) {
            if (component.size() > 1 || self) looping_.push_back(net);
            if (design_.Nets[net].Kind == NetKind::Input) continue;
            position_[net] = order_.size();
            order_.push_back(net);
        }
    }
}

Machine::Readers Machine::ReadersOf(const std::vector<std::vector<std::size_t>>& read, std::size_t nets) {
    Readers readers;
    readers.Begin.assign(nets + 1, 0);
    for (const auto& one : read)
        for (const std::size_t net : one) ++readers.Begin[net + 1];
    for (std::size_t net = 0; net < nets; ++net) readers.Begin[net + 1] += readers.Begin[net];
    readers.Places.resize(readers.Begin[nets]);
    std::vector<std::size_t> filled = readers.Begin;
    for (std::size_t place = 0; place < read.size(); ++place)
        for (const std::size_t net : read[place]) readers.Places[filled[net]++] = place;
    return readers;
}

void Machine::FindReaders() {
    std::vector<std::vector<std::size_t>> read;
    for (const std::size_t net : order_) read.push_back(SettleDependencies(net));
    settles_ = ReadersOf(read, design_.Nets.size());
    read.clear();
    for (const std::size_t net : clocked_) read.push_back(gates_.Support(net, {Input::Ck}));
    clocksOf_ = ReadersOf(read, design_.Nets.size());
    due_ = next_ = Marks(order_.size());
    clockDue_ = Marks(clocked_.size());
}

void Machine::FindClockSupport() {
    std::vector<std::size_t> open;
    const auto add = [&](const std::vector<std::size_t>& nets) {
        open.insert(open.end(), nets.begin(), nets.end());
    };
    for (const std::size_t net : clocked_) add(gates_.Support(net, {Input::Ck}));
    while (!open.empty()) {
        const auto net = open.back();
        open.pop_back();
        if (clockSupport_[net]) continue;
        clockSupport_[net] = true;
        add(gates_.Support(net, {Input::Out, Input::Oe}));
    }
}

}  // namespace sim
