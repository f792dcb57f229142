#include "toolchain/frmVhdl.h"

#include <QLineEdit>
#include <algorithm>

#include "base/Number.h"
#include "base/RunTimeError.h"

namespace toolchain {

using platform::qt::Column;
using platform::qt::Item;
using platform::qt::Stretch;

frmVhdl::frmVhdl(session::App app, VhdlOptions& options, QWidget* owner)
    : Form("frmVhdl", "VHDL Options", owner), app_(app), options_(options) {
    SSTab1 = platform::qt::Tabs("SSTab1", {{"Synthesis", Synthesis()}, {"Debug", DebugPage()}});
    LayOut({SSTab1, Buttons({{"OK", "OK", [this] { OK_Click(); }},
                             {"Cancel", "Cancel", [this] { Cancel_Click(); }},
                             {"Apply", "Apply", [this] { Apply_Click(); }}})});
    ParseVhdlFlags(app_.State.VhdlFlags, options_);
    ShowOptions();
}

std::vector<Item> frmVhdl::AddBoxes(VhdlTab tab) {
    std::vector<Item> boxes;
    for (const VhdlOption& option : VhdlOptionTable()) {
        if (option.Tab != tab || option.Kind != VhdlKind::Box) continue;
        boxes.emplace_back(platform::qt::CheckBox({option.Control, option.Caption, option.Tip}));
    }
    return boxes;
}

platform::qt::UpDown* frmVhdl::AddNumber(const VhdlOption& option) {
    auto* upDown = new platform::qt::UpDown(option.UpDown, option.Control, [this, &option](int step) {
        auto& text = Control<QLineEdit>(option.Control);
        const std::string next = StepVhdlNumber(option.Kind, text.text().toStdString(), step);
        text.setText(QString::fromStdString(next));
    });
    upDown->setToolTip(option.Tip);
    return upDown;
}

QLayout* frmVhdl::Synthesis() {
    auto items = AddBoxes(VhdlTab::Synthesis);
    std::vector<platform::qt::Field> numbers;
    for (const VhdlOption& option : VhdlOptionTable()) {
        if (*option.UpDown == '\0') continue;
        numbers.push_back({"Label" + std::to_string(numbers.size() + 1), option.Caption, AddNumber(option)});
    }
    items.emplace_back(platform::qt::Row({platform::qt::Fields(numbers), Stretch()}));
    items.emplace_back(Stretch());
    return Column(items);
}

QLayout* frmVhdl::DebugPage() {
    auto items = AddBoxes(VhdlTab::Debug);
    std::vector<platform::qt::ControlRow> buttons;
    for (const CloseWindowOption& row : CloseWindowTable)
        buttons.push_back({row.Control, row.Caption, row.Tip});
    closeWindow_ = platform::qt::RadioButtons(buttons, this);
    for (const VhdlOption& option : VhdlOptionTable()) {
        if (option.Kind != VhdlKind::Choice) continue;
        auto* content = Column(platform::qt::Items(closeWindow_->buttons()));
        items.emplace_back(platform::qt::Frame(option.Control, option.Caption, content));
    }
    items.emplace_back(Stretch());
    return Column(items);
}

void frmVhdl::ShowOptions() {
    for (const VhdlOption& option : VhdlOptionTable()) {
        const std::int16_t value = options_.*option.Field;
        if (option.Kind == VhdlKind::Box) {
            platform::qt::SetValue(Control<QCheckBox>(option.Control), value);
        } else if (option.Kind != VhdlKind::Choice) {
            Control<QLineEdit>(option.Control).setText(QString::number(value));
        } else if (auto* button = closeWindow_->button(value)) {  // a digit above the last shows none
            button->setChecked(true);
        }
    }
}

void frmVhdl::ReadTab(VhdlTab tab, VhdlOptions& options) {
    for (const VhdlOption& option : VhdlOptionTable()) {
        if (option.Tab == tab) options.*option.Field = ControlValue(option);
    }
}

std::int16_t frmVhdl::ControlValue(const VhdlOption& option) {
    if (option.Kind == VhdlKind::Box) return platform::qt::Value(Control<QCheckBox>(option.Control));
    if (option.Kind != VhdlKind::Choice) return ReadNumber(Control<QLineEdit>(option.Control));
    return static_cast<std::int16_t>(std::max(closeWindow_->checkedId(), 0));  // none on: never
}

// Shows the field of a number that can't be read: the message alone does not tell which.
std::int16_t frmVhdl::ReadNumber(QLineEdit& text) {
    try {
        return base::TextToInt16(text.text().toStdString());
    } catch (const base::RunTimeError&) {
        SSTab1->setCurrentIndex(static_cast<int>(VhdlTab::Synthesis));
        text.setFocus();
        text.selectAll();
        throw;
    }
}

void frmVhdl::TakeOver(const VhdlOptions& options) {
    options_ = options;
    app_.State.VhdlFlags = WriteVhdlFlags(options_);
}

void frmVhdl::OK_Click() {
    VhdlOptions options = options_;
    ReadTab(VhdlTab::Synthesis, options);
    ReadTab(VhdlTab::Debug, options);
    TakeOver(options);
    accept();
}

void frmVhdl::Apply_Click() {
    VhdlOptions options = options_;
    ReadTab(static_cast<VhdlTab>(SSTab1->currentIndex()), options);
    TakeOver(options);
}

}  // namespace toolchain
