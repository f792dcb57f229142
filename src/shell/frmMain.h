#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QTimer>
#include <array>
#include <functional>
#include <map>
#include <memory>
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

// Makes the program's pictures known; harmless when called again.
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

    MainMeasures Measures() const;  // twips
    editor::frmDocument* ActiveDocument() const;
    void AddDocument(editor::frmDocument& document);
    QMdiSubWindow& AddChild(QWidget& content);  // a child window of another kind

    // Called before the window closes; false refuses.
    std::function<bool()> OnQueryUnload;
    std::function<void()> OnUnload;
    std::function<void()> OnResize;

  signals:
    void ActiveChildChanged();  // to another one, or in whether it has a selection

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void BuildStatusBar();
    void ShowMenusOfActiveChild();
    void FillWindowList(QMenu& menu);

    std::unique_ptr<QObject> children_ = std::make_unique<QObject>();  // hears of them while this stands
    QMdiArea* area_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    std::array<QLabel*, 6> panels_{};
    std::unique_ptr<platform::qt::MenuSet> menus_;
    std::map<std::string, Command> commands_;
    const platform::qt::MenuSet* shownMenus_ = nullptr;
};

}  // namespace shell
