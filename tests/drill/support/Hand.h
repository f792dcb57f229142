#pragma once

#include <QPoint>
#include <string>

struct _XDisplay;

namespace drill {

// Presses keys and moves the mouse on a display, as a person does.
class Hand {
  public:
    explicit Hand(_XDisplay* display) : x_(display) {}

    int Pause = 0;  // milliseconds from key to key; 0: as fast as the display takes them

    // A chord of X's names for keys, such as "ctrl+shift+End", "alt+F4", "Return", "a".
    void Key(const std::string& chord);
    // UTF-8 of letters that the keyboard at hand has; a line feed is the Return key.
    void Type(const std::string& text);
    void Move(const QPoint& to);
    void Click(const QPoint& at, int count = 1, int button = 1);
    void Drag(const QPoint& from, const QPoint& to);

  private:
    void Stroke(const std::string& modifiers, unsigned long symbol);
    void Press(unsigned long symbol, bool down);
    void Rest(int milliseconds);

    _XDisplay* x_;
};

}  // namespace drill
