#include "net/DesignNames.h"

#include <algorithm>

#include "base/Text.h"
#include "base/modLib.h"

namespace net {

DesignNames::DesignNames(const Netlist& netlist, const Wishes& wishes, Design& design)
    : netlist_(netlist), wishes_(wishes), design_(design) {
    std::set<int> seen;
    for (const auto* ports : {&netlist.Inputs, &netlist.Outputs}) {
        for (const int port : *ports) {
            if (!seen.insert(port).second) continue;
            auto& bits = bits_[base::Lower(PartsOf(port).Base)];
            bits.insert(bits.begin(), port);  // ports begin with the bit at the right
            Of(port);
        }
    }
}

DesignNames::Parts DesignNames::PartsOf(int net) const {
    std::string name = NameOf(net);
    if (name.starts_with('\\')) name.erase(0, 1);
    const std::size_t open = name.rfind('[');
    Parts parts{name, ""};
    if (open != name.npos && name.ends_with(']'))
        parts = {name.substr(0, open), name.substr(open + 1, name.size() - open - 2)};
    // What ghdl names itself.
    if (wishes_.IsVhdl && name[0] == 'n' && name.find_first_not_of("0123456789", 1) == name.find('_') &&
        name.size() > 2 && base::IsDigitChar(name[1]) && !wishes_.SignalNames.contains(parts.Base))
        parts.Base = "$" + parts.Base;
    if (const auto known = wishes_.SignalNames.find(parts.Base); known != wishes_.SignalNames.end())
        parts.Base = known->second;
    return parts;
}

std::string DesignNames::Source(int net) const {
    const Parts parts = PartsOf(net);
    if (const auto made = names_.find(net); parts.Base.starts_with('$') && made != names_.end())
        return made->second;
    if (parts.Index.empty()) return parts.Base;
    return parts.Base + (wishes_.IsVhdl ? "(" + parts.Index + ")" : "[" + parts.Index + "]");
}

const std::string& DesignNames::Of(int net) {
    const auto [at, isNew] = names_.emplace(net, "");
    if (!isNew) return at->second;
    const Parts parts = PartsOf(net);
    const std::string plain = base::Upper(parts.Base + parts.Index);
    const bool isMade = parts.Base.starts_with('$');
    at->second = maker_.Of(NameOf(net), isMade ? "N" + std::to_string(++numbered_) : plain);
    if (isMade) return at->second;
    if (at->second != plain) design_.Notes.push_back(Say("0404vh", Source(net) + " is " + at->second));
    if (at->second != Source(net)) design_.SourceNames[at->second] = Source(net);
    return at->second;
}

int DesignNames::PinOf(int port) {
    const Parts parts = PartsOf(port);
    const std::string base = base::Lower(parts.Base);
    const std::string single = base + "(" + parts.Index + ")";
    if (const auto at = wishes_.Pins.find(single); !parts.Index.empty() && at != wishes_.Pins.end()) {
        used_.insert(single);
        if (at->second.size() == 1) return at->second[0];
        design_.Notes.push_back(Say("0502vh", Source(port)));
        return 0;
    }
    const auto at = wishes_.Pins.find(base);
    if (at == wishes_.Pins.end()) return 0;
    const std::vector<int>& bits = bits_.at(base);
    const bool isFirst = used_.insert(base).second;
    if (at->second.size() != bits.size()) {
        if (isFirst) design_.Notes.push_back(Say("0502vh", parts.Base));
        return 0;
    }
    return at->second[static_cast<std::size_t>(std::find(bits.begin(), bits.end(), port) - bits.begin())];
}

void DesignNames::DemandPinsUsed() {
    for (const auto& [name, numbers] : wishes_.Pins)
        if (!used_.contains(name)) design_.Notes.push_back(Say("0501vh", name));
}

}  // namespace net
