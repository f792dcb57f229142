#pragma once

#include <QListWidget>
#include <QPlainTextEdit>
#include <optional>
#include <string>
#include <vector>

#include "devices/DeviceSelection.h"
#include "platform/qt/Form.h"

class QBoxLayout;
class QCheckBox;
class QLineEdit;

namespace devices {

// Lists of manufacturers and packages choose the devices that are listed; the selected one is reported. The
// database is open as long as the window is there.
class frmDevices : public platform::qt::Form {
  public:
    std::string DeviceName;  // what OK chose, as given until then

    // `sharedDir` with its final backslash. A database that can't be opened is told in a box; the lists stay
    // empty.
    frmDevices(platform::DatabaseEngine& engine, platform::Dialogs& boxes, const std::string& sharedDir,
               const std::string& deviceName, QWidget* owner);

  private:
    QBoxLayout* ListRow();
    void LayOutControls();
    void FillDevices();
    void ShowDevice();
    void OK_Click();

    clsDeviceDatabase database_;
    QListWidget* lstManufacturers;
    QListWidget* lstPackages;
    QListWidget* lstDevices;
    QLineEdit* txtMnemonic;
    QPlainTextEdit* txtDeviceInfo;
    QCheckBox* chkDevInFile;
};

}  // namespace devices
