#pragma once

#include "session/App.h"

namespace platform::qt {
class MdiFrame;
}

namespace devices {

// The door of the device data: the selection of the device that runs compile for.
class DevicesRoom {
  public:
    // Enters its command into the hall.
    explicit DevicesRoom(session::App& app);

    void LoadWindows(platform::qt::MdiFrame& frame) { frame_ = &frame; }

  private:
    void mnuOptionsDevices_Click();

    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
};

}  // namespace devices
