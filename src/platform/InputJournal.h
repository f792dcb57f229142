#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace platform {

// A key, a mouse button, a move or a turn of the wheel. What the parameters mean is the journal's own affair.
struct InputEvent {
    std::uint32_t Message = 0;
    std::uint32_t ParamL = 0;
    std::uint32_t ParamH = 0;
    std::uint32_t Time = 0;  // milliseconds
    std::uint32_t hWnd = 0;  // the window that got it
};

// Listens to all input of the program's windows, and gives it again.
class InputJournal {
  public:
    virtual ~InputJournal() = default;

    // Hands over what comes in until CTRL+BREAK, which is not among it and of which `onBreak` tells. Takes
    // the place of a recording under way. False if the desktop does not let it.
    virtual bool Record(std::function<void(const InputEvent&)> take, std::function<void()> onBreak) = 0;

    // Gives the windows one event after the other, each once the program has dealt with the one before, until
    // there is none, or no window that takes it. False while another playback is under way.
    virtual bool Play(std::function<std::optional<InputEvent>()> next) = 0;

    virtual void Stop() = 0;  // both: nobody is called any more
    virtual void CentrePointer() = 0;
};

}  // namespace platform
