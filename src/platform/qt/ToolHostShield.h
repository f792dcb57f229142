#pragma once

#include <QObject>

namespace platform::qt {

// While it lives, what the user types, clicks or closes is thrown away; all else goes on.
class ToolHostShield : public QObject {
    Q_OBJECT

  public:
    ToolHostShield();

    // Paints the windows and lets timers run, behind a shield.
    static void PaintWindows();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
};

}  // namespace platform::qt
