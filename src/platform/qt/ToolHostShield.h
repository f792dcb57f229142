#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <utility>

namespace platform::qt {

// While it lives, what the user types, clicks or closes is thrown away; all else goes on. A modal window that
// opens meanwhile, such as a message of the program, can be answered.
class ToolHostShield : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    ToolHostShield();
    ~ToolHostShield() override { --up; }

    static bool IsUp() { return up > 0; }

    // True if the user has tried to close the main window since this was asked last.
    bool TakeCloseTry() { return std::exchange(closeTry_, false); }

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  private:
    static inline int up = 0;
    QPointer<QWindow> modalBefore_;
    bool closeTry_ = false;
};

}  // namespace platform::qt
