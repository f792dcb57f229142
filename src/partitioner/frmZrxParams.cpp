#include "partitioner/frmZrxParams.h"

#include <QLineEdit>

#include "platform/qt/Guard.h"

namespace partitioner {
namespace {

using platform::qt::Column;
using platform::qt::Item;
using platform::qt::Stretch;

constexpr int deviceRows = 14;

// All fields of one tab below each other.
QLayout* FieldColumn(const std::vector<platform::qt::Field>& fields) {
    return platform::qt::Row({platform::qt::Fields(fields), Stretch()});
}

}  // namespace

frmZrxParams::frmZrxParams(session::App& app, QWidget* owner)
    : Form("frmZrxParams", "Zonerex Fitting Parameters", owner), app_(app) {
    devices_ = platform::qt::CheckBoxes(platform::qt::ControlArray("Device", DeviceCaptions()));
    auto* devices = platform::qt::Columns(platform::qt::Items(devices_), deviceRows);
    SSTab1 = platform::qt::Tabs("SSTab1", {{"Fitting", Fitting()},
                                           {"Files", Boxes(PartitionTab::Files)},
                                           {"Priority", Priority()},
                                           {"Devices", devices}});
    LayOut({SSTab1, Buttons({{"OK", "OK", [this] { OK_Click(); }},
                             {"Apply", "Apply", [this] { Apply_Click(); }},
                             {"Cancel", "Cancel", [this] { Cancel_Click(); }}})});
    std::string& flags = app_.State.PartitionFlags;
    if (flags.empty()) flags = session::DefaultPartitionFlags;
    PartitionOptions options;
    // The error is shown, and the window opens all the same: an Apply on one tab leaves such a string, and
    // here alone it can be put right.
    platform::qt::Guarded([&] { ParsePartitionFlags(flags, options); });
    ShowOptions(options);
    const std::vector<bool> ticked = ReadDevices(app_.Host.Files, app_.State.ZrxDir);
    for (std::size_t i = 0; i < ticked.size(); ++i) devices_[i]->setChecked(ticked[i]);
}

QWidget* frmZrxParams::Number(const PartitionNumber& number, std::function<void(int)> step) {
    auto* upDown = new platform::qt::UpDown(number.UpDown, number.Control, std::move(step));
    upDown->setToolTip(number.Tip);
    return upDown;
}

QLayout* frmZrxParams::Boxes(PartitionTab tab) {
    std::vector<Item> boxes;
    for (const PartitionBox& box : BoxTable) {
        if (box.Tab == tab) boxes.emplace_back(platform::qt::CheckBox({box.Control, box.Caption}));
    }
    boxes.emplace_back(Stretch());
    return Column(boxes);
}

QLayout* frmZrxParams::Fitting() {
    std::vector<platform::qt::ControlRow> buttons;
    for (const FitOption& option : FitTable) buttons.push_back({option.Control, option.Caption});
    fit_ = platform::qt::RadioButtons(buttons, this);
    std::vector<platform::qt::Field> fields;
    for (const PartitionNumber& number : NumberTable()) {
        fields.push_back({number.Label, number.Caption,
                          Number(number, [this, &number](int step) { Step(number, step); })});
    }
    return Column({Column(platform::qt::Items(fit_->buttons())), Boxes(PartitionTab::Fitting),
                   FieldColumn(fields), Stretch()});
}

QLayout* frmZrxParams::Priority() {
    std::vector<platform::qt::Field> fields;
    for (const PartitionNumber& number : PriorityTable()) {
        fields.push_back({number.Label, number.Caption, Number(number, [this, row = fields.size()](int step) {
                              StepPriorityField(row, step);
                          })});
    }
    return Column({FieldColumn(fields), Stretch()});
}

void frmZrxParams::Step(const PartitionNumber& number, int step) {
    auto& text = Control<QLineEdit>(number.Control);
    text.setText(QString::fromStdString(StepPartitionNumber(number, text.text().toStdString(), step)));
}

void frmZrxParams::StepPriorityField(std::size_t row, int step) {
    PartitionOptions options = ReadControls();
    StepPriority(options, row, step);
    ShowOptions(options);
}

void frmZrxParams::ShowOptions(const PartitionOptions& options) {
    fit_->button(options.Fit)->setChecked(true);
    for (const PartitionBox& box : BoxTable) Control<QCheckBox>(box.Control).setChecked(options.*box.Field);
    for (const auto& table : {NumberTable(), PriorityTable()}) {
        for (const PartitionNumber& number : table)
            Control<QLineEdit>(number.Control).setText(QString::fromStdString(options.*number.Field));
    }
}

PartitionOptions frmZrxParams::ReadControls() const {
    PartitionOptions options;
    options.Fit = fit_->checkedId();
    for (const PartitionBox& box : BoxTable) options.*box.Field = Control<QCheckBox>(box.Control).isChecked();
    for (const auto& table : {NumberTable(), PriorityTable()}) {
        for (const PartitionNumber& number : table)
            options.*number.Field = Control<QLineEdit>(number.Control).text().toStdString();
    }
    return options;
}

void frmZrxParams::OK_Click() {
    const PartitionOptions options = ReadControls();
    for (const auto tab : {PartitionTab::Fitting, PartitionTab::Files, PartitionTab::Priority})
        parts_.Make(tab, options);
    std::vector<bool> ticked;
    for (const QCheckBox* box : devices_) ticked.push_back(box->isChecked());
    WriteDevices(app_.Host.Files, app_.State.ZrxDir, ticked);
    app_.State.PartitionFlags = parts_.Flags();
    accept();
}

void frmZrxParams::Apply_Click() {
    parts_.Make(static_cast<PartitionTab>(SSTab1->currentIndex()), ReadControls());
    app_.State.PartitionFlags = parts_.Flags();
}

}  // namespace partitioner
