#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "platform/qt/Guard.h"
#include "platform/qt/TextBox.h"

namespace platform::qt {
namespace {

constexpr std::int32_t windowSize = 65536;  // bytes styled together
constexpr std::int32_t maxCharacter = 4;    // bytes of UTF-8
constexpr double minSize = 1;               // points
constexpr double maxSize = 1638;            // as the font dialogs have it

int Hundredths(double points) {
    if (std::isnan(points)) points = minSize;
    return static_cast<int>(std::lround(std::clamp(points, minSize, maxSize) * 100));
}

// The family to draw with. The font system replaces one that is missing, by a fixed font where a fixed one
// is meant.
QByteArray DrawnFamily(const std::string& name) {
    const QString family = QString::fromStdString(name);
    if (QFontDatabase::hasFamily(family)) return family.toUtf8();
    const QFontInfo drawn{QFont(family)};
    const std::string upper = base::Upper(name);
    for (const char* sign : {"COURIER", "MONO", "CONSOL", "FIXED", "TERMINAL", "TYPEWRITER"})
        if (!drawn.fixedPitch() && base::Contains(upper, sign))
            return QFontDatabase::systemFont(QFontDatabase::FixedFont).family().toUtf8();
    return drawn.family().toUtf8();
}

}  // namespace

// New style numbers by old number, found as they are met.
class TextBox::Repaint {
  public:
    Repaint() { numbers_.fill(-1); }

    // `change` makes the new look of the old one.
    template <typename Change>
    void Apply(StyleTable& table, std::span<char> styles, const Change& change) {
        for (char& style : styles) {
            const auto old = static_cast<StyleTable::Number>(style);
            if (numbers_[old] < 0) {
                CharStyle look = table.StyleOf(old);
                change(look);
                numbers_[old] = table.NumberOf(look);
            }
            style = static_cast<char>(numbers_[old]);
        }
    }

  private:
    std::array<std::int16_t, 256> numbers_;
};

// A piece of the style bytes under work: read once, changed in memory, written back in one go.
class TextBox::StyleWindow {
  public:
    // `end`: nothing behind it is looked at.
    StyleWindow(TextBox& box, std::int32_t end) : box_(box), end_(end) { box_.styles_.Hold(); }
    ~StyleWindow() {
        Write();
        box_.styles_.Unhold();
    }
    StyleWindow(const StyleWindow&) = delete;
    StyleWindow& operator=(const StyleWindow&) = delete;

    template <typename Change>
    void Apply(Span span, Repaint& repaint, const Change& change) {
        const std::int32_t end = std::min(span.Start + span.Length, end_);
        for (std::int32_t offset = span.Start; offset < end;) {
            const std::span<char> styles = At(offset, end - offset);
            repaint.Apply(box_.styles_, styles, change);
            offset += static_cast<std::int32_t>(styles.size());
        }
    }

  private:
    // The style bytes from `offset`, at most `length` of them.
    std::span<char> At(std::int32_t offset, std::int32_t length) {
        const auto held = start_ + static_cast<std::int32_t>(styles_.size());
        if (offset < start_ || offset >= held) {
            Write();
            start_ = offset;
            box_.ReadStyles(offset, std::min(windowSize, end_ - offset), styles_);
        }
        const auto from = static_cast<std::size_t>(offset - start_);
        return std::span(styles_).subspan(from,
                                          std::min(static_cast<std::size_t>(length), styles_.size() - from));
    }
    void Write() { box_.WriteStyles(start_, styles_); }

