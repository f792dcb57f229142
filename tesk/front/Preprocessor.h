#pragma once

#include <string_view>

#include "front/Files.h"
#include "front/Report.h"
#include "front/Source.h"

namespace front {

// Reads the design and carries out its `$` commands: the text goes to `source.Lines`. Faults are reported.
void Preprocess(std::string_view path, Files& files, Report& report, Source& source);

// True if the text begins with one of the commands: a `$` there is no exclusive or.
bool IsCommandLine(std::string_view text);

}  // namespace front
