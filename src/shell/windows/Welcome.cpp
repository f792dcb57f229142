#include "shell/windows/Welcome.h"

#include <QEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QShortcut>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <algorithm>

#include "platform/qt/Controls.h"
#include "platform/qt/Guard.h"

namespace shell {

using platform::qt::Column;
using platform::qt::Label;
using platform::qt::On;
using platform::qt::Stretch;

namespace {

// A text in the colour of links, in every theme.
class LinkText : public QAbstractButton {
  public:
    explicit LinkText(const Welcome::Row& row) {
        setObjectName(QString::fromStdString("cmd" + row.Command));
        setText(QString::fromStdString(row.Caption));
        setAccessibleDescription(QString::fromStdString(row.Hint));
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
        QFont underlined = font();
        underlined.setUnderline(true);
        setFont(underlined);
    }
    QSize sizeHint() const override {
        return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * margin, 2 * margin);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!isEnter) return QAbstractButton::keyPressEvent(event);
        platform::qt::Guarded([this] { click(); });
    }
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        painter.setPen(palette().color(QPalette::Link));
        painter.drawText(rect(), Qt::AlignCenter, text());
        if (!hasFocus()) return;
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.state |= QStyle::State_KeyboardFocusChange;
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
    }

  private:
    static constexpr int margin = 4;  // pixels
};

}  // namespace

Welcome::Welcome(QMdiArea& area, const std::vector<Row>& rows,
                 const std::function<void(const std::string&)>& run)
    : QWidget(area.viewport()), area_(area) {
    setObjectName("Welcome");
    auto* lines = new QGridLayout;
    for (const Row& row : rows) {
        const int line = static_cast<int>(texts_.size());
        texts_.push_back(new LinkText(row));
        On(texts_.back(), &QAbstractButton::clicked, this, [run, command = row.Command] { run(command); });
        lines->addWidget(texts_.back(), line, 0, Qt::AlignLeft);
        lines->addWidget(Label("lbl" + row.Command, row.Hint), line, 1);
    }
    auto* card = new QFrame;
    card->setFrameShape(QFrame::StyledPanel);
    card->setBackgroundRole(QPalette::Base);  // that of the area suits no text
    card->setAutoFillBackground(true);
    card->setLayout(Column({Label("lblWelcome", "No document is open. What to do next:"), lines}));
    // A little above the middle: the list of messages takes the foot of the area.
    auto* column = Column({Stretch(), platform::qt::Row({Stretch(), card, Stretch()}), Stretch()});
    column->setStretch(2, 2);
    setLayout(column);
    AddTabKeys();
    area.viewport()->installEventFilter(this);
    lower();
}

// A child window keeps Tab to itself otherwise.
void Welcome::AddTabKeys() {
    for (const auto& [key, step] : {std::pair("Tab", 1), std::pair("Shift+Tab", -1)}) {
        tabKeys_.push_back(new QShortcut(QKeySequence(key), &area_));
        tabKeys_.back()->setContext(Qt::WidgetWithChildrenShortcut);
        On(tabKeys_.back(), &QShortcut::activated, this, [this, step = step] { Step(step); });
    }
}

void Welcome::Offer(bool isEmpty) {
    setVisible(isEmpty);
    for (QShortcut* key : tabKeys_) key->setEnabled(isEmpty);
}

void Welcome::Step(int step) {
    const int count = static_cast<int>(texts_.size());
    const auto focused =
        std::find_if(texts_.begin(), texts_.end(), [](auto* text) { return text->hasFocus(); });
    const bool isChild = focused == texts_.end();
    const int next = isChild ? (step > 0 ? 0 : count - 1) : static_cast<int>(focused - texts_.begin()) + step;
    QMdiSubWindow* child = area_.currentSubWindow();
    const bool hasChild = child != nullptr && child->isVisible();
    if ((next < 0 || next == count) && hasChild) return child->widget()->setFocus(Qt::TabFocusReason);
    texts_[static_cast<std::size_t>((next + count) % count)]->setFocus(Qt::TabFocusReason);
}

// Never larger than the area, which would have to scroll.
bool Welcome::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

}  // namespace shell
