#pragma once

#include <optional>

#include "platform/RichTextBox.h"

namespace platform {

// Flags of the print dialog.
enum PrintDialogFlags : int {
    PrintSelection = 1,  // as it leaves the dialog: the user chose the selection
    NoSelection = 4,     // there is none to choose
    NoPageNumbers = 8,
    PrintSetup = 64,  // only to choose and set up a printer
    ReturnDeviceContext = 256,
};

// The printers, and the one among them that was chosen last.
class Printers {
  public:
    virtual ~Printers() = default;

    // How many there are to choose from. A file that the print dialog offers to print to is one of them.
    virtual int Count() const = 0;
    // Shows the print dialog. The flags as it leaves them; empty if it was cancelled.
    virtual std::optional<int> Choose(int flags) = 0;
    // Prints the selection, or the whole text without one; an empty text is an empty page. Raises nothing:
    // what goes wrong the desktop tells once the command has ended.
    virtual void Print(RichTextBox& text) = 0;
};

}  // namespace platform
