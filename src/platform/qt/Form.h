#pragma once

#include <QDialog>
#include <QGuiApplication>
#include <QPointer>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/qt/Controls.h"

namespace platform::qt {

// The base of the dialogs: made anew for each opening, shown by Modal, or by show() as a tool window that
// stays above its owner. Values go in with the constructor and come out in fields. Sizes follow from layouts
// and from the program's font, so none is in pixels.
class Form : public QDialog {
  public:
    bool Cancelled = false;  // closed in another way than by accept()

    void reject() final;  // Escape and the window's own close button: Cancel_Click

  protected:
    // `name` is what help and tests know the form by.
    Form(const char* name, const char* title, QWidget* owner);

    enum class Size { OfContent, OfUser };

    // The parts from top to bottom: at the size of their content, or resizable. Call it once.
    void LayOut(const std::vector<Item>& parts, Size size = Size::OfContent);
    // What a resizable form opens with.
    void ResizeTo(int characters, int lines);

    struct ButtonRow {
        const char* Name;
        const char* Caption;
        std::function<void()> Click;
    };
    // The row that ends a form. The first button is the one that Enter presses; a single one stands in the
    // middle.
    QLayout* Buttons(std::initializer_list<ButtonRow> rows);
    QPushButton* Button(const ButtonRow& row);

    virtual void Cancel_Click();

    // A control that LayOut has taken.
    template <class T>
    T& Control(const std::string& name) const {
        if (auto* control = findChild<T*>(QString::fromStdString(name))) return *control;
        throw std::logic_error(objectName().toStdString() + " has no such control: " + name);
    }
};

// A dialog that may be taken away with its owner while it is open.
template <class Dialog>
class Modal {
  public:
    explicit Modal(Dialog* dialog) : dialog_(dialog) {}
    ~Modal() { delete dialog_.data(); }
    Modal(const Modal&) = delete;
    Modal& operator=(const Modal&) = delete;

    Dialog* operator->() const { return dialog_; }

    // True if it was accepted and is still there. The hourglass rests meanwhile.
    bool Run() {
        const bool isBusy = QGuiApplication::overrideCursor() != nullptr;
        if (isBusy) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
        const int result = dialog_->exec();
        if (isBusy) QGuiApplication::restoreOverrideCursor();
        return dialog_ != nullptr && result != QDialog::Rejected;
    }
    bool IsThere() const { return dialog_ != nullptr; }

  private:
    QPointer<Dialog> dialog_;
};

// The width of a window whose title bar shows the title in whole, in pixels.
int WidthFor(const QString& title);

}  // namespace platform::qt
