#include "partitioner/PartitionerRoom.h"

#include "partitioner/frmZonerex.h"
#include "partitioner/frmZrxEditor.h"
#include "partitioner/frmZrxParams.h"
#include "platform/qt/MdiChild.h"

namespace partitioner {

using platform::qt::Modal;
using session::Document;

PartitionerRoom::PartitionerRoom(session::App& app) : app_(app) {
    app_.Hall.DocumentCommands.Add({
        {"mnuSetupZrx", [this](Document&, int) { Modal(new frmZrxParams(app_, &frame_->Window())).Run(); }},
        {"mnuZrxDatabase",
         [this](Document&, int) { Modal(new frmZrxEditor(app_, &frame_->Window())).Run(); }},
        {"mnuRunZrx", [this](Document&, int) { Modal(new frmZonerex(app_, &frame_->Window())).Run(); }},
    });
}

}  // namespace partitioner
