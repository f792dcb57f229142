#include "drill/support/Hand.h"

#include <QString>
#include <QThread>
#include <map>
#include <optional>
#include <vector>

#include "drill/support/Screen.h"

// X's names stand against the toolkit's: they come last.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace drill {
namespace {

const std::map<std::string, KeySym> modifierKeys = {
    {"ctrl", XK_Control_L}, {"shift", XK_Shift_L}, {"alt", XK_Alt_L}, {"altgr", XK_ISO_Level3_Shift}};

// What is held down to reach the levels of a key.
constexpr const char* levels[] = {"", "shift+", "altgr+", "shift+altgr+"};

struct Place {
    KeyCode Code;
    std::size_t Level;
};

std::optional<Place> Find(Display* x, KeySym symbol) {
    int first, last;
    XDisplayKeycodes(x, &first, &last);
    for (std::size_t level = 0; level < std::size(levels); ++level)
        for (int code = first; code <= last; ++code)
            if (XkbKeycodeToKeysym(x, static_cast<KeyCode>(code), 0, static_cast<unsigned>(level)) == symbol)
                return Place{static_cast<KeyCode>(code), level};
    return std::nullopt;
}

KeySym SymbolOf(char32_t letter) {
    if (letter == U'\n') return XK_Return;
    if (letter == U'\t') return XK_Tab;
    if (letter == U'€') return XK_EuroSign;
    return letter < 0x100 ? letter : 0x1000000 | letter;
}

}  // namespace

void Hand::Rest(int milliseconds) {
    XSync(x_, False);
    if (milliseconds > 0) QThread::msleep(static_cast<unsigned long>(milliseconds));
}

void Hand::Press(unsigned long symbol, bool down) {
    const auto place = Find(x_, symbol);
    if (!place) throw Miss("this keyboard has no key for symbol " + std::to_string(symbol));
    XTestFakeKeyEvent(x_, place->Code, down, CurrentTime);
}

void Hand::Stroke(const std::string& modifiers, unsigned long symbol) {
    std::vector<KeySym> held;
    for (std::size_t from = 0, plus; (plus = modifiers.find('+', from)) != modifiers.npos; from = plus + 1)
        held.push_back(modifierKeys.at(modifiers.substr(from, plus - from)));
    for (const KeySym key : held) Press(key, true);
    Press(symbol, true);
    Rest(Pause / 3);
    Press(symbol, false);
    for (auto key = held.rbegin(); key != held.rend(); ++key) Press(*key, false);
    Rest(Pause - Pause / 3);
}

void Hand::Key(const std::string& chord) {
    const std::size_t end = chord.rfind('+') + 1;
    const KeySym symbol = XStringToKeysym(chord.substr(end).c_str());
    if (symbol == NoSymbol) throw Miss("no key is called " + chord);
    Stroke(chord.substr(0, end), symbol);
}

void Hand::Type(const std::string& text) {
    for (const char32_t letter : QString::fromStdString(text).toStdU32String()) {
        const KeySym symbol = SymbolOf(letter);
        const auto place = Find(x_, symbol);
        Stroke(place ? levels[place->Level] : "", symbol);
    }
}

void Hand::Move(const QPoint& to) {
    XTestFakeMotionEvent(x_, 0, to.x(), to.y(), CurrentTime);
    Rest(Pause / 3);
}

// The clicks of a double click follow each other at once, however busy the machine is.
void Hand::Click(const QPoint& at, int count, int button) {
    Move(at);
    for (int i = 0; i < count; ++i)
        for (const Bool down : {True, False})
            XTestFakeButtonEvent(x_, static_cast<unsigned>(button), down, CurrentTime);
    Rest(Pause);
}

void Hand::Drag(const QPoint& from, const QPoint& to) {
    constexpr int steps = 8;
    Move(from);
    XTestFakeButtonEvent(x_, 1, True, CurrentTime);
    for (int i = 1; i <= steps; ++i) Move(from + (to - from) * i / steps);
    XTestFakeButtonEvent(x_, 1, False, CurrentTime);
    Rest(Pause);
}

}  // namespace drill
