#pragma once

#include <QLocalServer>
#include <functional>
#include <string>

#include "base/PosixFile.h"

namespace platform::qt {

// The place of the one instance a user: a lock that the system gives back when its holder ends, however it
// ends, and a socket on which the holder is asked to bring a window forward.
class HostInstance {
  public:
    // `folder` is the user's own; empty stands for the user's run-time folder. `raise` gets the title asked
    // for and tells whether a window came forward.
    HostInstance(std::string folder, std::function<bool(const std::string& title)> raise);

    // True if this is the one instance, now or since an earlier call; also if no folder can tell.
    bool Take();
    bool IsTaken() const { return lock_.Get() >= 0; }

    // Asks the instance that holds the place; false if none answers within some seconds.
    bool AskToRaise(const std::string& title) const;

  private:
    void Listen();
    void Serve();

    std::string folder_;
    std::function<bool(const std::string&)> raise_;
    base::Descriptor lock_;
    QLocalServer server_;
};

}  // namespace platform::qt
