#pragma once

#include <vector>

#include "front/Design.h"
#include "front/Network.h"
#include "front/Options.h"
#include "front/Report.h"
#include "front/Syntax.h"

namespace front {

// What the equations, tables and state machines say of one variable and extension.
struct Definition {
    int Variable = 0;
    Extension To = Extension::None;
    NodeId On = Network::zero;
    NodeId DontCare = Network::zero;
    Place At;
};

// A design with its names resolved. `Result` has no equations yet; its device is told before.
struct Analysis {
    Design Result;
    Network Gates;
    std::vector<Definition> Definitions;  // of pins and nodes, by variable and extension
    std::vector<NodeId> Intermediates;    // by variable; of those that are no intermediate Network::zero
};

void Analyse(const Syntax& syntax, const Options& options, Report& report, Analysis& analysis);

}  // namespace front
