#pragma once

#include <string>
#include <vector>

#include "platform/ToolLibraries.h"

namespace toolchain {

// The windows of a run as the run driver sees them: frmStatus, one for each run, and frmMessage.
class RunWindows {
  public:
    virtual ~RunWindows() = default;

    virtual void CreateStatus() = 0;  // loads frmStatus, hidden, unless it is there
    virtual void UnloadStatus() = 0;
    virtual void SetInfo(const std::string& text) = 0;  // lblInfo of frmStatus
    virtual void EnableOk(bool enabled) = 0;            // OK of frmStatus
    virtual void ShowStatusModeless() = 0;
    virtual void ShowStatusModal() = 0;  // hides and shows it; returns when OK has unloaded it

    virtual void AddMessages(const std::vector<std::string>& lines) = 0;  // to lstMessages

    virtual platform::WindowHandle StatusHandle() = 0;    // of frmStatus, which must be loaded
    virtual platform::WindowHandle MessagesHandle() = 0;  // of lstMessages; makes frmMessage if needed
};

}  // namespace toolchain
