#include "devices/DevicesRoom.h"

#include "devices/frmDevices.h"
#include "platform/qt/HostDatabase.h"
#include "platform/qt/MdiChild.h"

namespace devices {

DevicesRoom::DevicesRoom(session::App& app) : app_(app) {
    app.Hall.MainCommands.Add({{"mnuOptionsDevices", [this](int) { mnuOptionsDevices_Click(); }}});
}

void DevicesRoom::mnuOptionsDevices_Click() {
    platform::qt::HostDatabaseEngine engine(app_.Host.Files);
    platform::qt::Modal window(new frmDevices(engine, app_.Host.Boxes, app_.State.SharedDir,
                                              app_.State.DeviceName, &frame_->Window()));
    if (window.Run()) app_.State.DeviceName = window->DeviceName;
}

}  // namespace devices
