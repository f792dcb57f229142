#include "platform/qt/TextBoxKeys.h"

#include <Qsci/qsciscintillabase.h>

#include <QKeyEvent>
#include <algorithm>
#include <iterator>

namespace platform::qt {
namespace {

using Q = QsciScintillaBase;

constexpr int none = Q::SCMOD_NORM;
constexpr int shift = Q::SCMOD_SHIFT;
constexpr int ctrl = Q::SCMOD_CTRL;
constexpr int alt = Q::SCMOD_ALT;

constexpr EditKey editKeys[] = {
    {Qt::Key_Left, none, Q::SCI_CHARLEFT},
    {Qt::Key_Left, shift, Q::SCI_CHARLEFTEXTEND},
    {Qt::Key_Left, ctrl, Q::SCI_WORDLEFT},
    {Qt::Key_Left, ctrl | shift, Q::SCI_WORDLEFTEXTEND},
    {Qt::Key_Right, none, Q::SCI_CHARRIGHT},
    {Qt::Key_Right, shift, Q::SCI_CHARRIGHTEXTEND},
    {Qt::Key_Right, ctrl, Q::SCI_WORDRIGHT},
    {Qt::Key_Right, ctrl | shift, Q::SCI_WORDRIGHTEXTEND},
    {Qt::Key_Up, none, Q::SCI_LINEUP},
    {Qt::Key_Up, shift, Q::SCI_LINEUPEXTEND},
    {Qt::Key_Up, ctrl, Q::SCI_LINESCROLLUP},
    {Qt::Key_Down, none, Q::SCI_LINEDOWN},
    {Qt::Key_Down, shift, Q::SCI_LINEDOWNEXTEND},
    {Qt::Key_Down, ctrl, Q::SCI_LINESCROLLDOWN},
    {Qt::Key_Home, none, Q::SCI_HOME},
    {Qt::Key_Home, shift, Q::SCI_HOMEEXTEND},
    {Qt::Key_Home, ctrl, Q::SCI_DOCUMENTSTART},
    {Qt::Key_Home, ctrl | shift, Q::SCI_DOCUMENTSTARTEXTEND},
    {Qt::Key_End, none, Q::SCI_LINEEND},
    {Qt::Key_End, shift, Q::SCI_LINEENDEXTEND},
    {Qt::Key_End, ctrl, Q::SCI_DOCUMENTEND},
    {Qt::Key_End, ctrl | shift, Q::SCI_DOCUMENTENDEXTEND},
    {Qt::Key_PageUp, none, Q::SCI_PAGEUP},
    {Qt::Key_PageUp, shift, Q::SCI_PAGEUPEXTEND},
    {Qt::Key_PageDown, none, Q::SCI_PAGEDOWN},
    {Qt::Key_PageDown, shift, Q::SCI_PAGEDOWNEXTEND},
    {Qt::Key_Backspace, none, Q::SCI_DELETEBACK},
    {Qt::Key_Backspace, shift, Q::SCI_DELETEBACK},
    {Qt::Key_Backspace, ctrl, Q::SCI_DELWORDLEFT},
    {Qt::Key_Backspace, alt, Q::SCI_UNDO},
    {Qt::Key_Delete, none, Q::SCI_CLEAR},
    {Qt::Key_Delete, shift, Q::SCI_CUT},
    {Qt::Key_Delete, ctrl, Q::SCI_DELWORDRIGHT},
    {Qt::Key_Insert, none, Q::SCI_EDITTOGGLEOVERTYPE},
    {Qt::Key_Insert, shift, Q::SCI_PASTE},
    {Qt::Key_Insert, ctrl, Q::SCI_COPY},
    {Qt::Key_Tab, none, Q::SCI_TAB},
    {Qt::Key_Tab, shift, Q::SCI_BACKTAB},
    {Qt::Key_Backtab, none, Q::SCI_BACKTAB},
    {Qt::Key_Backtab, shift, Q::SCI_BACKTAB},
    {Qt::Key_Return, none, Q::SCI_NEWLINE},
    {Qt::Key_Return, shift, Q::SCI_NEWLINE},
    {Qt::Key_Enter, none, Q::SCI_NEWLINE},
    {Qt::Key_Enter, shift, Q::SCI_NEWLINE},
    {Qt::Key_A, ctrl, Q::SCI_SELECTALL},
    // The menu's entries for these may not have heard of the selection yet.
    {Qt::Key_C, ctrl, Q::SCI_COPY},
    {Qt::Key_X, ctrl, Q::SCI_CUT},
    {Qt::Key_Y, ctrl, Q::SCI_REDO},
    {Qt::Key_Z, ctrl | shift, Q::SCI_REDO},
};

struct VirtualKey {
    int Key;
    int Code;
};

constexpr VirtualKey virtualKeys[] = {
    {Qt::Key_Backspace, 8},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_AltGr, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Select, 41},
    {Qt::Key_Printer, 42},
    {Qt::Key_Execute, 43},
    {Qt::Key_Print, 44},
    {Qt::Key_SysReq, 44},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Help, 47},
    {Qt::Key_Meta, 91},
    {Qt::Key_Super_L, 91},
    {Qt::Key_Super_R, 92},
    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    // Signs above the digits of the common keyboard: the code is the digit's.
    {Qt::Key_Exclam, 49},
    {Qt::Key_At, 50},
    {Qt::Key_NumberSign, 51},
    {Qt::Key_Dollar, 52},
    {Qt::Key_Percent, 53},
    {Qt::Key_AsciiCircum, 54},
    {Qt::Key_Ampersand, 55},
    {Qt::Key_Asterisk, 56},
    {Qt::Key_ParenLeft, 57},
    {Qt::Key_ParenRight, 48},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Colon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Less, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Underscore, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Greater, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, 192},
    {Qt::Key_AsciiTilde, 192},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_BraceLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_Bar, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_BraceRight, 221},
    {Qt::Key_Apostrophe, 222},
    {Qt::Key_QuoteDbl, 222},
};

