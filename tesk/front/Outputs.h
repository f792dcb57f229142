#pragma once

#include <optional>
#include <string>

#include "front/Design.h"
#include "front/Fitting.h"
#include "front/Options.h"
#include "front/Report.h"
#include "front/Source.h"
#include "sim/AbsFile.h"

// The texts of the outputs, lines ended by CR LF. The same for the same input.
namespace front {

// .LST: the design with numbered lines and the messages under them; messages of other files at the end.
std::string ListText(const Source& source, const Report& report);

// .MX: the text after the preprocessor. Before a line that does not follow the one before it in the user's
// text stands a comment /*$LINE file number*/, which the preprocessor understands.
std::string ExpandedText(const Source& source, const Report& report);

// .DOC: header, product terms (option "x"), symbol table, fuse plot (option "f"), chip diagram. `fitted` is
// null for a virtual device.
std::string DocumentText(const Design& design, const Options& options, const Fitted* fitted);

// .PLA: Berkeley format, type fd; nothing if it would exceed `Limits::PlaBytes`. Columns and outputs are in
// asserted states and carry the names of the design: "Q0", "Q0.IO", "Q0.D".
std::optional<std::string> PlaText(const Design& design);

// What the simulator takes: the equations, and what the device adds to them.
sim::AbsDesign ToAbs(const Design& design, const Fitted* fitted);

// .JED; the header's statements are its notes.
std::string JedecText(const Design& design, const Options& options, const Fitted& fitted);

// .PDS: the equations for the pin list and equation language of PAL assemblers; names declared with "/" are
// active low, as here.
std::string PdsText(const Design& design);
// Why the format cannot say what the design does; empty if it can.
std::string PdsObstacle(const Design& design);

// .EDF: an EDIF 2.0.0 netlist of gates and registers.
std::string EdifText(const Design& design);

// .XNF: a netlist with D flip-flops and latches; nothing if a register has synchronous reset or preset, which
// the format's symbols lack.
std::optional<std::string> XnfText(const Design& design);

}  // namespace front
