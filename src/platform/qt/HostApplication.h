#pragma once

#include <QApplication>
#include <functional>
#include <string>
#include <vector>

#include "platform/Dialogs.h"

namespace platform::qt {

// The application with the one place that shows what no command trapped: the command has ended, the program
// and all texts live on.
class HostApplication : public QApplication {
  public:
    HostApplication(int& argc, char** argv);  // both outlive this

    // Null: on the standard error stream.
    void ShowErrorsWith(Dialogs* boxes) { boxes_ = boxes; }
    // Once for texts that are alike, and no more than some boxes at a time: what fails again and again behind
    // an open box must not pile them up.
    void ShowErrorSoon(const std::string& text);

    // The net below Guarded, for what the toolkit's own code throws.
    bool notify(QObject* receiver, QEvent* event) override;

    // The guard of what runs outside the event loop, such as the start: shows the error at once. False: there
    // was one.
    bool Attempt(const std::function<void()>& action);

  private:
    void ShowError(const std::string& text);

    Dialogs* boxes_ = nullptr;
    std::vector<std::string> shown_;  // in boxes that are open or about to open
};

}  // namespace platform::qt
