#include "platform/qt/KeyLocks.h"

#include <dlfcn.h>

#include <QGuiApplication>

namespace platform::qt {
namespace {

constexpr unsigned coreKeyboard = 0x100;

// Of the X library that the toolkit has loaded; no header and no link of our own.
GetIndicatorState FindGetIndicatorState() {
    void* library = dlopen("libX11.so.6", RTLD_LAZY);
    return library == nullptr ? nullptr
                              : reinterpret_cast<GetIndicatorState>(dlsym(library, "XkbGetIndicatorState"));
}

}  // namespace

KeyLockState KeyLocks() {
    static const GetIndicatorState getState = FindGetIndicatorState();
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return ReadKeyLocks(getState, x11 == nullptr ? nullptr : x11->display());
}

KeyLockState ReadKeyLocks(GetIndicatorState getState, void* display) {
    unsigned lights = 0;
    if (getState == nullptr || display == nullptr || getState(display, coreKeyboard, &lights) != 0) return {};
    return {.Caps = (lights & 1) != 0, .Num = (lights & 2) != 0, .Scroll = (lights & 4) != 0};
}

}  // namespace platform::qt
