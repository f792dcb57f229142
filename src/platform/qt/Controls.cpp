#include "platform/qt/Controls.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLineEdit>
#include <QRadioButton>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr int UpDownCharacters = 10;

QString Shown(const std::string& text) { return QString::fromStdString(text); }

// Units of the space between controls that grow with the font.
int LineHeight() { return InCharacters(0, 1).height(); }

template <class Button>
Button* MakeButton(const ControlRow& row) {
    auto* button = Named(row.Name, new Button(Shown(row.Caption)));
    button->setToolTip(Shown(row.Tip));
    return button;
}

QBoxLayout* Box(QBoxLayout::Direction direction, const std::vector<Item>& items) {
    auto* box = new QBoxLayout(direction);
    for (const Item& item : items) {
        if (const auto* widget = std::get_if<QWidget*>(&item)) box->addWidget(*widget);
        if (const auto* layout = std::get_if<QLayout*>(&item)) box->addLayout(*layout);
        if (std::holds_alternative<Stretch>(item)) box->addStretch(1);
    }
    return box;
}

}  // namespace

std::vector<ControlRow> ControlArray(const std::string& name, std::span<const char* const> captions) {
    std::vector<ControlRow> rows;
    for (const char* caption : captions) rows.push_back({name + std::to_string(rows.size()), caption});
    return rows;
}

QCheckBox* CheckBox(const ControlRow& row) { return MakeButton<QCheckBox>(row); }

QPushButton* PushButton(const ControlRow& row, const QObject* owner, std::function<void()> click) {
    auto* button = MakeButton<QPushButton>(row);
    On(button, &QPushButton::clicked, owner, [click = std::move(click)] { click(); });
    return button;
}

std::vector<QCheckBox*> CheckBoxes(const std::vector<ControlRow>& rows) {
    std::vector<QCheckBox*> boxes;
    for (const ControlRow& row : rows) boxes.push_back(CheckBox(row));
    return boxes;
}

QButtonGroup* RadioButtons(const std::vector<ControlRow>& rows, QObject* owner) {
    auto* group = new QButtonGroup(owner);
    int index = 0;
    for (const ControlRow& row : rows) group->addButton(MakeButton<QRadioButton>(row), index++);
    return group;
}

QLabel* Label(const std::string& name, const std::string& caption, QWidget* field) {
    auto* label = Named(name, new QLabel(Shown(caption)));
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(field);
    // Lists are not called by their label otherwise.
    if (field != nullptr) field->setAccessibleName(Shown(caption).remove('&').remove(':'));
    return label;
}

std::int16_t Value(const QCheckBox& box) {
    if (box.checkState() == Qt::PartiallyChecked) return 2;
    return box.isChecked() ? 1 : 0;
}

void SetValue(QCheckBox& box, std::int16_t value) {
    box.setCheckState(value == 2 ? Qt::PartiallyChecked : value == 1 ? Qt::Checked : Qt::Unchecked);
}

UpDown::UpDown(const std::string& name, const std::string& textName, std::function<void(int)> step)
    : step_(std::move(step)) {
    Named(name, this);
    Named(textName, lineEdit());
}

void UpDown::stepBy(int steps) {
    Guarded([&] {
        for (; steps < 0; ++steps) step_(-1);
        for (; steps > 0; --steps) step_(1);
    });
}

QSize UpDown::sizeHint() const {
    const QSize size = QAbstractSpinBox::sizeHint();
    return {size.width() + InCharacters(UpDownCharacters, 0).width(), size.height()};
}

QBoxLayout* Row(const std::vector<Item>& items) { return Box(QBoxLayout::LeftToRight, items); }
QBoxLayout* Column(const std::vector<Item>& items) { return Box(QBoxLayout::TopToBottom, items); }

QGridLayout* Columns(const std::vector<Item>& items, int rows) {
    auto* grid = new QGridLayout;
    const int count = static_cast<int>(items.size());
    for (int i = 0; i < count; ++i) {
        const Item& item = items[static_cast<std::size_t>(i)];
        if (const auto* widget = std::get_if<QWidget*>(&item)) grid->addWidget(*widget, i % rows, i / rows);
        if (const auto* layout = std::get_if<QLayout*>(&item)) grid->addLayout(*layout, i % rows, i / rows);
    }
    grid->setRowStretch(rows, 1);
    grid->setColumnStretch((count - 1) / rows, 1);
    grid->setHorizontalSpacing(LineHeight() * 5 / 3);
    return grid;
}

QGridLayout* Fields(const std::vector<Field>& fields) {
    auto* grid = new QGridLayout;
    int row = 0;
    for (const Field& field : fields) {
        QLabel* label = Label(field.LabelName, field.Caption, field.Control);
        grid->addWidget(label, row, 0, field.Height > 0 ? Qt::AlignTop : Qt::Alignment());
        grid->addWidget(field.Control, row, 1);
        grid->setRowStretch(row++, field.Height);
    }
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(LineHeight() * 5 / 6);
    grid->setVerticalSpacing(LineHeight() * 4 / 7);
    return grid;
}

QGroupBox* Frame(const std::string& name, const std::string& caption, QLayout* content) {
    auto* frame = Named(name, new QGroupBox(Shown(caption)));
    frame->setLayout(content);
    return frame;
}

QTabWidget* Tabs(const std::string& name, const std::vector<Page>& pages) {
    auto* tabs = Named(name, new QTabWidget);
    tabs->setUsesScrollButtons(false);
    for (const Page& page : pages) {
        auto* widget = new QWidget;
        widget->setLayout(page.Content);
        tabs->addTab(widget, QString::fromUtf8(page.Caption));
    }
    return tabs;
}

QColor ToColor(std::int32_t color) { return QColor(color & 255, (color >> 8) & 255, (color >> 16) & 255); }

void ShowOnPaper(QWidget& box, std::int32_t color) {
    QPalette colors = box.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        colors.setColor(group, QPalette::Text, ToColor(color));
        colors.setColor(group, QPalette::Base, Qt::white);  // on every desktop
    }
    box.setPalette(colors);
}

QSize InCharacters(int characters, int lines) {
    const QFontMetrics font(QApplication::font());
    return {font.averageCharWidth() * characters, font.height() * lines};
}

}  // namespace platform::qt
