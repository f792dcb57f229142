#pragma once

#include <string_view>

namespace shell {

// The help topic of a form, by its name; null if it has none.
const char* HelpTopicOf(std::string_view form);

}  // namespace shell
