#pragma once

#include <QAbstractScrollArea>
#include <QLine>
#include <QList>

#include "wavrik/TimeView.h"

namespace wavrik {

// Names and values at the cursor on the left, the waves below their time axis on the right. The wheel zooms
// at the pointer over the waves, and scrolls the rows over the names; with Shift it scrolls in time. A click
// or a drag sets the cursor; the arrows scroll.
class WavePane : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit WavePane(QWidget* parent = nullptr);

    void ShowAnew(Waves waves);   // from the start
    void ShowAgain(Waves waves);  // the view and the cursor stay
    const Waves& Shown() const { return waves_; }
    const TimeView& View() const { return view_; }
    Spot Cursor() const { return cursor_; }
    void MoveCursor(Spot to);  // and shows it
    void Zoom(double factor);  // at the cursor if it is in view, else in the middle
    void Fit();

    QRect WavesArea() const;  // without names and axis, in pixels of the viewport

  signals:
    void CursorMoved();

  protected:
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    struct Columns {
        std::size_t Names, Values;
    };
    // Of one wave, drawn at once: a line by itself costs more.
    struct Lines {
        QList<QLine> Inputs, Outputs;
    };

    void Measure();
    void LayOut();
    void UpdateBars();
    void Wheel(const QWheelEvent& event);
    void Press(const QMouseEvent& event);
    void Paint();
    void PaintAxis(QPainter& painter) const;
    void PaintLeft(QPainter& painter, std::size_t row, int top) const;
    void PaintWave(QPainter& painter, const Signal& signal, int top) const;
    void PaintSpan(QPainter& painter, const Span& span, int top, QList<QLine>& lines) const;
    QRect RowsInView() const;
    int FirstRow() const;
    int RowHeight() const;
    QString TimeText(Time at) const;

    Waves waves_;
    TimeView view_;
    Spot cursor_;
    Columns needed_{};  // in characters
    int nameWidth_ = 0;
    int valueWidth_ = 0;
    bool updatesBars_ = false;
};

}  // namespace wavrik
