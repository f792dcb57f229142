#pragma once

#include <string>
#include <string_view>

#include "platform/Host.h"
#include "session/Session.h"

// The configuration file KORVANE.CFG of the program directory: the four option strings of the tool chain and
// the keyword table. A sequence of texts, each with its length in bytes before it (16-bit, little-endian):
// version mark, CompilerFlags, SimulatorFlags, VhdlFlags, PartitionFlags, top index of Keywords, then name
// and colour of each keyword. Numbers are decimal text. Of a keyword only name and colour are kept.
namespace shell {

void DefaultConfig(session::Session& state);

// Never throws: a missing file gives the defaults, a damaged or unreadable one a message and the defaults.
void ReadConfig(session::Session& state, const platform::Host& host);

// Keeps the bytes of a longer old file behind the new end. Errors of the file system are the caller's.
void WriteConfig(const session::Session& state, const platform::Host& host);

// The contents of the file, without the file. ParseConfig raises 13 (not a number), 6 (a number out of range)
// or 9 (a negative top index) and may then have changed the state in part; ConfigBytes raises 6 for a text
// above 65535 bytes.
void ParseConfig(std::string_view bytes, session::Session& state);
std::string ConfigBytes(const session::Session& state);

}  // namespace shell
