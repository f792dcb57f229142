#pragma once

#include <sys/types.h>

namespace platform::qt {

// True if the child has ended; it stays to be reaped, and its number stays its own. True also for what is no
// child of ours.
bool HasEnded(pid_t child);

// Waits up to half a second for the child's end; false if it goes on.
bool EndsSoon(pid_t child);

// Ends a child that leads a process group, and all of the group: those whom SIGTERM does not end within half
// a second are killed. The child stays to be reaped.
void EndProcessGroup(pid_t leader);

}  // namespace platform::qt