constexpr VirtualKey keypadKeys[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},   {Qt::Key_Comma, 108},
    {Qt::Key_Minus, 109},    {Qt::Key_Period, 110}, {Qt::Key_Slash, 111},
};

constexpr int otherKey = 255;

template <std::size_t N>
int CodeIn(const VirtualKey (&table)[N], int key) {
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [key](const VirtualKey& entry) { return entry.Key == key; });
    return found == std::end(table) ? otherKey : found->Code;
}

int ModifierBits(const QKeyEvent& event) {
    int bits = none;
    if (event.modifiers() & Qt::ShiftModifier) bits |= shift;
    if (event.modifiers() & Qt::ControlModifier) bits |= ctrl;
    if (event.modifiers() & Qt::AltModifier) bits |= alt;
    if (event.modifiers() & Qt::MetaModifier) bits |= Q::SCMOD_META;
    return bits;
}

}  // namespace

int VirtualKeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if (event.modifiers() & Qt::KeypadModifier) {
        if (key >= Qt::Key_0 && key <= Qt::Key_9) return 96 + key - Qt::Key_0;
        if (const int code = CodeIn(keypadKeys, key); code != otherKey) return code;
    }
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
    return CodeIn(virtualKeys, key);
}

std::optional<int> EditCommand(const QKeyEvent& event) {
    const int bits = ModifierBits(event);
    for (const EditKey& entry : editKeys)
        if (entry.Key == event.key() && entry.Modifiers == bits) return entry.Command;
    // The line feed key, for which the toolkit has no name.
    if (bits == none && event.text() == QLatin1String("\n")) return Q::SCI_NEWLINE;
    return std::nullopt;
}

bool TypesText(const QKeyEvent& event) {
    const bool hasCtrl = event.modifiers() & Qt::ControlModifier;
    const bool hasAlt = event.modifiers() & Qt::AltModifier;
    // Ctrl and Alt together are what the third level of some keyboards reports.
    if (hasCtrl != hasAlt || (event.modifiers() & Qt::MetaModifier)) return false;
    const QString text = event.text();
    return !text.isEmpty() && text.at(0).category() != QChar::Other_Control;
}

}  // namespace platform::qt
