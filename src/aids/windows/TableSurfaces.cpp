#include "aids/windows/TableSurfaces.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/Guard.h"
#include "platform/qt/Twips.h"

namespace aids {
namespace {

using platform::qt::TwipsPerPixel;

constexpr Half halves[] = {Half::Input, Half::Output};
constexpr int thin = 1;  // pixels, of lines
constexpr int thick = 2;
constexpr int cellInset = 2;  // pixels, of what a toggle draws

const QColor bandColor(192, 192, 192);

float Twips(int pixels) { return platform::qt::ToTwips(pixels); }

// Places on whole pixels of the screen: lines and letters are crisp at every scale factor.
class Canvas {
  public:
    explicit Canvas(QPainter& painter) : painter_(painter), scale_(painter.device()->devicePixelRatio()) {}

    QPointF At(float x, float y) const { return {Snap(x), Snap(y)}; }

    void Fill(float left, float top, float right, float bottom, const QColor& color) {
        painter_.fillRect(QRectF(At(left, top), At(right, bottom)), color);
    }
    // A line of two pixels lies on both sides of its place.
    void Vertical(float x, float top, float bottom, int width) {
        const QPointF from = At(x, top);
        Line({from.x() - Left(width), from.y(), Thickness(width), Snap(bottom) - from.y()});
    }
    void Horizontal(float y, float right, int width) {
        Line({0, Snap(y) - Left(width), Snap(right), Thickness(width)});
    }
    // At its upper left corner.
    void Text(float x, float y, const std::string& text) {
        const QPointF base(0, painter_.fontMetrics().ascent());
        painter_.drawText(At(x, y) + base, QString::fromStdString(text));
    }

  private:
    qreal Snap(float twips) const {
        return std::round(static_cast<qreal>(twips / TwipsPerPixel) * scale_) / scale_;
    }
    qreal Thickness(int width) const { return std::max(1.0, std::round(width * scale_)) / scale_; }
    qreal Left(int width) const { return width > thin ? Thickness(thin) : 0; }
    void Line(const QRectF& line) { painter_.fillRect(line, painter_.pen().color()); }

    QPainter& painter_;
    const qreal scale_;
};

}  // namespace

TableSurface::TableSurface(const char* name, const TableValues& values, const TableGeometry& geometry)
    : values_(values), geometry_(geometry) {
    setObjectName(name);
    setFocusPolicy(Qt::ClickFocus);  // a press takes what stands in a field before
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

// Whole pixels, so that rounded sizes divide places as exactly as the drawn ones do.
TextSizes TableSurface::Sizes() const {
    const QFontMetrics metrics = fontMetrics();
    return {Twips(metrics.horizontalAdvance('0')), Twips(metrics.horizontalAdvance('F')),
            Twips(metrics.height())};
}

void TableSurface::paintEvent(QPaintEvent* event) {
    platform::qt::Guarded([&] {
        if (values_.IsEmpty()) return;
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Text));
        for (const QRect& part : event->region()) {
            painter.setClipRect(part);  // letters on its edge are drawn once in each part
            PaintPart(painter, part);
        }
    });
}

void RulerSurface::SetTitles(const std::string& input, const std::string& output) {
    input_ = input;
    output_ = output;
    update();
}

void RulerSurface::PaintTitles(QPainter& painter) {
    const auto widthOf = [&](std::string_view text) {
        const auto size = static_cast<qsizetype>(text.size());
        return Twips(fontMetrics().horizontalAdvance(QString::fromUtf8(text.data(), size)));
    };
    const float left = geometry_.OutputLeft;
    Canvas canvas(painter);
    canvas.Text(textInset, textInset, FitTitle(input_, input_, left - textInset, widthOf));
    // Kept: an output title without room is shown as the beginning of the input's.
    const float room = geometry_.TotalWidth - left - textInset;
    canvas.Text(left + textInset, textInset, FitTitle(output_, input_, room, widthOf));
}

