#include "devices/DevicesRoom.h"

#include "devices/frmDevices.h"
#include "devices/frmExport.h"
#include "platform/qt/HostDatabase.h"
#include "platform/qt/MdiChild.h"

namespace devices {

DevicesRoom::DevicesRoom(session::App& app) : app_(app) {
    app.Hall.MainCommands.Add({{"mnuOptionsDevices", [this](int) { mnuOptionsDevices_Click(); }}});
    app.Hall.DocumentCommands.Add(
        {{"mnuExport", [this](session::Document& document, int) { mnuExport_Click(document); }}});
}

void DevicesRoom::mnuOptionsDevices_Click() {
    platform::qt::HostDatabaseEngine engine(app_.Host.Files);
    platform::qt::Modal window(new frmDevices(engine, app_.Host.Boxes, app_.State.SharedDir,
                                              app_.State.DeviceName, &frame_->Window()));
    if (window.Run()) app_.State.DeviceName = window->DeviceName;
}

void DevicesRoom::mnuExport_Click(session::Document& document) {
    {
        platform::qt::Modal window(
            new frmExport(app_.Hall.ToolChain->OutputFrames(), app_.Host.Boxes, &frame_->Window()));
        if (!window.Run()) return;
        // Kept: for good, whatever comes of the run; minimization and the like are gone.
        app_.State.CompilerFlags = window->CompilerFlags;
    }
    app_.Hall.ToolChain->IndepCompile();
    if (document.ShowsProject()) app_.Hall.Project->UpdateTreeView();
}

}  // namespace devices
