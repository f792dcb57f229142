#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <set>
#include <unordered_map>

#include "base/ScopeExit.h"
#include "support/FormUser.h"

namespace doubles {
namespace {

constexpr double readable = 4.5;  // contrast of a text to its ground
constexpr int inkOfALetter = 6;   // pixels

// Each once.
class Found {
  public:
    void Note(const std::string& fault) {
        if (text_.find(fault + "|") == std::string::npos) text_ += fault + "|";
    }
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

// What it is called in the list of faults.
std::string Called(const QWidget& control) {
    const std::string name = control.objectName().toStdString();
    return name.empty() ? control.metaObject()->className() : name;
}

bool IsCut(const QWidget& control) {
    if (control.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return false;  // means to be cut
    const auto* label = qobject_cast<const QLabel*>(&control);
    const bool wraps = label != nullptr && label->wordWrap();
    const QSize needed = wraps ? QSize(0, label->heightForWidth(label->width())) : control.minimumSizeHint();
    return control.width() < needed.width() || control.height() < needed.height() ||
           !control.parentWidget()->rect().contains(control.geometry());
}

void FindCut(QWidget& form, Found& found) {
    for (const QWidget* control : form.findChildren<QWidget*>()) {
        const QString caption = CaptionOn(*control);
        if (control->isVisible() && !caption.isEmpty() && IsCut(*control))
            found.Note("cut: " + caption.toStdString());
    }
}

// Not a part of another control, nor one that only shows something.
bool IsForTheUser(const QWidget& control) {
    const QWidget& parent = *control.parentWidget();
    if (qobject_cast<const QComboBox*>(&parent) || qobject_cast<const QAbstractSpinBox*>(&parent))
        return false;
    if (control.objectName().startsWith("qt_") || control.inherits("QComboBoxPrivateContainer")) return false;
    if (control.inherits("QScrollBar") || control.inherits("QTabWidget")) return false;
    return (control.focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<const QAbstractButton*>(&control) ||
           qobject_cast<const QAbstractItemView*>(&control) || qobject_cast<const QLineEdit*>(&control);
}

void FindNameless(QWidget& form, Found& found) {
    for (QWidget* control : form.findChildren<QWidget*>()) {
        if (!control->isVisible() || !IsForTheUser(*control) || qobject_cast<QTabBar*>(control)) continue;
        const auto* face = QAccessible::queryAccessibleInterface(control);
        if (face->text(QAccessible::Name).trimmed().isEmpty()) found.Note("no name: " + Called(*control));
    }
}

std::set<const QWidget*> VisitedByTab(QWidget& form) {
    std::set<const QWidget*> visited;
    for (qsizetype left = form.findChildren<QWidget*>().size(); left > 0; --left) {
        QWidget* focus = form.focusWidget();
        if (focus != nullptr) {
            visited.insert(focus);
            visited.insert(focus->focusProxy());
            if (const auto* button = qobject_cast<QAbstractButton*>(focus); button && button->group())
                for (const auto* other : button->group()->buttons()) visited.insert(other);  // by the arrows
        }
        QTest::keyClick(focus == nullptr ? &form : focus, Qt::Key_Tab);
    }
    return visited;
}

void FindUnreached(QWidget& form, Found& found) {
    const auto visited = VisitedByTab(form);
    for (const QWidget* control : form.findChildren<QWidget*>()) {
        if (!control->isVisible() || !control->isEnabled() || !IsForTheUser(*control)) continue;
        if (!visited.contains(control)) found.Note("no Tab: " + Called(*control));
    }
}

double Light(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const auto [dark, bright] = std::minmax({Light(one), Light(other)});
    return (bright + 0.05) / (dark + 0.05);
}

// Of a text that stands alone on its ground, which is the color of most of it.
bool IsReadable(const QImage& picture) {
    std::unordered_map<QRgb, int> colors;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) ++colors[picture.pixel(x, y)];
    const auto isRarer = [](const auto& a, const auto& b) { return a.second < b.second; };
    const QColor ground = std::max_element(colors.begin(), colors.end(), isRarer)->first;
    int ink = 0;
    for (const auto& [color, count] : colors) ink += Contrast(color, ground) >= readable ? count : 0;
    return ink >= inkOfALetter;
}

// Where the text of a control stands; nothing where there is none.
QRect TextPlace(const QWidget& control) {
    constexpr int frame = 4;
    const QRect inner = control.rect().adjusted(frame, frame, -frame, -frame);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control))
        return edit->text().isEmpty() ? QRect() : inner;
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&control))
        return view->visualRect(view->model()->index(0, 0)) & view->viewport()->rect();
    if (qobject_cast<const QLabel*>(&control)) return control.rect();
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    if (button == nullptr || button->text().isEmpty()) return {};
    if (button->isCheckable()) {
        QStyleOptionButton option;
        option.initFrom(&control);
        return control.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &control);
    }
    return inner;
}

void FindPale(QWidget& form, Found& found) {
    const QImage picture = form.grab().toImage();
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<QLabel*>(control);
        const bool hasText = label != nullptr ? !label->text().isEmpty() : IsForTheUser(*control);
        if (!hasText || !control->isVisible() || !control->isEnabled()) continue;
        const QRect place = TextPlace(*control);
        if (place.isEmpty()) continue;
        const QRect shown(control->mapTo(&form, place.topLeft()), place.size());
        if (!IsReadable(picture.copy(shown))) found.Note("pale: " + Called(*control));
    }
}

QPalette DarkDesktop() {
    QPalette colors(QColor(0x31, 0x36, 0x3B), QColor(0x2A, 0x2E, 0x32));
    colors.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x20));
    colors.setColor(QPalette::Link, QColor(0x1D, 0x99, 0xF3));
    colors.setColor(QPalette::Highlight, QColor(0x2A, 0x5C, 0x8A));
    colors.setColor(QPalette::HighlightedText, Qt::white);
    return colors;
}

using Make = std::function<std::unique_ptr<QWidget>()>;

// Looks at every tab of the form.
void LookAt(const Make& make, const std::function<void(QWidget&, Found&)>& look, Found& found) {
    const auto form = make();
    form->show();
    form->activateWindow();
    if (!QTest::qWaitForWindowActive(form.get())) throw std::runtime_error("the form is not shown");
    look(*form, found);
    for (auto* tabs : form->findChildren<QTabWidget*>()) {
        for (int i = 0; i < tabs->count(); ++i) {
            if (!tabs->isTabVisible(i) || i == tabs->currentIndex()) continue;
            tabs->setCurrentIndex(i);
            QApplication::processEvents();
            look(*form, found);
        }
    }
}

}  // namespace

std::string NamelessControls(QWidget& form) {
    Found found;
    FindNameless(form, found);
    return found.Text();
}

std::string FormFaults(const Make& make) {
    const QFont font = QApplication::font();
    const QPalette colors = QApplication::palette();
    const base::ScopeExit restore([&] {
        QApplication::setFont(font);
        QApplication::setPalette(colors);
    });
    Found found;
    for (const int points : {8, 11, 16}) {
        QFont other = font;
        other.setPointSize(points);
        QApplication::setFont(other);
        LookAt(make, FindCut, found);
    }
    QApplication::setFont(font);
    if (qApp->devicePixelRatio() != 1) return found.Text();  // the rest is the same at each scale
    LookAt(make, FindNameless, found);
    LookAt(make, FindUnreached, found);
    QApplication::setPalette(DarkDesktop());
    LookAt(make, FindPale, found);
    return found.Text();
}

}  // namespace doubles
