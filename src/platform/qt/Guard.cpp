#include "platform/qt/Guard.h"

#include <QGuiApplication>
#include <cstdio>
#include <exception>
#include <new>

#include "base/RunTimeError.h"
#include "platform/qt/HostApplication.h"

namespace platform::qt {

std::string ErrorText() try {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "Out of memory";
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "Unexpected error";
    }
} catch (...) {
    return "Out of memory";  // short enough to need none
}

void ShowErrorSoon(const std::string& text) {
    if (auto* application = dynamic_cast<HostApplication*>(QCoreApplication::instance())) {
        application->ShowErrorSoon(text);
    } else {
        std::fprintf(stderr, "Korvane: %s\n", text.c_str());
    }
}

bool HasHourglass() { return QGuiApplication::overrideCursor() != nullptr; }

void EndHourglass() {
    while (HasHourglass()) QGuiApplication::restoreOverrideCursor();
}

}  // namespace platform::qt
