#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "session/Records.h"

namespace session {

// The tool chain, as other rooms see it.
class ToolChain {
  public:
    virtual ~ToolChain() = default;

    virtual std::int16_t RunAndWait(const std::string& commandLine) = 0;  // 0, or the error number
    virtual void BringMessagesToFront() = 0;
    // Where frmMessage stands; nothing while it is an icon or fills the area.
    virtual std::optional<Placement> MessagesPlacement() const = 0;
};

}  // namespace session
