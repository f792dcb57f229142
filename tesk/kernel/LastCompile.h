#pragma once

#include <optional>
#include <string>
#include <string_view>

// With which option letters a design was compiled last. The run driver clears all outputs of a design away
// before it simulates, so that none of them could tell: the letters are kept for the user, in
// $XDG_STATE_HOME/tesk/letters, by default below ~/.local/state. What can't be kept or read is not known.
namespace kernel {

// `design`: one name for one design, see Files::Identity.
void KeepLetters(std::string_view design, std::string_view letters);
std::optional<std::string> KeptLetters(std::string_view design);

}  // namespace kernel
