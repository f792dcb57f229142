#pragma once

#include "platform/Host.h"
#include "session/CommandTable.h"
#include "session/Document.h"
#include "session/Editor.h"
#include "session/Macros.h"
#include "session/MainWindow.h"
#include "session/Project.h"
#include "session/Session.h"
#include "session/ToolChain.h"
#include "session/Utilities.h"

namespace session {

// Where the rooms meet: the door of each, set by who composes them before any is called, and the commands
// that they have handed over.
struct Hall {
    MainWindow* Main = nullptr;
    session::Utilities* Utilities = nullptr;
    session::Editor* Editor = nullptr;
    session::ToolChain* ToolChain = nullptr;
    session::Project* Project = nullptr;
    session::Macros* Macros = nullptr;
    session::MainCommands MainCommands;
    session::DocumentCommands DocumentCommands;
};

// What every room gets: the shared state, the desktop system, the hall.
struct App {
    Session& State;
    platform::Host& Host;
    session::Hall& Hall;
};

}  // namespace session
