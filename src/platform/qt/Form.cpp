#include "platform/qt/Form.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr int TitleButtons = 130;   // pixels, of a title bar beside its text
constexpr int MaxTitleWidth = 560;  // pixels: there are small screens

}  // namespace

// Title bars are often bold.
int WidthFor(const QString& title) {
    QFont font = QApplication::font();
    font.setBold(true);
    return std::min(QFontMetrics(font).horizontalAdvance(title) + TitleButtons, MaxTitleWidth);
}

Form::Form(const char* name, const char* title, QWidget* owner) : QDialog(owner) {
    setObjectName(QString::fromUtf8(name));
    setWindowTitle(QString::fromUtf8(title));
}

void Form::LayOut(const std::vector<Item>& parts, Size size) {
    QBoxLayout* layout = Column(parts);
    layout->addStrut(WidthFor(windowTitle()));
    if (size == Size::OfContent) layout->setSizeConstraint(QLayout::SetFixedSize);
    setLayout(layout);
}

void Form::ResizeTo(int characters, int lines) {
    resize(InCharacters(characters, lines).boundedTo(screen()->availableSize()));
}

QPushButton* Form::Button(const ButtonRow& row) {
    return PushButton({row.Name, row.Caption}, this, row.Click);
}

QLayout* Form::Buttons(std::initializer_list<ButtonRow> rows) {
    std::vector<Item> items = {Stretch()};
    for (const ButtonRow& row : rows) {
        QPushButton* button = Button(row);
        button->setDefault(items.size() == 1);
        items.emplace_back(button);
    }
    if (rows.size() == 1) items.emplace_back(Stretch());
    return Row(items);
}

void Form::reject() {
    Guarded([this] { Cancel_Click(); });
}

void Form::Cancel_Click() {
    Cancelled = true;
    QDialog::reject();
}

}  // namespace platform::qt
