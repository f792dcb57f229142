#pragma once

#include "partitioner/PartitionOptions.h"
#include "platform/qt/Form.h"
#include "session/App.h"

namespace partitioner {

// "Zonerex Fitting Parameters": edits PartitionFlags and the candidate devices of TEMP.DEV. Made anew for
// each opening and shown modal.
class frmZrxParams : public platform::qt::Form {
  public:
    explicit frmZrxParams(session::App& app, QWidget* owner = nullptr);

    void OK_Click();
    void Apply_Click();  // the tab in front alone; not the devices

  private:
    QLayout* Fitting();
    QLayout* Priority();
    QLayout* Boxes(PartitionTab tab);
    QWidget* Number(const PartitionNumber& number, std::function<void(int)> step);
    void Step(const PartitionNumber& number, int step);
    void StepPriorityField(std::size_t row, int step);
    void ShowOptions(const PartitionOptions& options);
    PartitionOptions ReadControls() const;

    session::App& app_;
    PartitionParts parts_;
    QButtonGroup* fit_ = nullptr;
    std::vector<QCheckBox*> devices_;
    QTabWidget* SSTab1 = nullptr;
};

}  // namespace partitioner
