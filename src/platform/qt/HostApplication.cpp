#include "platform/qt/HostApplication.h"

#include <algorithm>
#include <cstdio>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr std::size_t MaxOpenBoxes = 4;

void Print(const std::string& text) { std::fprintf(stderr, "Korvane: %s\n", text.c_str()); }

}  // namespace

HostApplication::HostApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName("Korvane");
}

bool HostApplication::notify(QObject* receiver, QEvent* event) {
    bool handled = true;
    Guarded([&] { handled = QApplication::notify(receiver, event); });
    return handled;
}

bool HostApplication::Attempt(const std::function<void()>& action) {
    const auto error = ErrorOf(action);
    if (error) ShowError(*error);
    return !error;
}

void HostApplication::ShowErrorSoon(const std::string& text) {
    const bool isShown = std::find(shown_.begin(), shown_.end(), text) != shown_.end();
    if (isShown || shown_.size() >= MaxOpenBoxes) return Print(text);
    try {
        shown_.push_back(text);
        QMetaObject::invokeMethod(
            this,
            [this, text] {
                ShowError(text);
                shown_.erase(std::find(shown_.begin(), shown_.end(), text));
            },
            Qt::QueuedConnection);
    } catch (...) {
        Print(text);
    }
}

void HostApplication::ShowError(const std::string& text) {
    if (boxes_ == nullptr) return Print(text);
    try {
        boxes_->Say(text);
    } catch (...) {
        Print(text);
    }
}

}  // namespace platform::qt
