#pragma once

#include <QStaticText>
#include <QWidget>
#include <array>
#include <functional>
#include <string>

#include "aids/TableGeometry.h"
#include "aids/TableValues.h"

namespace aids {

// picRuler and picGrid: drawn from values and geometry of the form, which outlive them, and no more of them
// than is seen.
class TableSurface : public QWidget {
  public:
    TableSurface(const char* name, const TableValues& values, const TableGeometry& geometry);

    TextSizes Sizes() const;  // of its font

  protected:
    void paintEvent(QPaintEvent* event) override;
    // Looks the same with the focus: nothing to draw.
    void focusInEvent(QFocusEvent*) override {}
    void focusOutEvent(QFocusEvent*) override {}
    virtual void PaintPart(QPainter& painter, const QRect& part) = 0;

    const TableValues& values_;
    const TableGeometry& geometry_;
};

class RulerSurface : public TableSurface {
  public:
    using TableSurface::TableSurface;

    void SetTitles(const std::string& input, const std::string& output);

  protected:
    void PaintPart(QPainter& painter, const QRect& part) override;

  private:
    void PaintTitles(QPainter& painter);

    std::string input_;
    std::string output_;
};

class GridSurface : public TableSurface {
  public:
    std::function<void(const TableCell&)> OnPress;  // with any button

    using TableSurface::TableSurface;

    // Draws the bit anew and the hexadecimal value that it belongs to, inside the lines of their cells.
    void UpdateBit(const TableCell& bit);

  protected:
    void PaintPart(QPainter& painter, const QRect& part) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void PaintLines(QPainter& painter, const QRect& part);
    void PaintRow(QPainter& painter, const QRect& part, std::int32_t row, Half half);

    // Laid out once: there are thousands to draw.
    const std::array<QStaticText, 2> bits_ = {QStaticText("0"), QStaticText("1")};
};

}  // namespace aids
