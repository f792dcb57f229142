#pragma once

#include <spawn.h>
#include <sys/types.h>

#include <string>
#include <vector>

#include "base/PosixFile.h"

namespace platform::qt {

// How children start here: with ordinary signals, nothing to read, and at the head of a process group.
class ChildStart {
  public:
    enum class Leads { Group, Session };  // a session has no terminal, and is a group too

    explicit ChildStart(Leads leads);
    ~ChildStart();
    ChildStart(const ChildStart&) = delete;
    ChildStart& operator=(const ChildStart&) = delete;

    // More that is done to its descriptors before it starts.
    posix_spawn_file_actions_t* Actions() { return &actions_; }
    // Gives what errno would say, 0 if the child was started.
    int Run(const std::string& program, std::vector<std::string> arguments, pid_t& child) const;

  private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
};

// Becomes readable when the child ends. Closed (-1) where the system has none to give.
base::Descriptor DescriptorOf(pid_t child);

// True if the child has ended; it stays to be reaped, and its number stays its own. True also for what is no
// child of ours.
bool HasEnded(pid_t child);

// Waits up to half a second for the child's end; false if it goes on.
bool EndsSoon(pid_t child);

// Ends a child that leads a process group, and all of the group: those whom SIGTERM does not end within half
// a second are killed. The child stays to be reaped.
void EndProcessGroup(pid_t leader);

}  // namespace platform::qt
