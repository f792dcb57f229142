#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

// A top-level window on the desktop, of this or of another program.
struct TopLevelWindow {
    std::uint32_t Handle = 0;
    std::string Title;
    std::uint32_t Owner = 0;  // the window that it belongs to, 0 for none
    // The process that Processes::Start told of, if this program started the window's program or one that
    // started it in turn; some other number for all others, 0 if the desktop does not tell.
    std::uint32_t Process = 0;
};

struct ScreenSize {
    float Width = 0;  // twips
    float Height = 0;
};

class Windows {
  public:
    virtual ~Windows() = default;

    // From front to back. Empty on a desktop that shows no program the windows of others.
    virtual std::vector<TopLevelWindow> TopLevel() const = 0;
    // WM_CLOSE: asks the window to close as its user would, and does not wait. One that is gone is passed
    // over.
    virtual void Close(std::uint32_t handle) = 0;
    virtual void Activate(std::uint32_t handle) = 0;  // to the front, with the keys
    virtual ScreenSize Size() const = 0;              // of the first screen
};

}  // namespace platform
