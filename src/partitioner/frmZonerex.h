#pragma once

#include <QPlainTextEdit>

#include "partitioner/PartitionRun.h"
#include "platform/qt/Form.h"
#include "session/App.h"

namespace partitioner {

class EntryList;

// "Zonerex": finds partitions of the design sProject, lists them and writes the chosen one. The libraries
// report to the text and to the list while they run. Made anew for each opening and shown modal.
class frmZonerex : public platform::qt::Form {
  public:
    explicit frmZonerex(session::App& app, QWidget* owner = nullptr);
    ~frmZonerex() override;

    void Test_Click();
    void Fit_Click();
    void cmbDevices_DblClick();

  private:
    QLayout* Headings();
    void AddMessage(const std::string& line);
    void ShowEnd();

    session::App& app_;
    EntryList* cmbDevices;
    QPlainTextEdit* txtMsgBox;
    const platform::WindowHandle messages_, solutions_;
    PartitionRun run_;
};

}  // namespace partitioner
