#include "devices/frmDevices.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "devices/DeviceReport.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace devices {
namespace {

using platform::qt::Column;
using platform::qt::InCharacters;
using platform::qt::Label;
using platform::qt::Named;
using platform::qt::Row;

// Selects the first line. The caller follows up: the list says nothing.
void Fill(QListWidget& list, const std::vector<ListItem>& items) {
    const QSignalBlocker quiet(list);
    list.clear();
    for (const ListItem& item : items) {
        auto* line = new QListWidgetItem(platform::qt::Shown(item.Text), &list);
        line->setData(Qt::UserRole, item.Key);
    }
    if (!items.empty()) list.setCurrentRow(0);
}

std::optional<std::int32_t> Selected(const QListWidget& list) {
    const QListWidgetItem* line = list.currentItem();
    return line == nullptr ? std::nullopt : std::optional(line->data(Qt::UserRole).toInt());
}

QListWidget* List(const char* name, int characters) {
    auto* list = Named(name, new QListWidget);
    list->setUniformItemSizes(true);
    list->setMinimumSize(InCharacters(characters, 8));
    return list;
}

}  // namespace

frmDevices::frmDevices(platform::DatabaseEngine& engine, platform::Dialogs& boxes,
                       const std::string& sharedDir, const std::string& deviceName, QWidget* owner)
    : Form("frmDevices", "Device Selection", owner), DeviceName(deviceName), database_(engine, boxes) {
    LayOutControls();
    database_.DatabasePath(sharedDir + "Devices.ref");
    database_.OpenDatabase();
    Fill(*lstManufacturers, ManufacturerItems(database_));
    Fill(*lstPackages, PackageItems(database_));
    FillDevices();
    // Whatever the name is, the first device of the first lists opens: the current one is not looked for.
    chkDevInFile->setChecked(IsDeviceInFile(deviceName));
    for (QListWidget* list : {lstManufacturers, lstPackages}) {
        platform::qt::On(list, &QListWidget::currentRowChanged, this, [this] { FillDevices(); });
        // On the selected line too: the first device is selected again.
        platform::qt::On(list, &QListWidget::itemClicked, this, [this] { FillDevices(); });
    }
    platform::qt::On(lstDevices, &QListWidget::currentRowChanged, this, [this] { ShowDevice(); });
    platform::qt::On(lstDevices, &QListWidget::itemDoubleClicked, this, [this] { OK_Click(); });
}

// The longest names are those of the manufacturers.
QBoxLayout* frmDevices::ListRow() {
    lstManufacturers = List("lstManufacturers", 30);
    lstPackages = List("lstPackages", 12);
    lstDevices = List("lstDevices", 24);
    QBoxLayout* row = Row({Column({Label("Label1", "Manufacturer", lstManufacturers), lstManufacturers}),
                           Column({Label("Label2", "Package Type", lstPackages), lstPackages}),
                           Column({Label("Label7", "Devices", lstDevices), lstDevices})});
    row->setStretch(0, 5);
    row->setStretch(1, 2);
    row->setStretch(2, 4);
    return row;
}

void frmDevices::LayOutControls() {
    txtMnemonic = Named("txtMnemonic", new QLineEdit);
    txtMnemonic->setReadOnly(true);
    txtDeviceInfo = Named("txtDeviceInfo", new QPlainTextEdit);
    txtDeviceInfo->setReadOnly(true);
    QFont columns = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    columns.setPointSizeF(font().pointSizeF());
    txtDeviceInfo->setFont(columns);
    txtDeviceInfo->setMinimumSize(InCharacters(60, 10));
    chkDevInFile = platform::qt::CheckBox({"chkDevInFile", "Device In File"});
    LayOut({ListRow(), Row({Label("Label4", "Device Mnemonic", txtMnemonic), txtMnemonic, chkDevInFile}),
            Label("Label3", "Device Information", txtDeviceInfo), txtDeviceInfo,
            Buttons({{"OK", "&Ok", [this] { OK_Click(); }},
                     {"cmdCancel", "&Cancel", [this] { Cancel_Click(); }}})},
           Size::OfUser);
    ResizeTo(100, 36);
}

void frmDevices::FillDevices() {
    Fill(*lstDevices, {});
    ShowDevice();
    Fill(*lstDevices, DeviceItems(database_, Selected(*lstManufacturers), Selected(*lstPackages)));
    ShowDevice();
}

void frmDevices::ShowDevice() {
    txtDeviceInfo->clear();
    txtMnemonic->clear();
    const auto device = Selected(*lstDevices);
    if (!device) return;
    txtMnemonic->setText(platform::qt::Shown(database_.GetMnemonic(*device)));
    txtDeviceInfo->setPlainText(platform::qt::Shown(DeviceReport(ReadDeviceFacts(database_, *device))));
}

void frmDevices::OK_Click() {
    DeviceName = ChosenDeviceName(database_, DeviceName, chkDevInFile->isChecked(), Selected(*lstDevices));
    accept();
}

}  // namespace devices
