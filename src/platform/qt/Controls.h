#pragma once

#include <QAbstractSpinBox>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QColor>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QTabWidget>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

// What forms are put together of. A control bears its name as objectName; in a caption "&" marks the access
// key. Made without parent: the form's layout adopts all in the order of the layout, which is the tab order.
namespace platform::qt {

template <class Control>
Control* Named(const std::string& name, Control* control) {
    control->setObjectName(QString::fromStdString(name));
    return control;
}

struct ControlRow {
    std::string Name;
    std::string Caption;
    std::string Tip = {};
};

// The rows of a control array, named `name` and the index from 0.
std::vector<ControlRow> ControlArray(const std::string& name, std::span<const char* const> captions);

QCheckBox* CheckBox(const ControlRow& row);
// `click` runs guarded while `owner` stands.
QPushButton* PushButton(const ControlRow& row, const QObject* owner, std::function<void()> click);
std::vector<QCheckBox*> CheckBoxes(const std::vector<ControlRow>& rows);
// Radio buttons of which one is on at most; ids are the indices of the rows.
QButtonGroup* RadioButtons(const std::vector<ControlRow>& rows, QObject* owner);
// The access key in its caption leads to `field`, which is called by it.
QLabel* Label(const std::string& name, const std::string& caption, QWidget* field = nullptr);

// The state of a box in option records: 0 off, 1 on, 2 greyed.
std::int16_t Value(const QCheckBox& box);
void SetValue(QCheckBox& box, std::int16_t value);

// The text box of a number, `textName`, with arrows that change it by rules of the form: `step` gets -1 or 1.
// What is typed is not restrained.
class UpDown : public QAbstractSpinBox {
  public:
    UpDown(const std::string& name, const std::string& textName, std::function<void(int)> step);

    void stepBy(int steps) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

  private:
    std::function<void(int)> step_;
};

// A part of a layout; Stretch takes the room that is left.
struct Stretch {};
using Item = std::variant<Stretch, QWidget*, QLayout*>;

template <class List>
std::vector<Item> Items(const List& controls) {
    return {controls.begin(), controls.end()};
}

QBoxLayout* Row(const std::vector<Item>& items);
QBoxLayout* Column(const std::vector<Item>& items);
// Column by column, `rows` below each other, packed to the upper left.
QGridLayout* Columns(const std::vector<Item>& items, int rows);

struct Field {
    std::string LabelName;
    std::string Caption;
    QWidget* Control;
    int Height = 0;  // share of the height that is left; 0 for a line
};
// Fields below each other, their labels in a column at the left.
QGridLayout* Fields(const std::vector<Field>& fields);

QGroupBox* Frame(const std::string& name, const std::string& caption, QLayout* content);

struct Page {
    const char* Caption;
    QLayout* Content;
};
QTabWidget* Tabs(const std::string& name, const std::vector<Page>& pages);  // wide enough for all its tabs

QColor ToColor(std::int32_t color);  // of 0x00BBGGRR
// Its text in that colour on what documents have for paper, as long as it is enabled.
void ShowOnPaper(QWidget& box, std::int32_t color);

// The size of so much text in the program's font, for controls that don't know how much they will show.
QSize InCharacters(int characters, int lines);

}  // namespace platform::qt
