#include "wavrik/WavePane.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/qt/Guard.h"

namespace wavrik {
namespace {

constexpr double barSteps = 1 << 30;  // of a scroll bar; more than that many pixels share steps
constexpr double notch = 120;         // the wheel's turn by one
constexpr double notchFactor = 1.25;
constexpr int arrowPixels = 40;

}  // namespace

WavePane::WavePane(QWidget* parent) : QAbstractScrollArea(parent) {
    QFont columns = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    columns.setPointSizeF(font().pointSizeF());
    setFont(columns);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    Measure();
    LayOut();
}

int WavePane::RowHeight() const { return fontMetrics().height() * 3 / 2; }
int WavePane::FirstRow() const { return verticalScrollBar()->value(); }

QRect WavePane::WavesArea() const {
    return viewport()->rect().adjusted(nameWidth_ + valueWidth_, 2 * RowHeight(), 0, 0);
}

void WavePane::Measure() {
    needed_ = {8, 15};  // "Signal", "L, expected H"
    for (const Signal& signal : waves_.Signals)
        needed_.Names = std::max(needed_.Names, signal.Name.size() + (signal.IsMember ? 4 : 2));
    for (const std::string& word : waves_.Words) needed_.Values = std::max(needed_.Values, word.size() + 1);
}

// Names and values get what they need, and no more than half the width.
void WavePane::LayOut() {
    const auto width = [this](std::size_t characters) {
        const int most = viewport()->width() / 4;
        const int needed = static_cast<int>(std::min<std::size_t>(characters, 1000));
        return std::min(needed * fontMetrics().horizontalAdvance('0'), most);
    };
    nameWidth_ = width(needed_.Names);
    valueWidth_ = width(needed_.Values);
    view_.SetWidth(WavesArea().width());
    UpdateBars();
}

void WavePane::UpdateBars() {
    updatesBars_ = true;
    const int inView = std::max(WavesArea().height() / RowHeight(), 1);
    verticalScrollBar()->setPageStep(inView);
    verticalScrollBar()->setRange(0, std::max(static_cast<int>(waves_.Signals.size()) - inView, 0));
    const double steps = std::min(view_.PagesBeside() * view_.Width(), barSteps);
    const double page = steps > 0 ? steps / view_.PagesBeside() : view_.Width();
    horizontalScrollBar()->setPageStep(std::max(static_cast<int>(page), 1));
    horizontalScrollBar()->setSingleStep(std::max(static_cast<int>(page) / 10, 1));
    horizontalScrollBar()->setRange(0, static_cast<int>(steps));
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(view_.Share() * steps)));
    updatesBars_ = false;
    viewport()->update();
}

void WavePane::scrollContentsBy(int dx, int) {
    const int most = horizontalScrollBar()->maximum();
    if (!updatesBars_ && dx != 0 && most > 0)
        view_.ScrollToShare(static_cast<double>(horizontalScrollBar()->value()) / most);
    viewport()->update();
}

void WavePane::ShowAnew(Waves waves) {
    constexpr int least = 8;      // pixels of a vector that still tell something
    constexpr double first = 24;  // else
    waves_ = std::move(waves);
    cursor_ = {};
    Measure();
    LayOut();
    view_.Show(waves_.End);
    const double perVector = VectorTime / view_.PerPixel();
    if (waves_.HasVectors && perVector < least) view_.ZoomAt(0, first / perVector);
    verticalScrollBar()->setValue(0);
    UpdateBars();
    emit CursorMoved();
}

void WavePane::ShowAgain(Waves waves) {
    waves_ = std::move(waves);
    view_.SetEnd(waves_.End);
    cursor_.At = std::min(cursor_.At, waves_.End);
    cursor_.Row = std::min(cursor_.Row, std::max<std::size_t>(waves_.Signals.size(), 1) - 1);
    Measure();
    LayOut();
    emit CursorMoved();
}

void WavePane::MoveCursor(Spot to) {
    cursor_ = to;
    view_.Reveal(to.At);
    const int row = static_cast<int>(to.Row);
    const int inView = verticalScrollBar()->pageStep();
    if (row < FirstRow() || row >= FirstRow() + inView) verticalScrollBar()->setValue(row - inView / 2);
    UpdateBars();
    emit CursorMoved();
}

void WavePane::Zoom(double factor) {
    const int x = view_.ToX(cursor_.At);
    view_.ZoomAt(x >= 0 && x < view_.Width() ? x : view_.Width() / 2, factor);
    UpdateBars();
}

void WavePane::Fit() {
    view_.Fit();
    UpdateBars();
}

bool WavePane::viewportEvent(QEvent* event) {
    platform::qt::Guarded([&] {
        switch (event->type()) {
            case QEvent::Paint:
                return Paint();
            case QEvent::Resize:
                return LayOut();
            case QEvent::Wheel:
                return Wheel(static_cast<QWheelEvent&>(*event));
            case QEvent::MouseButtonPress:
            case QEvent::MouseMove:
                return Press(static_cast<QMouseEvent&>(*event));
            default:
                break;
        }
    });
    const bool isOurs = event->type() == QEvent::Wheel || event->type() == QEvent::Paint;
    return isOurs || QAbstractScrollArea::viewportEvent(event);
}

void WavePane::Wheel(const QWheelEvent& event) {
    const QPoint turn = event.angleDelta();
    const double turned = (turn.y() != 0 ? turn.y() : turn.x()) / notch;
    const int x = static_cast<int>(event.position().x()) - WavesArea().left();
    if ((event.modifiers() & Qt::ShiftModifier) != 0 || turn.y() == 0)
        view_.ScrollBy(-turned * view_.Width() / 10);
    else if (x >= 0)
        view_.ZoomAt(x, std::pow(notchFactor, turned));
    else
        verticalScrollBar()->setValue(FirstRow() - static_cast<int>(std::lround(3 * turned)));
    UpdateBars();
}

void WavePane::Press(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint() - WavesArea().topLeft();
    if ((event.buttons() & Qt::LeftButton) == 0 || at.y() < 0 || waves_.Signals.empty()) return;
    if (at.x() >= 0) cursor_.At = view_.ToTime(std::min(at.x(), view_.Width()));
    cursor_.Row =
        std::min(static_cast<std::size_t>(FirstRow() + at.y() / RowHeight()), waves_.Signals.size() - 1);
    viewport()->update();
    emit CursorMoved();
}

void WavePane::keyPressEvent(QKeyEvent* event) {
    platform::qt::Guarded([&] {
        QScrollBar& bar = *horizontalScrollBar();
        switch (event->key()) {
            case Qt::Key_Left:
            case Qt::Key_Right:
                view_.ScrollBy(event->key() == Qt::Key_Left ? -arrowPixels : arrowPixels);
                return UpdateBars();
            case Qt::Key_Home:
                return bar.setValue(0);
            case Qt::Key_End:
                return bar.setValue(bar.maximum());
            default:
                QAbstractScrollArea::keyPressEvent(event);
        }
    });
}

QString WavePane::TimeText(Time at) const {
    return QString::number(at * waves_.UnitCount) + ' ' + QString::fromStdString(waves_.Unit);
}

}  // namespace wavrik