    TextBox& box_;
    std::int32_t end_;
    std::int32_t start_ = 0;
    std::string styles_;
};

void TextBox::DefineStyle(StyleTable::Number number, const CharStyle& style) {
    const QByteArray family = DrawnFamily(style.FontName);
    SendScintilla(SCI_STYLESETFONT, static_cast<uintptr_t>(number), family.constData());
    Sci(SCI_STYLESETSIZEFRACTIONAL, number, style.FontSize);
    Sci(SCI_STYLESETFORE, number, style.Format.Color & 0xFFFFFF);
    Sci(SCI_STYLESETBACK, number, paper_);
    Sci(SCI_STYLESETBOLD, number, style.Format.Bold);
    Sci(SCI_STYLESETITALIC, number, style.Format.Italic);
    Sci(SCI_STYLESETUNDERLINE, number, style.Format.Underline);
}

// Those of the margin and of the empty paper.
void TextBox::DefineOwnStyles() {
    const QByteArray family = DrawnFamily(default_.FontName);
    for (int own = STYLE_DEFAULT; own <= STYLE_LASTPREDEFINED; ++own) {
        SendScintilla(SCI_STYLESETFONT, static_cast<uintptr_t>(own), family.constData());
        Sci(SCI_STYLESETSIZEFRACTIONAL, own, default_.FontSize);
    }
    marginLines_ = -1;
    UpdateMargin();
}

StyleTable::Number TextBox::NumberAt(std::int32_t offset) const {
    return static_cast<StyleTable::Number>(Sci(SCI_GETSTYLEAT, offset));
}

CharStyle TextBox::SelStyle() const {
    const Span span = Selection();
    if (span.Length > 0) return styles_.StyleOf(NumberAt(span.Start));
    if (pending_ && pending_->Offset == span.Start) return pending_->Style;
    if (TextLength() == 0) return default_;
    return styles_.StyleOf(NumberAt(std::max(span.Start - 1, 0)));
}

void TextBox::SetSelColor(std::int32_t color) {
    ChangeSelStyle([color](CharStyle& style) { style.Format.Color = color & 0xFFFFFF; });
}
void TextBox::SetSelBold(bool on) {
    ChangeSelStyle([on](CharStyle& style) { style.Format.Bold = on; });
}
void TextBox::SetSelItalic(bool on) {
    ChangeSelStyle([on](CharStyle& style) { style.Format.Italic = on; });
}
void TextBox::SetSelUnderline(bool on) {
    ChangeSelStyle([on](CharStyle& style) { style.Format.Underline = on; });
}
void TextBox::SetSelFontName(const std::string& name) {
    ChangeSelStyle([&name](CharStyle& style) { style.FontName = name; });
    TidyStylesLater();
}
void TextBox::SetSelFontSize(double size) {
    ChangeSelStyle([size](CharStyle& style) { style.FontSize = Hundredths(size); });
    TidyStylesLater();
}

void TextBox::SetDefaultFont(const std::string& name, double size) {
    default_.FontName = name;
    default_.FontSize = Hundredths(size);
    if (TextLength() == 0) pending_.reset();
    DefineOwnStyles();
    TidyStylesLater();
}

void TextBox::ChangeSelStyle(const std::function<void(CharStyle&)>& change) {
    const Span span = Selection();
    if (span.Length > 0) return ChangeStyles(WholeCharacters(span), change);
    PendingStyle pending{span.Start, SelStyle()};
    change(pending.Style);
    // In an empty text the formatting is the control's own: texts loaded later bear it too.
    if (TextLength() == 0) change(default_);
    pending_ = pending;
}

void TextBox::ChangeStyles(Span span, const std::function<void(CharStyle&)>& change) {
    Repaint repaint;
    StyleWindow(*this, span.Start + span.Length).Apply(span, repaint, change);
}

// A range that cuts a character of several bytes takes it whole: half a character can't be seen.
TextBox::Span TextBox::WholeCharacters(Span span) const {
    const auto isInside = [this](std::int32_t offset) {
        return offset > 0 && offset < TextLength() && (Sci(SCI_GETCHARAT, offset) & 0xC0) == 0x80;
    };
    std::int32_t start = span.Start;
    std::int32_t end = span.Start + span.Length;
    if (isInside(start)) start = static_cast<std::int32_t>(Sci(SCI_POSITIONBEFORE, start + 1));
    if (isInside(end)) {
        const long before = Sci(SCI_POSITIONBEFORE, end);
        end = static_cast<std::int32_t>(std::max<long>(end, Sci(SCI_POSITIONAFTER, before)));
    }
    return {std::min(start, span.Start), end - std::min(start, span.Start)};
}

void TextBox::ApplyFormats(std::span<const FormatRun> runs) {
    if (runs.empty()) return;
    struct Known {
        CharFormat Format;
        Repaint Numbers;
    };
    std::vector<Known> formats;
    const FormatRun& last = runs.back();
    StyleWindow window(*this,
                       Clamp(Clamp(last.Start) + std::clamp(last.Length, 0, TextLength()) + maxCharacter));
    for (const FormatRun& run : runs) {
        const std::int32_t from = Clamp(run.Start);
        const std::int32_t length = std::clamp(run.Length, 0, TextLength() - from);
        if (length == 0) continue;
        auto known = std::find_if(formats.begin(), formats.end(),
                                  [&run](const Known& format) { return format.Format == run.Format; });
        if (known == formats.end()) known = formats.insert(known, {run.Format, {}});
        window.Apply(WholeCharacters({from, length}), known->Numbers,
                     [&run](CharStyle& style) { style.Format = run.Format; });
    }
}

void TextBox::ReadStyles(std::int32_t start, std::int32_t length, std::string& styles) const {
    std::string cells(static_cast<std::size_t>(length) * 2 + 2, '\0');
    SendScintilla(SCI_GETSTYLEDTEXT, static_cast<long>(start), static_cast<long>(start + length),
                  cells.data());
    styles.resize(static_cast<std::size_t>(length));
    for (std::size_t i = 0; i < styles.size(); ++i) styles[i] = cells[2 * i + 1];
}

void TextBox::WriteStyles(std::int32_t start, std::string_view styles) {
    if (styles.empty()) return;
    Sci(SCI_STARTSTYLING, start);
    Sci(SCI_SETSTYLINGEX, styles);
}

void TextBox::FillStyle(Span span, StyleTable::Number number) {
    Sci(SCI_STARTSTYLING, span.Start);
    Sci(SCI_SETSTYLING, span.Length, number);
}

StyleTable::NumberSet TextBox::NumbersInUse() const {
    StyleTable::NumberSet used;
    const auto add = [&used](std::string_view styles) {
        for (const char style : styles) used.set(static_cast<StyleTable::Number>(style));
    };
    std::string styles;
    const std::int32_t end = TextLength();
    for (std::int32_t start = 0; start < end; start += windowSize) {
        ReadStyles(start, std::min(windowSize, end - start), styles);
        add(styles);
    }
    for (const RemovedStyles& removed : removed_) add(removed.Styles);
    return used;
}

// Not at once: a font change sets several properties one after another.
void TextBox::TidyStylesLater() {
    if (tidyDue_) return;
    tidyDue_ = true;
    Soon(this, [this] { TidyStyles(); });
}

void TextBox::TidyStyles() {
    tidyDue_ = false;
    styles_.KeepOnly(NumbersInUse(), default_);
}

}  // namespace platform::qt
