#include "devices/frmExport.h"

namespace devices {

using platform::qt::Item;

frmExport::frmExport(const std::vector<session::OutputFrame>& frames, platform::Dialogs& boxes,
                     QWidget* owner)
    : Form("frmExport", "Export Files", owner), boxes_(boxes) {
    std::vector<Item> groups;
    groups.reserve(frames.size());
    for (const session::OutputFrame& frame : frames) groups.emplace_back(AddFrame(frame));
    LayOut(
        {platform::qt::Row({platform::qt::Column({groups.at(0), groups.at(1)}), groups.at(2)}),
         Buttons({{"OK", "OK", [this] { OK_Click(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}})});
}

QGroupBox* frmExport::AddFrame(const session::OutputFrame& frame) {
    std::vector<Item> boxes;
    for (const session::OutputOption& option : frame.Options) {
        const bool isAscii = option.Control == "chkAscii";  // spelled differently here
        auto* box =
            platform::qt::CheckBox({option.Control, isAscii ? "Ascii/Hex" : option.Caption, option.Tip});
        outputs_.emplace_back(option.Token, box);
        boxes.emplace_back(box);
    }
    return platform::qt::Frame(frame.Name, frame.Caption, platform::qt::Columns(boxes, 5));
}

void frmExport::OK_Click() {
    const auto answer =
        boxes_.MessageBox({.Text = "KORVANE is about to create the export files. Do you want to continue",
                           .Title = "Run KORVANE Compiler?",
                           .Choice = platform::Buttons::YesNo});
    if (answer != platform::Answer::Yes) return Cancel_Click();
    for (const auto& [token, box] : outputs_)
        if (box->isChecked()) CompilerFlags += token;
    accept();
}

}  // namespace devices
