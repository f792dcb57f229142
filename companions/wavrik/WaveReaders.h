#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "wavrik/Waves.h"

// The three files that are shown. Each reader takes any bytes, and throws base::RunTimeError "line n: …" for
// those that are no such file or only a part of one.
namespace wavrik {

// The members of a field, as a design declares them.
using Fields = std::map<std::string, std::vector<std::string>, std::less<>>;

// The fields that a design declares: `FIELD name = [list];`. What can't be understood is passed over.
Fields ReadFields(std::string_view design);

// Test vectors (.SI) with what they drive and expect. What they are about docs/help/TeskRef.md tells.
Waves ReadTests(std::string_view text, const Fields& fields);

// The simulator's list (.SO): the names from top to bottom above the columns, a line for each vector,
// "0001: 1C LLHH", under it a line for each mismatch, at the end how many of both there are.
Waves ReadResults(std::string_view text);

// A value change dump (.VCD, IEEE 1364).
Waves ReadDump(std::string_view text);

// "[A, B3..0]" or a name, blanks anywhere, as single names; a name of `fields` stands for its members. Empty
// for anything else and for more than `MostMembers`.
inline constexpr std::size_t MostMembers = 1024;
std::vector<std::string> ExpandList(std::string_view list, const Fields& fields);

// The text with its comments /* … */ made blanks; line ends stay. Quotes protect up to the end of their line.
// Throws for a comment without end.
std::string WithoutComments(std::string_view text);

}  // namespace wavrik
