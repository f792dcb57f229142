#pragma once

#include "net/Blif.h"

namespace net {

// Ports that are off behind several choices get one driver each, with the data and the enable of all of them:
// the synthesis knows a driver for one choice alone. Drivers within the design become copies of their data.
// Throws convert::Failure if the choices are too deep.
void ResolveThreeState(Netlist& netlist);

}  // namespace net
