#include "shell/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QWindow>
#include <utility>

#include "base/RunTimeError.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"
#include "platform/qt/KeyLocks.h"
#include "platform/qt/Twips.h"
#include "shell/MainMenu.h"

// The pictures lie in a static library, whose resources are registered by hand.
static void InitIcons() { Q_INIT_RESOURCE(icons); }

namespace shell {

using platform::qt::CaptionOf;
using platform::qt::Guarded;
using platform::qt::On;
using platform::qt::ToTwips;

void InitPictures() {
    InitIcons();
    QApplication::setWindowIcon(QIcon(":/icons/korvane.svg"));
}

frmMain::frmMain(const session::MainCommands& commands) : commands_(commands) {
    InitPictures();
    setObjectName("frmMain");
    setWindowTitle("Korvane");
    area_ = new QMdiArea(this);
    area_->setObjectName("MDIArea");
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // A child that closes leaves the place to the one used before it.
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    setCentralWidget(area_);
    toolBar_ = new QToolBar(this);
    toolBar_->setObjectName("tbToolBar");
    toolBar_->setMovable(false);
    toolBar_->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(toolBar_);
    setContextMenuPolicy(Qt::NoContextMenu);
    BuildStatusBar();
    BuildMenu();
    On(area_, &QMdiArea::subWindowActivated, alive_.get(), [this] {
        ShowMenusOfActiveChild();
        emit ActiveChildChanged();
    });
}

frmMain::~frmMain() {
    // Children that go with the window have nobody left to tell.
    alive_.reset();
    for (const Child& child : children_) child.Frame->removeEventFilter(this);
    delete area_;
}

void frmMain::BuildMenu() {
    menus_ = std::make_unique<platform::qt::MenuSet>(
        this, MainMenu(), [this](const std::string& name, int index) { RunCommand(name, index); });
    for (const platform::MenuRow& row : MainMenu()) {
        QMenu* menu = menus_->Menu(row.Name);
        if (menu != nullptr) On(menu, &QMenu::aboutToShow, this, [this] { EnableEntries(); });
        const bool isEntry = menu == nullptr && row.Count == 0 && std::string(row.Caption) != "-";
        if (isEntry && commands_.Find(row.Name) == nullptr) menus_->Entry(row.Name).setEnabled(false);
    }
    FillWindowListOf(*menus_);
    EnableEntries();
    ShowMenusOfActiveChild();
}

void frmMain::RunCommand(const std::string& name, int index) { commands_.Run(name, index); }

void frmMain::EnableEntries() {
    for (const auto& row : commands_.Rows()) {
        if (row.IsEnabled == nullptr) continue;
        if (QAction* entry = menus_->Find(row.Entry)) entry->setEnabled(row.IsEnabled());
    }
}

void frmMain::BuildStatusBar() {
    static constexpr struct {
        const char* Name;
        const char* Text;
        int Width;  // pixels
    } rows[] = {{"1", "", 0},         {"2", "", 140},     {"INS", "INS", 40},
                {"CAPS", "CAPS", 44}, {"NUM", "NUM", 40}, {"SCRL", "SCRL", 44}};
    statusBar()->setObjectName("sbStatusBar");
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        panels_[i] = new QLabel(rows[i].Text, this);
        panels_[i]->setObjectName(QStringLiteral("Panel%1").arg(rows[i].Name));
        panels_[i]->setTextFormat(Qt::PlainText);
        panels_[i]->setMinimumWidth(rows[i].Width);
        if (i >= 2) {
            panels_[i]->setAlignment(Qt::AlignCenter);
            panels_[i]->setEnabled(false);
        }
        statusBar()->addPermanentWidget(panels_[i], i == 0 ? 1 : 0);
    }
}

void frmMain::SetPanel(int panel, const std::string& text) {
    QLabel* label = panels_.at(static_cast<std::size_t>(panel - 1));
    label->setText(platform::qt::Shown(text));
    label->repaint();
}

std::string frmMain::Panel(int panel) const {
    return panels_.at(static_cast<std::size_t>(panel - 1))->text().toStdString();
}

void frmMain::ShowKeyState(bool inserting) {
    const platform::qt::KeyLockState locks = platform::qt::KeyLocks();
    const bool on[] = {inserting, locks.Caps, locks.Num, locks.Scroll};
    for (std::size_t i = 0; i < std::size(on); ++i) panels_[i + 2]->setEnabled(on[i]);
}

// The open windows at the foot of the Window menu, made anew whenever it opens.
void frmMain::FillWindowList(QMenu& menu) {
    for (QAction* action : menu.actions()) {
        if (action->property("windowList").toBool()) delete action;
    }
    const auto add = [&](QAction* action) { action->setProperty("windowList", true); };
    const QList<QMdiSubWindow*> windows = area_->subWindowList();
    if (!windows.isEmpty()) add(menu.addSeparator());
    int number = 0;
    for (QMdiSubWindow* window : windows) {
        // A closed document is about to go; other windows are only hidden.
        if (!window->isVisible() && window->testAttribute(Qt::WA_DeleteOnClose)) continue;
        const QString head = ++number < 10 ? QStringLiteral("&%1 ").arg(number) : QString();
        QAction* action = menu.addAction(head + CaptionOf(window->windowTitle().toStdString()));
        add(action);
        action->setCheckable(true);
        action->setChecked(ActiveChild() != nullptr && window == &ActiveChild()->Frame());
        On(action, &QAction::triggered, window, [this, window] {
            window->isMinimized() ? window->showNormal() : window->show();
            window->widget()->show();
            area_->setActiveSubWindow(window);
        });
    }
}

