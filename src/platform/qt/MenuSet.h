#pragma once

#include <QMenu>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/MenuTable.h"

class QMenuBar;

namespace platform::qt {

// The menus of one window, made from its table. Elements of an array are named "mnuFileMru(0)".
class MenuSet {
  public:
    // `click` gets the control name and, for elements of an array, the index (else -1). `owner` gets the
    // objects and outlives this.
    using Click = std::function<void(const std::string& name, int index)>;
    MenuSet(QWidget* owner, MenuTable table, Click click);

    // Makes these the menus of the bar. A menu is live, shortcuts included, only while it is in a bar.
    void ShowIn(QMenuBar& bar) const;

    // The entry or null. A menu is reached as the action that opens it.
    QAction* Find(const std::string& name) const;
    QMenu* Menu(const std::string& name) const;

    // The state of an entry by name; an unknown name is error 5.
    QAction& Entry(const std::string& name) const;

    // Shows a text of the data, such as a file name, and gives back exactly what was set. Error 5 likewise.
    void SetText(const std::string& name, const std::string& text) const;
    std::string Text(const std::string& name) const;
    // The elements of an array from 0 up show these texts; one with an empty text is hidden. What is missing
    // is made.
    void ShowElements(const std::string& name, std::span<const std::string> texts);

    static std::string ElementName(const std::string& name, int index);

  private:
    struct Array {
        QMenu* Menu = nullptr;
        MenuRow Row = {};
    };

    void AddEntry(QMenu& menu, const MenuRow& row, int index);
    void AddElement(const std::string& name, int index);
    QMenu* AddMenu(QMenu* parent, const MenuRow& row, QWidget* owner);

    const Click click_;
    std::vector<QMenu*> top_;
    std::map<std::string, Array> arrays_;
    std::map<std::string, QAction*> actions_;
    std::map<std::string, QMenu*> menus_;
};

}  // namespace platform::qt
