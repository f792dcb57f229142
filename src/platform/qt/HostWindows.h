#pragma once

#include "platform/Windows.h"

namespace platform::qt {

// The windows of an X11 display; of others the list is empty.
class HostWindows : public Windows {
  public:
    std::vector<TopLevelWindow> TopLevel() const override;
    void Close(std::uint32_t handle) override;
    void Activate(std::uint32_t handle) override;
    ScreenSize Size() const override;

    TopLevelWindow Active() const;  // that has the keys; handle 0: none
};

}  // namespace platform::qt
