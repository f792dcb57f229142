#include <algorithm>
#include <limits>

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

void AddNets(const Function* function, std::vector<std::size_t>& nets) {
    if (function == nullptr) return;
    for (const auto& term : function->Terms) {
        for (const auto& literal : term) nets.push_back(literal.Net);
    }
}

Value PowerUp(const Net& net) {
    if (net.Register == RegisterKind::None) return Value::Unknown;
    return net.PowerUp == '0' ? Value::Zero : net.PowerUp == '1' ? Value::One : Value::Unknown;
}

}  // namespace

Machine::Machine(const AbsDesign& design)
    : design_(design),
      parts_(design.Nets.size()),
      clockSupport_(design.Nets.size(), false),
      external_(design.Nets.size(), Value::HighZ) {
    for (const auto& function : design.Functions) {
        parts_[function.Net].Of[static_cast<std::size_t>(function.To)] = &function;
    }
    for (std::size_t net = 0; net < design.Nets.size(); ++net) {
        now_.Logic.push_back(PowerUp(design.Nets[net]));
        now_.Pin.push_back(design.Nets[net].Kind == NetKind::Input ? Value::HighZ : Value::Unknown);
        if (!IsClocked(net)) continue;
        clocked_.push_back(net);
        if (parts_[net][Input::Ck] == nullptr) usesDefaultClock_ = true;
    }
    FindOrder();
    FindClockSupport();
    Trouble ignored;
    Settle(ignored);
    for (const auto net : clocked_) clocks_.push_back(ClockOf(net));
}

// The nets that decide on a net's value while the registers stand still.
std::vector<std::size_t> Machine::SettleDependencies(std::size_t net) const {
    std::vector<std::size_t> nets;
    for (const auto input : {Input::Out, Input::Oe, Input::L, Input::Le, Input::Ar, Input::Ap}) {
        AddNets(parts_[net][input], nets);
    }
    std::sort(nets.begin(), nets.end());
    nets.erase(std::unique(nets.begin(), nets.end()), nets.end());
    return nets;
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
            if (design_.Nets[net].Kind != NetKind::Input) order_.push_back(net);
        }
    }
}

void Machine::FindClockSupport() {
    std::vector<std::size_t> open;
    for (const auto& parts : parts_) AddNets(parts[Input::Ck], open);
    while (!open.empty()) {
        const auto net = open.back();
        open.pop_back();
        if (clockSupport_[net]) continue;
        clockSupport_[net] = true;
        AddNets(parts_[net][Input::Out], open);
        AddNets(parts_[net][Input::Oe], open);
    }
}

}  // namespace sim
