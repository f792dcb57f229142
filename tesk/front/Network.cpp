#include "front/Network.h"

#include <array>

namespace front {

Network::Network() {
    Add(Gate::Zero, 0);
    Add(Gate::One, 0);
    Add(Gate::NoConnect, 0);
}

NodeId Network::Add(Gate what, std::uint32_t operand) {
    nodes_.push_back({what, operand, 0});
    return static_cast<NodeId>(nodes_.size() - 1);
}

NodeId Network::AddGate(Gate what, std::span<const NodeId> kids) {
    const NodeId id = Add(what, static_cast<std::uint32_t>(kids_.size()));
    nodes_[id].Count = static_cast<std::uint32_t>(kids.size());
    kids_.insert(kids_.end(), kids.begin(), kids.end());
    return id;
}

std::span<const NodeId> Network::Kids(NodeId node) const {
    return std::span(kids_).subspan(nodes_[node].First, nodes_[node].Count);
}

NodeId Network::Not(NodeId node) {
    switch (What(node)) {
        case Gate::Zero:
            return one;
        case Gate::One:
            return zero;
        case Gate::NoConnect:
            return noConnect;
        case Gate::Not:
            return Kids(node)[0];
        default:
            return AddGate(Gate::Not, std::array{node});
    }
}

NodeId Network::And(std::span<const NodeId> kids) {
    scratch_.clear();
    bool never = false;
    for (NodeId kid : kids) {
        if (kid == noConnect) return noConnect;
        never = never || kid == zero;
        if (kid != one) scratch_.push_back(kid);
    }
    if (never) return zero;
    if (scratch_.empty()) return one;
    return scratch_.size() == 1 ? scratch_[0] : AddGate(Gate::And, scratch_);
}

NodeId Network::Or(std::span<const NodeId> kids) {
    scratch_.clear();
    bool dropped = false;
    for (NodeId kid : kids) {
        if (kid == one) return one;
        dropped = dropped || kid == noConnect;
        if (kid != zero && kid != noConnect) scratch_.push_back(kid);
    }
    if (scratch_.empty()) return dropped && !kids.empty() ? noConnect : zero;
    return scratch_.size() == 1 ? scratch_[0] : AddGate(Gate::Or, scratch_);
}

NodeId Network::Xor(std::span<const NodeId> kids) {
    scratch_.clear();
    bool inverted = false;
    bool dropped = false;
    for (NodeId kid : kids) {
        inverted ^= kid == one;
        dropped = dropped || kid == noConnect;
        if (kid != zero && kid != one && kid != noConnect) scratch_.push_back(kid);
    }
    if (scratch_.empty()) return dropped ? noConnect : inverted ? one : zero;
    const NodeId rest = scratch_.size() == 1 ? scratch_[0] : AddGate(Gate::Xor, scratch_);
    return inverted ? Not(rest) : rest;
}

void Network::Renumber(const std::vector<std::uint32_t>& to) {
    for (Node& node : nodes_)
        if (node.What == Gate::Signal) node.First = to[node.First];
}

std::vector<bool> Network::UsedIntermediates(std::size_t variables) const {
    std::vector<bool> used(variables);
    for (const Node& node : nodes_)
        if (node.What == Gate::Intermediate) used[node.First] = true;
    return used;
}

NodeId Network::Pair(NodeId function, NodeId complement) {
    if (function <= noConnect) return function;
    return AddGate(Gate::Pair, std::array{function, complement});
}

}  // namespace front
