#pragma once

#include "session/App.h"

namespace platform::qt {
class MdiFrame;
}

namespace devices {

// The door of the device data: the selection of the device that runs compile for, and the export of a design.
class DevicesRoom {
  public:
    // Enters its commands into the hall.
    explicit DevicesRoom(session::App& app);

    void LoadWindows(platform::qt::MdiFrame& frame) { frame_ = &frame; }

  private:
    void mnuOptionsDevices_Click();
    void mnuExport_Click(session::Document& document);

    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
};

}  // namespace devices
