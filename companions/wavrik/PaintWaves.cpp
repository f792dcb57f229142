#include <QPainter>
#include <algorithm>

#include "wavrik/WavePane.h"

// How the pane looks. Only what is in view is asked for and painted.
namespace wavrik {
namespace {

constexpr int margin = 4;  // above and below a wave, and before a name

QColor MismatchColor(const QPalette& desktop) {
    const bool isDark = desktop.color(QPalette::Base).lightness() < 128;
    return isDark ? QColor(255, 120, 120) : QColor(200, 30, 30);
}
QColor MismatchGround() { return {220, 40, 40, 70}; }

}  // namespace

void WavePane::Paint() {
    QPainter painter(viewport());
    const QRect area = WavesArea();
    const int height = RowHeight();
    PaintAxis(painter);
    const int rows = static_cast<int>(waves_.Signals.size());
    for (int row = FirstRow(), top = area.top(); row < rows && top < area.bottom(); ++row, top += height) {
        const auto index = static_cast<std::size_t>(row);
        if (index == cursor_.Row)
            painter.fillRect(0, top, viewport()->width(), height, palette().color(QPalette::AlternateBase));
        PaintLeft(painter, index, top);
        painter.setClipRect(area);
        painter.translate(area.left(), 0);
        PaintWave(painter, waves_.Signals[index], top);
        painter.translate(-area.left(), 0);
        painter.setClipping(false);
    }
    const int x = area.left() + view_.ToX(cursor_.At);
    if (rows > 0 && x >= area.left()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawLine(x, height, x, area.bottom());
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(nameWidth_, height, nameWidth_, area.bottom());
    painter.drawLine(area.left() - 1, height, area.left() - 1, area.bottom());
}

void WavePane::PaintAxis(QPainter& painter) const {
    if (waves_.Signals.empty()) return;
    const QRect area = WavesArea();
    const int widest = fontMetrics().horizontalAdvance(TimeText(waves_.End)) + 4 * margin;
    const int bottom = area.top() - margin;
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(nameWidth_ + margin, 0, valueWidth_, bottom), Qt::AlignVCenter, tr("Value"));
    painter.drawText(QRect(margin, 0, nameWidth_, bottom), Qt::AlignVCenter, tr("Signal"));
    for (const Time tick : TicksOf(view_, widest)) {
        const int x = area.left() + view_.ToX(tick);
        if (x < area.left()) continue;
        painter.setPen(palette().color(QPalette::Midlight));
        painter.drawLine(x, area.top(), x, area.bottom());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawLine(x, bottom - margin, x, bottom);
        painter.drawText(x + margin / 2, bottom - 2 * margin, TimeText(tick));
    }
}

void WavePane::PaintLeft(QPainter& painter, std::size_t row, int top) const {
    const Signal& signal = waves_.Signals[row];
    const auto put = [&](int left, int width, const std::string& text) {
        const QString shown =
            fontMetrics().elidedText(QString::fromStdString(text), Qt::ElideRight, width - margin);
        painter.drawText(QRect(left + margin, top, width - margin, RowHeight()), Qt::AlignVCenter, shown);
    };
    const int indent = signal.IsMember ? 2 * fontMetrics().horizontalAdvance('0') : 0;
    const Mismatch* mismatch = MismatchAt(signal, cursor_.At);
    std::string value = waves_.TextOf(ValueAt(signal, cursor_.At));
    painter.setPen(mismatch != nullptr ? MismatchColor(palette()) : palette().color(QPalette::Text));
    if (mismatch != nullptr) value += std::string(", expected ") + mismatch->Expected;
    put(indent, nameWidth_ - indent, signal.Name);
    put(nameWidth_, valueWidth_, value);
}

void WavePane::PaintWave(QPainter& painter, const Signal& signal, int top) const {
    const int bottom = top + RowHeight();
    for (const Stripe& stripe : MismatchesOf(signal, view_))
        painter.fillRect(QRect(stripe.From, top + 1, stripe.To - stripe.From, RowHeight() - 1),
                         MismatchGround());
    Lines lines;
    Level before = Level::None;
    painter.setPen(palette().color(QPalette::Text));
    for (const Span& span : SpansOf(signal, view_)) {
        const Level level = LevelOf(span.Shown);
        QList<QLine>& own = span.Shown == 'L' || span.Shown == 'H' ? lines.Outputs : lines.Inputs;
        PaintSpan(painter, span, top, own);
        const bool isEdge =
            (before == Level::Low && level == Level::High) || (before == Level::High && level == Level::Low);
        const bool toOpen = level != before && (level == Level::Open || before == Level::Open);
        if (!span.IsBusy && span.From > 0 && (isEdge || toOpen))
            own.emplaceBack(span.From, top + margin, span.From, bottom - margin);
        before = span.IsBusy ? Level::None : level;
    }
    painter.drawLines(lines.Inputs);
    painter.setPen(palette().color(QPalette::Link));
    painter.drawLines(lines.Outputs);
}

void WavePane::PaintSpan(QPainter& painter, const Span& span, int top, QList<QLine>& lines) const {
    const int high = top + margin;
    const int low = top + RowHeight() - margin;
    const Level level = span.IsBusy ? Level::None : LevelOf(span.Shown);
    const QRect box(span.From, high, span.To - span.From, low - high + 1);
    const auto across = [&](int y) { lines.emplaceBack(span.From, y, span.To, y); };
    if (span.IsBusy) painter.fillRect(box, palette().color(QPalette::Dark));
    if (level == Level::Unknown)
        painter.fillRect(box, QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
    const bool isBand = level == Level::Unknown || level == Level::Word;
    if (level == Level::Low || isBand) across(low);
    if (level == Level::High || isBand) across(high);
    if (level == Level::Open) across((high + low) / 2);
    if (isBand) lines.emplaceBack(span.From, high, span.From, low);
    if (level != Level::Word) return;
    const QString text = QString::fromStdString(waves_.TextOf(span.Shown));
    if (fontMetrics().horizontalAdvance('0') * static_cast<int>(text.size()) + margin < box.width())
        painter.drawText(box, Qt::AlignCenter, text);
}

}  // namespace wavrik
