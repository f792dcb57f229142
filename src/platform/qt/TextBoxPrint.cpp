#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "platform/qt/TextBox.h"

namespace platform::qt {

// Page after page as the control lays them out; lines too long for the paper go on below.
bool TextBox::Print(QPrinter& printer, bool selectionOnly) {
    const Span selection = Selection();
    const Span all{0, TextLength()};
    const Span span = selectionOnly && selection.Length > 0 ? selection : all;
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    Sci(SCI_SETPRINTWRAPMODE, SC_WRAP_WORD);
    Sci(SCI_SETPRINTCOLOURMODE, SC_PRINT_COLOURONWHITE);
    Sci(SCI_SETMARGINWIDTHN, 0, 0);
    const QRect page(QPoint(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size());
    const long end = span.Start + span.Length;
    bool printed = true;
    for (long at = span.Start; at < end;) {
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
