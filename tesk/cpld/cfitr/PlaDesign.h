#pragma once

#include <string_view>

#include "front/Design.h"

// The design of a Berkeley table in the form that the compiler writes for complex devices: outputs "Q0",
// "Q0.D", "Q0.CK", columns "Q0", "Q0.IO", and in comments the device and where each name is: "# PIN 3 !Q0",
// "# NODE 0 STATE". Names without such a line are pins that the fitter places. Throws base::RunTimeError
// where the text is no such table.
front::Design ReadPlaDesign(std::string_view text);
