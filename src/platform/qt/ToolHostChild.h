#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "platform/toolhost/Protocol.h"

namespace platform::qt {

// The running tool host: its process and the line to it.
class ToolHostChild {
  public:
    // Starts the host program, a host path. A program that can't be started counts as ended.
    explicit ToolHostChild(const std::string& program);
    ~ToolHostChild();  // hangs up, and ends the process if it does not end by itself
    ToolHostChild(const ToolHostChild&) = delete;
    ToolHostChild& operator=(const ToolHostChild&) = delete;

    bool Send(toolhost::FrameKind kind, std::initializer_list<std::string_view> parts);

    // Waits at most so many milliseconds for the next frame. `Closed` also if the process has ended and all
    // that it sent has been taken.
    toolhost::Channel::State Receive(toolhost::Frame& frame, int milliseconds);

    // After `Closed`: ends what is left and tells how it ended, such as "signal 11 (Segmentation fault)".
    std::string End();

  private:
    bool HasEnded();

    int line_ = -1;
    pid_t process_ = -1;
    std::optional<int> status_;  // as waitpid gives it
    toolhost::Channel channel_;
};

}  // namespace platform::qt
