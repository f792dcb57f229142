#include "platform/qt/HostApplication.h"

#include <algorithm>
#include <cstdio>
#include <new>

#include "base/RunTimeError.h"

namespace platform::qt {
namespace {

constexpr std::size_t MaxOpenBoxes = 4;

// The text of the exception under way.
std::string ErrorText() {
    try {
        throw;
    } catch (const base::RunTimeError& error) {
        return error.Description();
    } catch (const std::bad_alloc&) {
        return "Out of memory";
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "Unexpected error";
    }
}

}  // namespace

HostApplication::HostApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName("Korvane");
}

bool HostApplication::notify(QObject* receiver, QEvent* event) {
    std::string text;
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        text = ErrorText();
    }
    ShowError(text);
    return true;
}

bool HostApplication::Attempt(const std::function<void()>& action) {
    std::string text;
    try {
        action();
        return true;
    } catch (...) {
        text = ErrorText();
    }
    ShowError(text);
    return false;
}

void HostApplication::ShowError(const std::string& text) {
    while (overrideCursor() != nullptr) restoreOverrideCursor();
    if (boxes_ == nullptr) {
        std::fprintf(stderr, "Korvane: %s\n", text.c_str());
        return;
    }
    // A timer or a painting that fails again behind the open box must not pile up boxes.
    if (shown_.size() >= MaxOpenBoxes) return;
    if (std::find(shown_.begin(), shown_.end(), text) != shown_.end()) return;
    shown_.push_back(text);
    try {
        boxes_->Say(text);
    } catch (...) {
        std::fputs("Korvane: the error could not be shown\n", stderr);
    }
    shown_.pop_back();
}

}  // namespace platform::qt
