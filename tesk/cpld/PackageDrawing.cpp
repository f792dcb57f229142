#include <algorithm>

#include "base/Text.h"
#include "cpld/Report.h"

namespace cpld {
namespace {

constexpr std::string_view lineEnd = "\r\n";

// Pins are counted against the clock: down the left side, along the bottom, up the right side, back along the
// top. The first pin is the upper one of the left side, but of a PLCC in the middle of the top.
struct Sides {
    explicit Sides(const Package& package) : Pins(package.PinCount) {
        const bool isLong = package.Suffix == "Q100";
        Height = isLong ? 30 : Pins / 4;
        Width = isLong ? 20 : Pins / 4;
        First = package.Suffix.front() == 'P' ? (Width + 1) / 2 + 1 : 1;
    }
    int Pin(int behindFirst) const { return (First - 1 + behindFirst) % Pins + 1; }
    int Left(int row) const { return Pin(row); }
    int Bottom(int column) const { return Pin(Height + column); }
    int Right(int row) const { return Pin(2 * Height + Width - 1 - row); }
    int Top(int column) const { return Pin(2 * Height + 2 * Width - 1 - column); }

    int Pins, Height, Width, First;
};

class Drawing {
  public:
    Drawing(const Package& package, const std::vector<std::string>& names) : sides_(package), names_(names) {
        for (int row = 0; row < sides_.Height; ++row)
            margin_ = std::max(margin_, NameAt(sides_.Left(row)).size());
    }

    std::string Draw() {
        const std::string rule = std::string(margin_ + 4, ' ') + "+" + std::string(InnerWidth(), '-') + "+";
        AddUpright(true);
        AddNumbers(&Sides::Top);
        Line(rule);
        for (int row = 0; row < sides_.Height; ++row) {
            const int left = sides_.Left(row), right = sides_.Right(row);
            Line(base::PadLeft(NameAt(left), margin_) + base::PadLeft(std::to_string(left), 4) + "|" +
                 std::string(InnerWidth(), ' ') + "|" + base::PadRight(std::to_string(right), 4) +
                 NameAt(right));
        }
        Line(rule);
        AddNumbers(&Sides::Bottom);
        AddUpright(false);
        return std::move(text_);
    }

  private:
    const std::string& NameAt(int pin) const { return names_[static_cast<std::size_t>(pin)]; }
    std::size_t InnerWidth() const { return static_cast<std::size_t>(sides_.Width) * 4; }

    void Line(std::string line) {
        line.erase(line.find_last_not_of(' ') + 1);
        (text_ += line) += lineEnd;
    }

    void AddNumbers(int (Sides::*pinOf)(int) const) {
        std::string line(margin_ + 5, ' ');
        for (int column = 0; column < sides_.Width; ++column)
            line += base::PadRight(std::to_string((sides_.*pinOf)(column)), 4);
        Line(line);
    }

    // Names read downwards; those at the top end at their pins.
    void AddUpright(bool isTop) {
        const auto name = [&](int column) -> const std::string& {
            return NameAt(isTop ? sides_.Top(column) : sides_.Bottom(column));
        };
        std::size_t height = 0;
        for (int column = 0; column < sides_.Width; ++column) height = std::max(height, name(column).size());
        for (std::size_t row = 0; row < height; ++row) {
            std::string line(margin_ + 5, ' ');
            for (int column = 0; column < sides_.Width; ++column) {
                const std::size_t above = isTop ? height - name(column).size() : 0;
                const bool isIn = row >= above && row - above < name(column).size();
                line += isIn ? name(column)[row - above] : ' ';
                line += "   ";
            }
            Line(line);
        }
    }

    Sides sides_;
    const std::vector<std::string>& names_;  // by pin number
    std::size_t margin_ = 0;
    std::string text_;
};

}  // namespace

std::string DrawPackage(const Package& package, const std::vector<std::string>& pinNames) {
    return Drawing(package, pinNames).Draw();
}

}  // namespace cpld
