#include "partitioner/frmZrxEditor.h"

#include "partitioner/windows/EntryList.h"

namespace partitioner {

frmZrxEditor::frmZrxEditor(session::App& app, QWidget* owner)
    : Form("frmZrxEditor", "Zonerex Database Editor", owner),
      app_(app),
      path_(app.State.ZrxDir + "zrxlib.db"),
      devices_(LoadDevices(app.Host.Files, path_)) {
    auto* cmbDevices = new EntryList("cmbDevices", 40);
    cmbDevices->setAccessibleName("Devices");
    for (const ZrxDevice& device : devices_) cmbDevices->Add(DeviceEntry(device));
    LayOut({cmbDevices, Buttons({{"Done", "Done", [this] { Cancel_Click(); }},
                                 {"Update", "Update", [this] { Update_Click(); }}})},
           Size::OfUser);
    ResizeTo(60, 24);
}

void frmZrxEditor::Update_Click() { UpdateDevices(app_.Host.Files, path_, devices_); }

}  // namespace partitioner
