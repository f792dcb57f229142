#pragma once

#include <string>
#include <string_view>

#include "convert/Failure.h"

// The converters: the text of a foreign design in, a design of this system out. `name` is the file's name
// without folder and extension. All throw Failure.
namespace convert {

Conversion ConvertPla(std::string_view text, const std::string& name);
Conversion ConvertPalasm(std::string_view text, const std::string& name);
Conversion ConvertOntesk(std::string_view text, const std::string& name);
Conversion ConvertAhdl(std::string_view text, const std::string& name);
// EDIF or Protel; `cells` is the text of the cell library, whose faults are failures as well.
Conversion ConvertNetlist(std::string_view text, const std::string& name, std::string_view cells);

}  // namespace convert
