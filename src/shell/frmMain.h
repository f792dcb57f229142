#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QTimer>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "base/RunTimeError.h"
#include "platform/qt/MenuSet.h"
#include "session/App.h"
#include "shell/modMain.h"

class QLabel;
class QMdiSubWindow;
class QToolBar;

namespace editor {
class frmDocument;
}

namespace shell {

// Makes the program's pictures known, its windows' icon among them; harmless when called again.
void InitPictures();

// The multiple-document parent window: menu, toolbar, status bar and the area for child windows. What it does
// beyond holding them is in the commands that the shell gives it.
class frmMain : public QMainWindow {
    Q_OBJECT

  public:
    using Command = std::function<void(int index)>;

    frmMain();
    ~frmMain() override;

    // Makes the menu. An entry without a command is disabled until its command exists.
    void SetCommands(std::map<std::string, Command> commands);
    bool HasCommand(const std::string& name) const { return commands_.contains(name); }
    void RunCommand(const std::string& name, int index = -1);  // error 5 for an unknown name

    QMdiArea& Area() { return *area_; }
    QToolBar& ToolBar() { return *toolBar_; }
    const platform::qt::MenuSet& Menus() const { return *menus_; }

    // Panels 1 to 6, repainted at once.
    void SetPanel(int panel, const std::string& text);
    std::string Panel(int panel) const;
    void ShowKeyState(bool inserting);  // the panels INS, CAPS, NUM and SCRL

    // The place of the whole window, with the frame that the window manager draws around it. It is set before
    // the window is shown, which has its final size once that frame is known: Framed.
    void SetFrame(const QRect& frame);
    QRect Frame() const;
    MainMeasures Measures() const;  // twips

    QMdiSubWindow* ActiveChild() const;  // null too if all that is left is hidden
    editor::frmDocument* ActiveDocument() const;
    void AddDocument(editor::frmDocument& document);
    QMdiSubWindow& AddChild(QWidget& content);  // a child window of another kind

    // Called before the window closes; false refuses.
    std::function<bool()> OnQueryUnload;
    std::function<void()> OnUnload;
    std::function<void()> OnResize;

  signals:
    void ActiveChildChanged();  // to another one, in its caption, or in whether it has a selection
    void Framed();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void BuildStatusBar();
    void ShowMenusOfActiveChild();
    void FillWindowList(QMenu& menu);
    void ActivateTopChild();
    void FitFrame();

    std::unique_ptr<QObject> children_ = std::make_unique<QObject>();  // hears of them while this stands
    QMdiArea* area_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    std::array<QLabel*, 6> panels_{};
    std::unique_ptr<platform::qt::MenuSet> menus_;
    std::map<std::string, Command> commands_;
    const platform::qt::MenuSet* shownMenus_ = nullptr;
    std::optional<QSize> frameSize_;  // until the window has it
};

}  // namespace shell