void RulerSurface::PaintPart(QPainter& painter, const QRect& part) {
    const float middle = geometry_.CellHeight;
    const float foot = Twips(height());
    Canvas canvas(painter);
    canvas.Fill(0, middle, geometry_.TotalWidth, 2 * middle, bandColor);
    canvas.Vertical(geometry_.TotalWidth, 0, foot, thick);
    canvas.Vertical(geometry_.OutputLeft, 0, foot, thick);
    canvas.Horizontal(0, geometry_.TotalWidth, thin);
    canvas.Horizontal(middle, geometry_.TotalWidth, thin);
    PaintTitles(painter);
    painter.setPen(Qt::black);  // on the band
    for (const Half half : halves) {
        for (std::int32_t bit = 0; bit < values_.Width(half); ++bit) {
            const float x = geometry_.BitLeft(half, bit);
            if (x > Twips(part.right() + 1) || x + geometry_.CellWidth < Twips(part.left())) continue;
            canvas.Vertical(x, middle, foot, thin);
            canvas.Text(x + geometry_.CellWidth / 10, middle, " " + std::to_string(bit));
        }
    }
}

void GridSurface::PaintPart(QPainter& painter, const QRect& part) {
    PaintLines(painter, part);
    // A letter hangs a little into the row below.
    const auto first = static_cast<std::int32_t>(Twips(part.top()) / geometry_.CellHeight) - 1;
    const auto last = static_cast<std::int32_t>(Twips(part.bottom() + 1) / geometry_.CellHeight);
    for (std::int32_t row = std::max(first, 0); row <= std::min(last, values_.RowCount - 1); ++row) {
        for (const Half half : halves) PaintRow(painter, part, row, half);
    }
}

void GridSurface::PaintLines(QPainter& painter, const QRect& part) {
    const float foot = static_cast<float>(values_.RowCount) * geometry_.CellHeight;
    const float right = geometry_.TotalWidth;
    Canvas canvas(painter);
    for (const float x : {0.0F, geometry_.OutputLeft, right}) canvas.Vertical(x, 0, foot, thick);
    for (const float y : {0.0F, foot}) canvas.Horizontal(y, right, thick);
    const auto first = static_cast<std::int32_t>(Twips(part.top()) / geometry_.CellHeight);
    for (std::int32_t row = first; row <= values_.RowCount; ++row) {
        const float y = static_cast<float>(row) * geometry_.CellHeight;
        if (y > Twips(part.bottom() + 1)) break;
        canvas.Horizontal(y, right, thin);
    }
    for (const Half half : halves) {
        for (std::int32_t bit = 0; bit < values_.Width(half); ++bit)
            canvas.Vertical(geometry_.BitLeft(half, bit), 0, foot, thin);
    }
}

void GridSurface::PaintRow(QPainter& painter, const QRect& part, std::int32_t row, Half half) {
    const std::string& bits = values_.Row(half, row);
    const float y = static_cast<float>(row) * geometry_.CellHeight + textInset;
    const float left = Twips(part.left());
    const float right = Twips(part.right() + 1);
    Canvas canvas(painter);
    if (geometry_.HexLeft(half) < right && geometry_.BitLeft(half, 0) > left) {
        const std::string hex = HexText(bits);
        const float width = Twips(fontMetrics().horizontalAdvance(QString::fromStdString(hex)));
        canvas.Text(geometry_.BitLeft(half, 0) - textInset - width, y, hex);
    }
    std::int32_t column = 0;
    for (const char bit : bits) {
        const float x = geometry_.BitLeft(half, column++);
        if (x > right || x + geometry_.CellWidth < left) continue;
        painter.drawStaticText(canvas.At(x + geometry_.CellWidth / 3, y), bits_[bit == '0' ? 0 : 1]);
    }
}

void GridSurface::UpdateBit(const TableCell& bit) {
    const auto inside = [&](float left, float right) {
        const float top = static_cast<float>(bit.Row) * geometry_.CellHeight;
        const QPoint from(platform::qt::ToPixels(left), platform::qt::ToPixels(top));
        const QPoint to(platform::qt::ToPixels(right), platform::qt::ToPixels(top + geometry_.CellHeight));
        return QRect(from, to - QPoint(1, 1)).adjusted(cellInset, cellInset, -cellInset, -cellInset);
    };
    update(inside(geometry_.HexLeft(bit.Half), geometry_.BitLeft(bit.Half, 0)));
    update(inside(geometry_.BitLeft(bit.Half, bit.Column), geometry_.BitLeft(bit.Half, bit.Column + 1)));
}

void GridSurface::mousePressEvent(QMouseEvent* event) {
    platform::qt::Guarded([&] {
        const QPointF at = event->position() * static_cast<qreal>(TwipsPerPixel);
        const auto cell = CellAt(values_, geometry_, static_cast<float>(at.x()), static_cast<float>(at.y()));
        if (cell) OnPress(*cell);
    });
}

}  // namespace aids
