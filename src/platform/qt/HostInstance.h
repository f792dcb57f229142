#pragma once

#include <QLocalServer>
#include <functional>
#include <string>

#include "base/PosixFile.h"

namespace platform::qt {

// The place of the one instance a user: a lock that the system gives back when its holder ends, however it
// ends, and a socket on which the holder is asked for something. A request is one line: the title of a window
// to bring forward, or the host path of a file to open, which a slash begins. The answer is "1" or "0".
class HostInstance {
  public:
    // `folder` is the user's own; empty stands for the user's run-time folder. `serve` gets the request and
    // tells whether it could be done.
    HostInstance(std::string folder, std::function<bool(const std::string& request)> serve);

    // True if this is the one instance, now or since an earlier call; also if no folder can tell.
    bool Take();
    bool IsTaken() const { return lock_.Get() >= 0; }

    // Asks the instance that holds the place; false if none answers within some seconds.
    bool AskToRaise(const std::string& title) const;

  private:
    void Listen();
    void Serve();

    std::string folder_;
    std::function<bool(const std::string&)> serve_;
    base::Descriptor lock_;
    QLocalServer server_;
};

}  // namespace platform::qt
