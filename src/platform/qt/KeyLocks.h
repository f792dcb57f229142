#pragma once

namespace platform::qt {

struct KeyLockState {
    bool Caps = false;
    bool Num = false;
    bool Scroll = false;
};

// The lights of the keyboard. Known on X11; elsewhere all are off.
KeyLockState KeyLocks();

// int XkbGetIndicatorState(Display*, unsigned deviceSpec, unsigned* state), 0 if it succeeds.
using GetIndicatorState = int (*)(void* display, unsigned device, unsigned* state);

// What it tells of that display; all are off without one of the two.
KeyLockState ReadKeyLocks(GetIndicatorState getState, void* display);

}  // namespace platform::qt
