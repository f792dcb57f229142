#include "drill/support/Eye.h"

#include <QDir>
#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <utility>

#include "drill/support/Screen.h"

namespace drill {
namespace {

constexpr int room = 6;        // pixels around a text that is drawn
constexpr int phases = 4;      // steps of a pixel at which a letter may begin
constexpr int tolerance = 48;  // of 255, the whole way from ground to ink: a ground may have a gradient
constexpr int dotsForAnOddOne = 500;  // another letter differs in a dozen
constexpr int leastContrast = 140;    // of ink and ground: the distance of their colours. Less is disabled
constexpr int buttonSize = 24;        // pixels

using Rgb = std::array<int, 3>;

Rgb Parts(QRgb color) { return {qRed(color), qGreen(color), qBlue(color)}; }

Rgb operator-(const Rgb& a, const Rgb& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

int Product(const Rgb& a, const Rgb& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

// A text that begins between two steps is seen at both.
std::vector<QRect> WithoutOverlaps(std::vector<QRect> places) {
    std::sort(places.begin(), places.end(), [](const QRect& a, const QRect& b) {
        return std::pair(a.top(), a.left()) < std::pair(b.top(), b.left());
    });
    std::vector<QRect> apart;
    for (const QRect& place : places)
        if (std::none_of(apart.begin(), apart.end(), [&](const QRect& one) { return one.intersects(place); }))
            apart.push_back(place);
    return apart;
}

}  // namespace

// How a text is drawn: black on grey.
struct Shape::Manner {
    QFont Font;
    int Ground;      // 255: white
    bool HasShadow;  // white
    int Blank;       // pixels on either side

    QImage Draw(const QString& text, double phase) const {
        constexpr int flags = Qt::TextSingleLine | Qt::TextShowMnemonic;
        const QSize size = QFontMetrics(Font).boundingRect(QRect(0, 0, 4000, 100), flags, text).size();
        QImage image(size + QSize(2 * room, 2 * room), QImage::Format_RGB32);
        image.fill(QColor(Ground, Ground, Ground));
        QPainter painter(&image);
        painter.setFont(Font);
        const QRectF place(room + phase, room, image.width(), image.height());
        painter.setPen(Qt::white);
        if (HasShadow) painter.drawText(place.translated(1, 1), flags, text);
        painter.setPen(Qt::black);
        painter.drawText(place, flags, text);
        return image;
    }

    // Of a dot: 0 to 255.
    int Ink(const QImage& image, int x, int y) const {
        return std::max(0, 255 * (Ground - qGray(image.pixel(x, y))) / Ground);
    }
};

// What lies between the pictures of a text that begins at neighbouring steps.
Shape::Look Shape::TextLook(const std::vector<QImage>& drawn, const Manner& manner) {
    const QImage& middle = drawn[drawn.size() / 2];
    QRect ink;
    for (int y = 0; y < middle.height(); ++y)
        for (int x = 0; x < middle.width(); ++x)
            if (manner.Ink(middle, x, y) > 8) ink |= QRect(x, y, 1, 1);
    ink.adjust(-manner.Blank, 0, manner.Blank, 0);
    Look look{ink.size(), {}, {}, {}};
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        for (int x = ink.left(); x <= ink.right(); ++x) {
            Dot dot{.At = QPoint(x, y) - ink.topLeft(), .Least = 255};
            for (const QImage& image : drawn) {
                dot.Least = std::min(dot.Least, manner.Ink(image, x, y));
                dot.Most = std::max(dot.Most, manner.Ink(image, x, y));
            }
            look.Dots.push_back(dot);
        }
    }
    const auto order = [](const Dot& a, const Dot& b) { return a.Least + a.Most < b.Least + b.Most; };
    look.Ink = *std::max_element(look.Dots.begin(), look.Dots.end(), order);
    look.Ground = *std::min_element(look.Dots.begin(), look.Dots.end(), order);
    return look;
}

// Fonts are those of a first start. A caption has blank on either side, two pixels since a picture may stand
// close to it, three beside a digit: "1" is not seen in "13". Black lies about as far behind the blue ground
// of a title as white behind the grey.
Shape::Manner Shape::MannerOf(const std::string& text, In where) {
    switch (where) {
        case In::Title:
            return {.Font = QFont(), .Ground = 158, .HasShadow = true, .Blank = 3};
        case In::Document:
            return {.Font = QFont("Courier New", 8), .Ground = 255, .HasShadow = false, .Blank = 0};
        case In::Messages:
            return {.Font = QFont("Arial"), .Ground = 255, .HasShadow = false, .Blank = 0};
        case In::Captions:
            break;
    }
    const bool endsInDigit = std::isdigit(static_cast<unsigned char>(text.back())) != 0;
    return {.Font = QFont(), .Ground = 255, .HasShadow = false, .Blank = endsInDigit ? 3 : 2};
}

Shape Shape::Text(const std::string& text, In where) {
    if (text.find_first_not_of(" &") == text.npos) throw Miss("nothing to see in \"" + text + "\"");
    const Manner manner = MannerOf(text, where);
    QString shown = QString::fromStdString(text);
    if (where != In::Captions) shown.replace("&", "&&");
    Shape shape;
    shape.isText_ = true;
    for (int phase = 0; phase < phases; ++phase) {
        std::vector<QImage> drawn;
        for (const int step : {phase - 1, phase, phase + 1})
            drawn.push_back(manner.Draw(shown, 1.0 * step / phases));
        shape.looks_.push_back(TextLook(drawn, manner));
    }
    return shape;
}

Shape Shape::Button(const std::string& name) {
    const auto files = QDir(DRILL_ICONS).entryList({QString::fromStdString("*-" + name + ".svg")});
    if (files.size() != 1) throw Miss("no picture is called " + name);
    QImage image(buttonSize, buttonSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(QDir(DRILL_ICONS).filePath(files.first())).render(&painter);
    painter.end();
    Look look{image.size(), {}, {}, {}};
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) == 255)
                look.Dots.push_back({.At = {x, y}, .Color = image.pixel(x, y)});  // opaque
    Shape shape;
    shape.looks_.push_back(std::move(look));
    return shape;
}

// Some hundred thousand places are looked at for every text.
struct Shape::Pixels {
    const QRgb* First;
    qsizetype Width;
    QRgb operator[](const QPoint& at) const { return First[at.y() * Width + at.x()]; }
};

bool Shape::IsAt(const Look& look, const Pixels& screen, const QPoint& at) const {
    const auto seen = [&](const Dot& dot) { return screen[at + dot.At]; };
    if (!isText_)
        return std::all_of(look.Dots.begin(), look.Dots.end(),
                           [&](const Dot& dot) { return (seen(dot) | ~RGB_MASK) == dot.Color; });
    if (seen(look.Ink) == seen(look.Ground)) return false;
    // How far a colour lies on the way from the ground to the ink. A shadow lies behind the ground.
    const Rgb ground = Parts(seen(look.Ground));
    const Rgb way = Parts(seen(look.Ink)) - ground;
    const int whole = Product(way, way);
    if (whole < leastContrast * leastContrast) return false;
    const int mostInk = (look.Ink.Least + look.Ink.Most) / 2;
    auto odd = static_cast<int>(look.Dots.size()) / dotsForAnOddOne;
    return std::all_of(look.Dots.begin(), look.Dots.end(), [&](const Dot& dot) {
        const int share = std::clamp(mostInk * Product(Parts(seen(dot)) - ground, way) / whole, 0, 255);
        return (share >= dot.Least - tolerance && share <= dot.Most + tolerance) || odd-- > 0;
    });
}

std::vector<QRect> Shape::FindIn(const QImage& screen, const QRect& area) const {
    const QRect place = area & screen.rect();
    const Pixels pixels{reinterpret_cast<const QRgb*>(screen.constBits()), screen.bytesPerLine() / 4};
    std::vector<QRect> places;
    for (const Look& look : looks_) {
        const QSize last(place.right() - look.Size.width() + 1, place.bottom() - look.Size.height() + 1);
        for (int y = place.top(); y <= last.height(); ++y)
            for (int x = place.left(); x <= last.width(); ++x)
                if (IsAt(look, pixels, {x, y})) places.emplace_back(QPoint(x, y), look.Size);
    }
    return WithoutOverlaps(std::move(places));
}

}  // namespace drill
