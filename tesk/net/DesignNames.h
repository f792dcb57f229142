#pragma once

#include <set>
#include <string>

#include "net/Design.h"

namespace net {

// The nets' names in the source and in the design, and the ports' pins.
class DesignNames {
  public:
    // What is renamed goes into the design's list and its notes.
    DesignNames(const Netlist& netlist, const Wishes& wishes, Design& design);

    // The name in the design; a net that the source does not name gets N1, N2, ...
    const std::string& Of(int net);
    std::string Source(int net) const;
    // The number that the user gave the port, 0 without one. Tells of numbers that do not fit.
    int PinOf(int port);
    // Tells of numbers for what is no port.
    void DemandPinsUsed();
    bool IsUnknown(int net) const { return NameOf(net) == "$undef"; }

  private:
    // "q[3]" is bit 3 of "q".
    struct Parts {
        std::string Base;
        std::string Index;  // without brackets, empty for a single net
    };
    const std::string& NameOf(int net) const { return netlist_.Names[static_cast<std::size_t>(net)]; }
    Parts PartsOf(int net) const;

    const Netlist& netlist_;
    const Wishes& wishes_;
    Design& design_;
    convert::NameMaker maker_;
    std::map<int, std::string> names_;
    std::map<std::string, std::vector<int>> bits_;  // of the ports by base name, lower case; the left first
    std::set<std::string> used_;                    // of the user's pins
    int numbered_ = 0;
};

}  // namespace net
