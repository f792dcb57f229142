#pragma once

#include "aids/KeyMacros.h"
#include "session/App.h"

namespace platform::qt {
class MdiFrame;
}

namespace aids {

// The door of the design aids: table generator, language macros, keystroke macros.
class AidsRoom {
  public:
    // Enters its commands into the hall.
    explicit AidsRoom(session::App& app);

    void LoadWindows(platform::qt::MdiFrame& frame) { frame_ = &frame; }

  private:
    void mnuEditTable_Click(session::Document& document);
    void AddMacroCommands();

    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
    KeyMacros keyMacros_;
};

}  // namespace aids
