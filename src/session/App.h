#pragma once

#include "platform/Host.h"
#include "session/Commands.h"
#include "session/Session.h"

namespace session {

// What every room gets: the shared state, the desktop system, the hall.
struct App {
    Session& State;
    platform::Host& Host;
    Commands& Hall;
};

}  // namespace session
