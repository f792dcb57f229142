#pragma once

#include <Qt>
#include <optional>

class QKeyEvent;

namespace platform::qt {

// The Windows virtual key code of a key, such as 13 for Enter; 255 for a key that has none.
int VirtualKeyCode(const QKeyEvent& event);

// An editing key and the message that it sends. Of the menu's shortcuts only copy and cut are among them.
struct EditKey {
    Qt::Key Key;
    int Modifiers;  // SCMOD_… bits
    int Command;    // SCI_… message
};

// The command of a key press, if it is an editing key.
std::optional<int> EditCommand(const QKeyEvent& event);

// Whether a key press types its text: it is no shortcut and no control character.
bool TypesText(const QKeyEvent& event);

}  // namespace platform::qt
