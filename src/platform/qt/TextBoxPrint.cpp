#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "platform/qt/TextBox.h"

namespace platform::qt {

bool TextBox::Print(QPrinter& printer) {
    if (Selection().Length == 0) return PrintAll(printer);
    // The control prints whole lines only.
    TextBox extract;
    CopySelectionTo(extract);
    return extract.PrintAll(printer);
}

void TextBox::CopySelectionTo(TextBox& other) const {
    const Span span = Selection();
    std::string styles;
    ReadStyles(span.Start, span.Length, styles);
    other.default_ = default_;
    other.DefineOwnStyles();
    other.SetText(SelText());
    StyleTable::NumberSet defined;
    for (const char style : styles) {
        const auto number = static_cast<StyleTable::Number>(style);
        if (!defined[number]) other.DefineStyle(number, styles_.StyleOf(number));
        defined.set(number);
    }
    other.WriteStyles(0, styles);
}

// Page after page as the control lays them out; lines too long for the paper go on below.
bool TextBox::PrintAll(QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    Sci(SCI_SETPRINTWRAPMODE, SC_WRAP_WORD);
    Sci(SCI_SETPRINTCOLOURMODE, SC_PRINT_COLOURONWHITE);
    Sci(SCI_SETMARGINWIDTHN, 0, 0);
    const QRect page(QPoint(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size());
    const long end = TextLength();
    bool printed = true;
    for (long at = 0; at < end;) {
        const long next = SendScintilla(SCI_FORMATRANGE, 1UL, &painter, page, at, end);
        if (next <= at || next >= end) break;
        at = next;
        printed = printer.newPage();
        if (!printed) break;
    }
    marginLines_ = -1;
    UpdateMargin();
    return painter.end() && printed;
}

}  // namespace platform::qt
