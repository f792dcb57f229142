#pragma once

#include <QApplication>
#include <functional>
#include <string>
#include <vector>

#include "platform/Dialogs.h"

namespace platform::qt {

// The application with the one place that catches what no command trapped: it shows the description, the
// command ends, the program and all texts live on.
class HostApplication : public QApplication {
  public:
    HostApplication(int& argc, char** argv);  // both outlive this

    void ShowErrorsWith(Dialogs& boxes) { boxes_ = &boxes; }

    bool notify(QObject* receiver, QEvent* event) override;

    // The same for what runs outside the event loop, such as the start. False: an error was shown.
    bool Attempt(const std::function<void()>& action);

  private:
    void ShowError(const std::string& text);

    Dialogs* boxes_ = nullptr;
    std::vector<std::string> shown_;  // by boxes that are open
};

}  // namespace platform::qt
