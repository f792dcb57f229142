#include "editor/windows/SearchForm.h"

#include <QComboBox>
#include <QRadioButton>

namespace editor {

using platform::qt::Column;
using platform::qt::ControlRow;
using platform::qt::Frame;
using platform::qt::Item;
using platform::qt::Row;

namespace {

constexpr int fieldWidth = 30;  // characters

QGroupBox* Choice(const char* name, const char* caption, const std::vector<ControlRow>& rows,
                  QObject* owner) {
    auto* buttons = platform::qt::RadioButtons(rows, owner);
    buttons->button(0)->setChecked(true);
    auto items = platform::qt::Items(buttons->buttons());
    items.emplace_back(platform::qt::Stretch());
    return Frame(name, caption, Column(items));
}

}  // namespace

QComboBox* SearchCombo(const char* name) {
    auto* combo = platform::qt::Named(name, new QComboBox);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    combo->setMinimumWidth(platform::qt::InCharacters(fieldWidth, 1).width());
    return combo;
}

std::vector<Item> SearchForm::OptionFrames(QCheckBox* more) {
    auto boxes = platform::qt::Items(platform::qt::CheckBoxes({{"chkCase", "Case sensitive"},
                                                               {"chkWhole", "Whole words only"},
                                                               {"chkRegular", "Regular expression"}}));
    if (more != nullptr) boxes.emplace_back(more);
    auto* direction =
        Choice("fraDirection", "Direction:", {{"optForward", "Forward"}, {"optBackward", "Backward"}}, this);
    auto* scope =
        Choice("fraScope", "Scope:", {{"optGlobal", "Global"}, {"optSelected", "Selected text"}}, this);
    auto* origin =
        Choice("fraOrigin", "Origin:", {{"optCursor", "From cursor"}, {"optScope", "Entire scope"}}, this);
    return {Row({Frame("fraOptions", "Options:", Column(boxes)), direction}), Row({scope, origin})};
}

SearchEntry SearchForm::Entry() const {
    return {.Text = Control<QComboBox>("Combo1").currentText().toStdString(),
            .IsCaseSensitive = Control<QCheckBox>("chkCase").isChecked(),
            .IsWholeWords = Control<QCheckBox>("chkWhole").isChecked(),
            .IsBackward = Control<QRadioButton>("optBackward").isChecked(),
            .IsSelectedText = Control<QRadioButton>("optSelected").isChecked(),
            .IsFromCursor = Control<QRadioButton>("optCursor").isChecked()};
}

}  // namespace editor
