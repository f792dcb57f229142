#include "platform/qt/KeyLocks.h"

#include <dlfcn.h>

#include <QGuiApplication>

namespace platform::qt {
namespace {

// int XkbGetIndicatorState(Display*, unsigned deviceSpec, unsigned* state): of the X library that the
// toolkit has loaded; no header and no link of our own.
using GetIndicatorState = int (*)(void* display, unsigned device, unsigned* state);

GetIndicatorState FindGetIndicatorState() {
    void* library = dlopen("libX11.so.6", RTLD_LAZY);
    return library == nullptr
               ? nullptr
               : reinterpret_cast<GetIndicatorState>(dlsym(library, "XkbGetIndicatorState"));
}

}  // namespace

KeyLockState KeyLocks() {
    constexpr unsigned coreKeyboard = 0x100;
    static const GetIndicatorState getState = FindGetIndicatorState();
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    unsigned lights = 0;
    if (getState == nullptr || x11 == nullptr || x11->display() == nullptr ||
        getState(x11->display(), coreKeyboard, &lights) != 0) {
        return {};
    }
    return {.Caps = (lights & 1) != 0, .Num = (lights & 2) != 0, .Scroll = (lights & 4) != 0};
}

}  // namespace platform::qt
