#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

#include "base/PosixFile.h"
#include "platform/toolhost/Protocol.h"

namespace platform::qt {

// The running tool host: its process, which leads a group of its own, and the line to it.
class ToolHostChild {
  public:
    // Starts the host program, a host path, which may take so many bytes of memory. A program that can't be
    // started counts as ended.
    ToolHostChild(const std::string& program, std::uint64_t memory);
    ~ToolHostChild();  // hangs up, and ends the process if it does not end by itself
    ToolHostChild(const ToolHostChild&) = delete;
    ToolHostChild& operator=(const ToolHostChild&) = delete;

    bool Send(toolhost::FrameKind kind, std::initializer_list<std::string_view> parts);

    // Waits at most so many milliseconds for the next frame. `Closed` also if the process has ended and all
    // that it sent has been taken.
    toolhost::Channel::State Receive(toolhost::Frame& frame, int milliseconds);

    // After `Closed`: ends what is left of the group and tells how the host ended, such as "signal 11
    // (Segmentation fault)".
    std::string End();

    // Ends the host and its group at once.
    void Stop();

  private:
    struct Ending {
        int Status;              // as waitpid gives it
        std::uint64_t InMemory;  // bytes, at most
    };

    void Reap();
    std::string DescribeEnd() const;
    bool WasRefusedMemory() const;

    std::uint64_t memory_;
    base::Descriptor line_;
    base::Descriptor notes_;  // where the host notes that memory was refused
    pid_t process_ = -1;
    std::optional<Ending> ending_;
    toolhost::Channel channel_;
};

}  // namespace platform::qt
