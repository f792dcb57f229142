#pragma once

#include <QRect>
#include <cstdint>
#include <optional>
#include <string>

class QMdiSubWindow;
class QWidget;

namespace platform::qt {

class MenuSet;

// Where the children of the main window go when it arranges them, in pixels of its area; nothing for a kind
// that stays.
struct ChildPlaces {
    std::optional<QRect> Messages = {};
    std::optional<QRect> Project = {};
    std::optional<QRect> Documents = {};
};

// A window in the area of the main window, as that knows it.
class MdiChild {
  public:
    virtual ~MdiChild() = default;

    virtual QMdiSubWindow& Frame() = 0;
    virtual std::string Title() const = 0;
    // The place that is its own, if it has to move. While it is an icon or fills the area it gets it later.
    virtual std::optional<QRect> PlaceIn(const ChildPlaces& places) const = 0;
    // Its own menus, which replace those of the main window while it is active; null if it has none.
    virtual const MenuSet* Menus() const { return nullptr; }
    virtual std::int32_t SelLength() const { return 0; }  // of a text with menus of its own
    virtual bool IsInserting() const { return true; }     // false: typing overwrites
    virtual bool CanClose() const { return false; }       // by the command Close
    virtual bool QueryUnload() { return true; }           // the question alone: false if the user refused
    virtual void UnloadUnasked() {}                       // whatever there is to save
};

// The main window, as the owners of its children know it.
class MdiFrame {
  public:
    virtual ~MdiFrame() = default;

    virtual QWidget& Window() = 0;  // owner of dialogs
    virtual QMdiSubWindow& AddChild(MdiChild& child, QWidget& content) = 0;
    virtual MdiChild* ActiveChild() const = 0;  // null too if all that is left is hidden
    virtual void ChildTouched() = 0;            // its title or its selection
};

}  // namespace platform::qt
