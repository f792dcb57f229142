#pragma once

#include <QPrinter>
#include <functional>
#include <memory>

#include "platform/Printers.h"

class QWidget;

namespace platform::qt {

// The desktop's printers, and PDF files. The dialog's window is named "PrinterDialog".
class HostPrinters : public Printers {
  public:
    // `parent` gives the window that the dialog belongs to, or null.
    explicit HostPrinters(std::function<QWidget*()> parent);

    int Count() const override;
    std::optional<int> Choose(int flags) override;
    void Print(RichTextBox& text) override;  // a TextBox

  private:
    QPrinter& Printer();
    void PrintToFile(class TextBox& box);

    std::function<QWidget*()> parent_;
    std::unique_ptr<QPrinter> printer_;
};

}  // namespace platform::qt
