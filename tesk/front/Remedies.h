#pragma once

#include <set>
#include <string>
#include <vector>

#include "fit/Fitter.h"
#include "front/Design.h"
#include "front/Messages.h"
#include "front/Options.h"

namespace front {

// Tries harder reductions on the sums that messages of the fitter call too long, and adds to each message
// what lets its sum fit ("; fits with m4"), or that nothing does. Sums that would take too long are left as
// they are, which is told as well. Gives the names that a reduction helps.
std::set<std::string> AddRemedies(const Design& design, const Options& options, const fit::Device& device,
                                  std::vector<Message>& messages);

}  // namespace front
