#pragma once

namespace platform::qt {

struct KeyLockState {
    bool Caps = false;
    bool Num = false;
    bool Scroll = false;
};

// The lights of the keyboard. Known on X11; elsewhere all are off.
KeyLockState KeyLocks();

}  // namespace platform::qt