void frmMain::SetFrame(const QRect& frame) {
    move(frame.topLeft());
    if (isVisible()) return resize(frame.size().shrunkBy(windowHandle()->frameMargins()));
    resize(frame.size());
    frameSize_ = frame.size();
}

QRect frmMain::Frame() const {
    // The widget's own idea of its frame is that of its last move.
    return windowHandle() != nullptr ? windowHandle()->frameGeometry() : geometry();
}

void frmMain::FitFrame() {
    resize(frameSize_->shrunkBy(windowHandle()->frameMargins()));
    frameSize_.reset();
    emit Framed();
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    Guarded([this] {
        if (frameSize_) windowHandle()->installEventFilter(this);
    });
}

MainMeasures frmMain::Measures() const {
    return {.Width = ToTwips(Frame().width()),
            .Height = ToTwips(Frame().height()),
            .InnerHeight = ToTwips(area_->viewport()->height())};
}

platform::qt::MdiChild* frmMain::ActiveChild() const {
    // The current one: it stays while a dialog or another program has the focus. It may be one that was
    // closed.
    const QMdiSubWindow* window = area_->currentSubWindow();
    for (const Child& child : children_) {
        if (child.Frame == window && !window->isHidden()) return child.Window;
    }
    return nullptr;
}

std::vector<platform::qt::MdiChild*> frmMain::Children() const {
    std::vector<platform::qt::MdiChild*> all;
    if (platform::qt::MdiChild* active = ActiveChild()) all.push_back(active);
    for (const Child& child : children_) {
        if (all.empty() || child.Window != all.front()) all.push_back(child.Window);
    }
    return all;
}

void frmMain::ArrangeChildren(const platform::qt::ChildPlaces& places) {
    for (Child& child : children_) {
        if (const auto place = child.Window->PlaceIn(places)) child.Place = place;
    }
    TakePlaces();
}

void frmMain::TakePlaces() {
    for (Child& child : children_) {
        if (!child.Place || child.Frame->isMinimized() || child.Frame->isMaximized()) continue;
        child.Frame->setGeometry(*std::exchange(child.Place, std::nullopt));
    }
}

void frmMain::ForgetPlaces() {
    for (Child& child : children_) {
        if (!child.Frame->isMinimized()) child.Place.reset();
    }
}

QMdiSubWindow& frmMain::AddChild(platform::qt::MdiChild& child, QWidget& content) {
    QMdiSubWindow* window = area_->addSubWindow(&content);
    window->setWindowIcon(QApplication::windowIcon());
    // The frame's own key to close would stand against a shortcut of the menus.
    for (QAction* action : window->systemMenu()->actions()) {
        if (!action->shortcut().isEmpty()) action->setShortcut(QKeySequence("Ctrl+F4"));
    }
    window->installEventFilter(this);
    children_.push_back({&child, window, std::nullopt});
    if (child.Menus() != nullptr) FillWindowListOf(*child.Menus());
    Follow(*window);
    if (const auto places = OnPlaces ? OnPlaces() : std::nullopt) {
        if (const auto place = child.PlaceIn(*places)) window->setGeometry(*place);
    }
    return *window;
}

void frmMain::Follow(QMdiSubWindow& window) {
    On(&window, &QWidget::windowTitleChanged, alive_.get(), [this] { emit ActiveChildChanged(); });
    On(&window, &QMdiSubWindow::windowStateChanged, alive_.get(), [this] {
        // Soon: when the window has told of its new state it still takes its old place.
        platform::qt::Soon(alive_.get(), [this] { TakePlaces(); });
    });
    On(&window, &QObject::destroyed, alive_.get(), [this, gone = &window] {
        std::erase_if(children_, [gone](const Child& child) { return child.Frame == gone; });
        shownMenus_ = nullptr;  // they may have gone with the window
        ShowMenusOfActiveChild();
    });
}

void frmMain::FillWindowListOf(const platform::qt::MenuSet& menus) {
    QMenu* windows = menus.Menu("mnuWindow");
    On(windows, &QMenu::aboutToShow, alive_.get(), [this, windows] { FillWindowList(*windows); });
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    Guarded([&] {
        // The frame is there when the window is on the screen.
        if (event->type() == QEvent::Expose && watched == windowHandle() && frameSize_) FitFrame();
        // The area lets a hidden child stay the active one.
        const bool isCurrent = watched == area_->currentSubWindow();
        if (event->type() == QEvent::Hide && isCurrent && ActiveChild() == nullptr) ActivateTopChild();
    });
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::ActivateTopChild() {
    QMdiSubWindow* top = nullptr;
    for (QMdiSubWindow* window : area_->subWindowList(QMdiArea::StackingOrder)) {
        if (!window->isHidden()) top = window;
    }
    area_->setActiveSubWindow(top);
}

void frmMain::ShowMenusOfActiveChild() {
    const platform::qt::MdiChild* child = ActiveChild();
    const bool hasOwn = child != nullptr && child->Menus() != nullptr;
    const platform::qt::MenuSet* menus = hasOwn ? child->Menus() : menus_.get();
    if (menus == shownMenus_ || menus == nullptr) return;
    shownMenus_ = menus;
    menus->ShowIn(*menuBar());
}

void frmMain::closeEvent(QCloseEvent* event) {
    event->ignore();  // what is thrown interrupts the end of the program
    Guarded([this, event] {
        if (OnQueryUnload && !OnQueryUnload()) return;
        if (OnUnload) OnUnload();
        event->accept();
    });
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    Guarded([this] {
        if (OnResize) OnResize();
    });
}

}  // namespace shell
