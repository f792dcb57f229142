#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace front {

enum class Gate : std::uint8_t {
    Zero,
    One,
    NoConnect,     // a product term with it is dropped
    Signal,        // Operand: index into Design::Signals
    Intermediate,  // Operand: index into Design::Variables
    Not,
    And,
    Or,
    Xor,
    Pair,  // two kids: a function and its complement, both known as sums
};

using NodeId = std::uint32_t;

// The expressions of a design as a network of gates, each of them 1 bit. The makers fold constants and
// "no connection" away.
class Network {
  public:
    static constexpr NodeId zero = 0;
    static constexpr NodeId one = 1;
    static constexpr NodeId noConnect = 2;

    Network();

    NodeId Signal(std::uint32_t signal) { return Add(Gate::Signal, signal); }
    NodeId Intermediate(std::uint32_t variable) { return Add(Gate::Intermediate, variable); }
    NodeId Not(NodeId node);
    NodeId And(std::span<const NodeId> kids);
    NodeId Or(std::span<const NodeId> kids);
    NodeId Xor(std::span<const NodeId> kids);
    NodeId Pair(NodeId function, NodeId complement);

    // Signal i becomes signal to[i].
    void Renumber(const std::vector<std::uint32_t>& to);

    std::vector<bool> UsedIntermediates(std::size_t variables) const;

    Gate What(NodeId node) const { return nodes_[node].What; }
    std::uint32_t Operand(NodeId node) const { return nodes_[node].First; }
    std::span<const NodeId> Kids(NodeId node) const;
    std::size_t Size() const { return nodes_.size() + kids_.size(); }

  private:
    struct Node {
        Gate What = Gate::Zero;
        std::uint32_t First = 0;  // operand or first kid
        std::uint32_t Count = 0;
    };
    NodeId Add(Gate what, std::uint32_t operand);
    NodeId AddGate(Gate what, std::span<const NodeId> kids);

    std::vector<Node> nodes_;
    std::vector<NodeId> kids_;
    std::vector<NodeId> scratch_;
};

}  // namespace front
