#pragma once

#include <string>

#include "platform/Host.h"
#include "session/Session.h"

// What the user's choices leave behind in the per-user store: the main window's place, fonts, paths,
// switches, tool lists and recent files. Read once and written once a run; in between the shared state alone
// counts. Texts cross the store through a fixed buffer: at most 256 bytes are written, at most 254 read.
namespace shell {

// frmMain as the settings see it.
struct MainWindowState {
    session::Placement Place;  // twips
    bool Minimized = false;
    bool Maximized = false;
};

// Needs the folders of the state. Without a store it shows a message and leaves fonts alone set and the place
// unchanged; otherwise `window.Place` is where frmMain goes. A first run also saves.
void LoadSettings(session::Session& state, const platform::Host& host, MainWindowState& window);

// A minimised or maximised window keeps the place of the last normal save.
void SaveSettings(session::Session& state, const platform::Host& host, const MainWindowState& window);

// Leaves a place, in twips, in the key of a companion tool that does not run yet.
void SaveToolPlacement(const platform::Host& host, const std::string& name, float top, float left,
                       float width, float height);

}  // namespace shell
