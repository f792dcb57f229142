#include "editor/frmReplace.h"

#include <QCloseEvent>
#include <QComboBox>

#include "platform/qt/Guard.h"

namespace editor {

using platform::qt::CheckBox;

frmReplace::frmReplace(SearchValues& values, QWidget* owner)
    : SearchForm("frmReplace", "Replace Text", owner), values_(values) {
    Cancelled = values.ReplaceCancelled;
    std::vector<platform::qt::Item> parts = {
        platform::qt::Fields({{"lblText", "Text to find:", SearchCombo("Combo1")},
                              {"Label1", "Replace with:", SearchCombo("Combo2")}})};
    for (const auto& frame : OptionFrames(CheckBox({"chkPrompt", "Prompt on replace"}))) {
        parts.push_back(frame);
    }
    parts.emplace_back(Buttons({{"OK", "OK", [this] { OK_Click(); }},
                                {"ChangeAll", "Change &All", [this] { ChangeAll_Click(); }},
                                {"Cancel", "Cancel", [this] { Cancel_Click(); }}}));
    LayOut(parts);
}

void frmReplace::OK_Click() {
    EnterSearch(values_, Entry());
    values_.ReplaceText = Control<QComboBox>("Combo2").currentText().toStdString();
    if (Control<QCheckBox>("chkPrompt").isChecked()) values_.PromptOnReplace = true;
    accept();
}

void frmReplace::ChangeAll_Click() {
    values_.ReplaceChangeAll = true;
    OK_Click();
}

// Kept: it does not close the window.
void frmReplace::Cancel_Click() {
    Cancelled = true;
    values_.ReplaceCancelled = true;
}

void frmReplace::closeEvent(QCloseEvent* event) {
    platform::qt::Guarded([&] {
        event->accept();
        done(Rejected);
    });
}

}  // namespace editor
