#pragma once

#include <string>
#include <string_view>

#include "platform/Dialogs.h"

namespace shell {

// The help topic of a form, by its name; null if it has none.
const char* HelpTopicOf(std::string_view form);

void ShowHelpTopic(platform::Dialogs& boxes, const std::string& topic);

}  // namespace shell
