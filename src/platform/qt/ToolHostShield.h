#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

namespace platform::qt {

// While it lives, what the user types, clicks or closes is thrown away; all else goes on. A modal window that
// opens meanwhile, such as a message of the program, can be answered.
class ToolHostShield : public QObject {
    Q_OBJECT

  public:
    ToolHostShield();

    // Paints the windows and lets timers run, behind a shield.
    static void PaintWindows();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    QPointer<QWindow> modalBefore_;
};

}  // namespace platform::qt
