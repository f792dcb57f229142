#include "toolchain/frmSimulator.h"

namespace toolchain {

frmSimulator::frmSimulator(session::App app, QWidget* owner)
    : Form("frmSimulator", "Simulator Options", owner), app_(app) {
    const SimulatorOptions options = ParseSimulatorFlags(app_.State.SimulatorFlags);
    for (const SimulatorOption& option : SimulatorOptionTable()) {
        boxes_.push_back(platform::qt::CheckBox({option.Control, option.Caption, option.Tip}));
        platform::qt::SetValue(*boxes_.back(), options.*option.Field);
    }
    LayOut(
        {platform::qt::Column(platform::qt::Items(boxes_)),
         Buttons({{"OK", "OK", [this] { OK_Click(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}})});
}

void frmSimulator::OK_Click() {
    SimulatorOptions options;
    auto box = boxes_.begin();
    for (const SimulatorOption& option : SimulatorOptionTable()) {
        options.*option.Field = platform::qt::Value(**box++);
    }
    app_.State.SimulatorFlags = WriteSimulatorFlags(options);
    accept();
}

}  // namespace toolchain
