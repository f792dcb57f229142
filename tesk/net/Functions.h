#pragma once

#include <vector>

#include "net/Blif.h"
#include "net/Sum.h"

namespace net {

enum class Source { Nothing, Input, Gate, Register, Driver };

// The functions of a netlist over its leaves: ports that come in, registers, three-state pins, and the nets
// that had to become nodes, because a sum was too long or because logic feeds back on itself.
class Functions {
  public:
    // `maxTerms`: of a sum, unless a gate alone has more. Throws convert::Failure for a net that both a
    // three-state driver and something else drive, or two drivers.
    Functions(const Netlist& netlist, std::size_t maxTerms);

    int Root(int net) const;  // the net that it is a copy of
    Source SourceOf(int net) const { return sources_[Index(net)].Kind; }
    int Index(int net, Source kind) const;  // of the gate, register or driver behind it; -1: another source

    // Over leaves; what feeds back on itself has itself as leaf where it is used.
    const Function& Of(int net);
    Function Of(const Control& control);
    // Of a node or loop, over the leaves of its gate.
    const Function& Behind(int net) const { return functions_[Index(net)]; }

    const std::vector<int>& Nodes() const { return nodes_; }  // split off, in the order of their making
    const std::vector<int>& Loops() const { return loops_; }
    bool IsLeaf(int net) const { return isLeaf_[Index(net)]; }
    std::size_t Limit() const { return limit_; }

  private:
    struct Origin {
        Source Kind = Source::Nothing;
        int Index = -1;
    };
    enum class Mark : char { New, Open, Done };

    static std::size_t Index(int net) { return static_cast<std::size_t>(net); }
    void Set(int net, Source kind, std::size_t index, int line);
    const Function& Seen(int net);
    void Visit(int net);
    void Compute(const Gate& gate);
    Function Combine(const Gate& gate);
    bool IsShort(const Function& function) const;
    int Largest(const Gate& gate);
    const Gate* InverterAt(int net) const;
    Function LeafOf(int net) const;

    const Netlist& netlist_;
    std::size_t maxTerms_, limit_;
    std::vector<Origin> sources_;
    std::vector<Function> functions_;
    std::vector<Mark> marks_;
    std::vector<bool> isLeaf_;
    std::vector<Function> leaves_;
    std::vector<std::pair<int, std::size_t>> stack_;
    std::vector<int> nodes_, loops_;
};

}  // namespace net
