#pragma once

#include <cstdint>
#include <string>

namespace session {

// The tool chain, as other rooms see it.
class ToolChain {
  public:
    virtual ~ToolChain() = default;

    virtual std::int16_t RunAndWait(const std::string& commandLine) = 0;  // 0, or the error number
    virtual void BringMessagesToFront() = 0;
};

}  // namespace session
