#pragma once

#include <QImage>
#include <QRect>
#include <string>
#include <vector>

namespace drill {

// Where a text stands decides about its letters.
enum class In {
    Captions,  // of controls and menus; "&X" is an underlined letter
    Title,     // of the active document: white with a shadow
    Document,  // a part of a line
    Messages,  // the same, in the message list
};

// Something to look for on a picture of the screen.
class Shape {
  public:
    // As the toolkit draws it, in any colour on any ground.
    static Shape Text(const std::string& text, In where);
    // An enabled button of the toolbar, by the name of its picture's file: "copy", "dep-comp".
    static Shape Button(const std::string& name);

    // Where it stands inside `area`, from the top.
    std::vector<QRect> FindIn(const QImage& screen, const QRect& area) const;

  private:
    // Of a button the colour; of a text the least and the greatest share of ink, 0 to 255.
    struct Dot {
        QPoint At;
        QRgb Color = 0;
        int Least = 0, Most = 0;
    };
    struct Look {
        QSize Size;
        std::vector<Dot> Dots;  // what is compared
        Dot Ink, Ground;        // of a text: the dot with most ink and one without
    };
    struct Manner;
    struct Pixels;
    static Manner MannerOf(const std::string& text, In where);
    static Look TextLook(const std::vector<QImage>& drawn, const Manner& manner);
    bool IsAt(const Look& look, const Pixels& screen, const QPoint& at) const;

    bool isText_ = false;
    std::vector<Look> looks_;  // a text may begin between two pixels
};

}  // namespace drill
