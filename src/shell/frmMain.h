#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/MdiChild.h"
#include "platform/qt/MenuSet.h"
#include "session/CommandTable.h"
#include "shell/modMain.h"

class QLabel;
class QMdiSubWindow;
class QToolBar;

namespace shell {

// Makes the program's pictures known, its windows' icon among them; harmless when called again.
void InitPictures();

// The multiple-document parent window: menu, toolbar, status bar and the area for child windows. What its
// menu entries do stands in the table of commands.
class frmMain : public QMainWindow, public platform::qt::MdiFrame {
    Q_OBJECT

  public:
    explicit frmMain(const session::MainCommands& commands);
    ~frmMain() override;

    void RunCommand(const std::string& name, int index = -1);  // error 5 for an entry without a command
    // An entry without a command is disabled, one whose command says when it can be called follows that.
    void EnableEntries();

    QMdiArea& Area() { return *area_; }
    QToolBar& ToolBar() { return *toolBar_; }
    platform::qt::MenuSet& Menus() const { return *menus_; }

    // Panels 1 to 6, repainted at once.
    void SetPanel(int panel, const std::string& text);
    std::string Panel(int panel) const;
    void ShowKeyState(bool inserting);  // the panels INS, CAPS, NUM and SCRL

    // The place of the whole window, with the frame that the window manager draws around it. A window that is
    // not shown yet has its final size once that frame is known: Framed.
    void SetFrame(const QRect& frame);
    QRect Frame() const;
    MainMeasures Measures() const;  // twips

    // Its children, the active one first.
    std::vector<platform::qt::MdiChild*> Children() const;
    // Moves each child to the place that is its own; an icon, or one that fills the area, moves later.
    void ArrangeChildren(const platform::qt::ChildPlaces& places);
    void ForgetPlaces();  // those not taken yet, but for icons: the children get others now

    // platform::qt::MdiFrame
    QWidget& Window() override { return *this; }
    QMdiSubWindow& AddChild(platform::qt::MdiChild& child, QWidget& content) override;
    platform::qt::MdiChild* ActiveChild() const override;
    void ChildTouched() override { emit ActiveChildChanged(); }

    // Called before the window closes; false refuses.
    std::function<bool()> OnQueryUnload;
    std::function<void()> OnUnload;
    std::function<void()> OnResize;
    // Where a further child goes as it is added; none: where the desktop puts it.
    std::function<std::optional<platform::qt::ChildPlaces>()> OnPlaces;

  signals:
    void ActiveChildChanged();  // to another one, in its caption, or in whether it has a selection
    void Framed();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    struct Child {
        platform::qt::MdiChild* Window;
        QMdiSubWindow* Frame;
        std::optional<QRect> Place;  // for when it is a normal window again
    };

    void BuildMenu();
    void BuildStatusBar();
    void ShowMenusOfActiveChild();
    void FillWindowList(QMenu& menu);
    void FillWindowListOf(const platform::qt::MenuSet& menus);
    void ActivateTopChild();
    void FitFrame();
    void Follow(QMdiSubWindow& window);
    void TakePlaces();

    const session::MainCommands& commands_;
    std::unique_ptr<QObject> alive_ = std::make_unique<QObject>();  // hears of children while this stands
    QMdiArea* area_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    std::array<QLabel*, 6> panels_{};
    std::unique_ptr<platform::qt::MenuSet> menus_;
    std::vector<Child> children_;
    const platform::qt::MenuSet* shownMenus_ = nullptr;
    std::optional<QSize> frameSize_;  // until the window has it
};

}  // namespace shell
