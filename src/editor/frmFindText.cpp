#include "editor/frmFindText.h"

#include <QComboBox>

namespace editor {

frmFindText::frmFindText(SearchValues& values, QWidget* owner)
    : SearchForm("frmFindText", "Find Text", owner), values_(values) {
    std::vector<platform::qt::Item> parts = {
        platform::qt::Fields({{"lblText", "Text to find:", SearchCombo("Combo1")}})};
    for (const auto& frame : OptionFrames()) parts.push_back(frame);
    parts.emplace_back(
        Buttons({{"OK", "OK", [this] { OK_Click(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}}));
    LayOut(parts);
}

void frmFindText::OK_Click() {
    EnterSearch(values_, Entry());
    accept();
}

}  // namespace editor
