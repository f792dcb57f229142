#pragma once

#include <vector>

#include "partitioner/DeviceLibrary.h"
#include "platform/qt/Form.h"
#include "session/App.h"

namespace partitioner {

// "Zonerex Database Editor": lists the devices of zrxlib.db with two of their figures, and writes back what
// it has read. Made anew for each opening and shown modal.
class frmZrxEditor : public platform::qt::Form {
  public:
    explicit frmZrxEditor(session::App& app, QWidget* owner = nullptr);  // errors of LoadDevices

    void Update_Click();

  private:
    session::App& app_;
    const std::string path_;
    std::vector<ZrxDevice> devices_;
};

}  // namespace partitioner
