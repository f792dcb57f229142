#pragma once

#include <vector>

#include "platform/qt/Form.h"
#include "session/App.h"
#include "toolchain/VhdlOptions.h"

class QLineEdit;

namespace toolchain {

// "VHDL Options": edits VhdlFlags through the option record, which its owner keeps longer than the window.
// Made anew for each opening and shown modal.
class frmVhdl : public platform::qt::Form {
  public:
    // Reads VhdlFlags into the record and shows it. A string that can't be read is error 13.
    frmVhdl(session::App app, VhdlOptions& options, QWidget* owner = nullptr);

    // A number that can't be read is error 6 or 13: nothing is taken over, the window stays.
    void OK_Click();
    void Apply_Click();  // the showing tab alone; the window stays

  private:
    QLayout* Synthesis();
    QLayout* DebugPage();
    std::vector<platform::qt::Item> AddBoxes(VhdlTab tab);
    platform::qt::UpDown* AddNumber(const VhdlOption& option);
    void ShowOptions();
    void ReadTab(VhdlTab tab, VhdlOptions& options);
    std::int16_t ControlValue(const VhdlOption& option);
    std::int16_t ReadNumber(QLineEdit& text);
    void TakeOver(const VhdlOptions& options);

    session::App app_;
    VhdlOptions& options_;
    QTabWidget* SSTab1;
    QButtonGroup* closeWindow_;
};

}  // namespace toolchain
