#include "platform/qt/MenuSet.h"

#include <QMenuBar>

#include "base/RunTimeError.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace platform::qt {

void MenuSet::ShowElements(const std::string& name, std::span<const std::string> texts) {
    int index = 0;
    for (const std::string& text : texts) {
        const std::string element = ElementName(name, index);
        if (Find(element) == nullptr) AddElement(name, index);
        ++index;
        SetText(element, text);
        Entry(element).setVisible(!text.empty());
    }
}

std::string MenuSet::ElementName(const std::string& name, int index) {
    return name + "(" + std::to_string(index) + ")";
}

// Behind the first ones: an array that grows is the last of its menu.
void MenuSet::AddElement(const std::string& name, int index) {
    const auto array = arrays_.find(name);
    if (array == arrays_.end()) throw base::RunTimeError(base::errInvalidCall, "No menu array " + name);
    AddEntry(*array->second.Menu, array->second.Row, index);
}

MenuSet::MenuSet(QWidget* owner, MenuTable table, Click click) : click_(std::move(click)) {
    std::vector<QMenu*> path;  // the open menu of each level
    for (std::size_t i = 0; i < table.size(); ++i) {
        const MenuRow& row = table[i];
        path.resize(static_cast<std::size_t>(row.Level));
        const bool opensMenu = i + 1 < table.size() && table[i + 1].Level > row.Level;
        if (opensMenu || row.Level == 0) {
            path.push_back(AddMenu(path.empty() ? nullptr : path.back(), row, owner));
        } else if (row.Count > 0) {
            arrays_[row.Name] = {path.back(), row};
            for (int k = 0; k < row.Count; ++k) AddEntry(*path.back(), row, row.FirstIndex + k);
        } else {
            AddEntry(*path.back(), row, -1);
        }
    }
}

QMenu* MenuSet::AddMenu(QMenu* parent, const MenuRow& row, QWidget* owner) {
    auto* menu = new QMenu(QString::fromUtf8(row.Caption), owner);
    menu->setObjectName(row.Name);
    QAction* action = menu->menuAction();
    action->setVisible((row.Flags & menuHidden) == 0);
    if (parent == nullptr) {
        top_.push_back(menu);
    } else {
        parent->addMenu(menu);
    }
    menus_[row.Name] = menu;
    actions_[row.Name] = action;
    return menu;
}

void MenuSet::AddEntry(QMenu& menu, const MenuRow& row, int index) {
    const std::string name = index < 0 ? row.Name : ElementName(row.Name, index);
    const bool isSeparator = std::string(row.Caption) == "-";
    QAction* action = menu.addAction(isSeparator ? QString() : QString::fromUtf8(row.Caption));
    action->setObjectName(QString::fromStdString(name));
    action->setSeparator(isSeparator);
    action->setShortcut(QKeySequence(QString::fromLatin1(row.Shortcut)));
    action->setVisible((row.Flags & menuHidden) == 0);
    action->setEnabled((row.Flags & menuDisabled) == 0);
    action->setCheckable((row.Flags & (menuChecked | menuCheckable)) != 0);
    action->setChecked((row.Flags & menuChecked) != 0);
    On(action, &QAction::triggered, &menu, [click = click_, base = std::string(row.Name), index, action] {
        // The command alone says what is checked.
        if (action->isCheckable()) action->setChecked(!action->isChecked());
        click(base, index);
    });
    actions_[name] = action;
}

void MenuSet::ShowIn(QMenuBar& bar) const {
    bar.clear();
    for (QMenu* menu : top_) bar.addMenu(menu);
}

QAction* MenuSet::Find(const std::string& name) const {
    const auto entry = actions_.find(name);
    return entry == actions_.end() ? nullptr : entry->second;
}

QMenu* MenuSet::Menu(const std::string& name) const {
    const auto menu = menus_.find(name);
    return menu == menus_.end() ? nullptr : menu->second;
}

QAction& MenuSet::Entry(const std::string& name) const {
    QAction* action = Find(name);
    if (action == nullptr) throw base::RunTimeError(base::errInvalidCall, "No menu entry " + name);
    return *action;
}

void MenuSet::SetText(const std::string& name, const std::string& text) const {
    QAction& entry = Entry(name);
    entry.setText(CaptionOf(text));
    entry.setData(QByteArray::fromStdString(text));  // what is shown may have lost some of it
}

std::string MenuSet::Text(const std::string& name) const {
    return Entry(name).data().toByteArray().toStdString();
}

}  // namespace platform::qt
