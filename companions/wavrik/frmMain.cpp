#include "wavrik/frmMain.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QMenuBar>
#include <QStatusBar>
#include <QVBoxLayout>
#include <QWindow>
#include <new>

#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "platform/qt/Guard.h"
#include "platform/qt/Twips.h"
#include "wavrik/LoadWaves.h"

namespace wavrik {
namespace {

using platform::qt::ToPixels;

QLabel* NamedLabel(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);  // names of files and signals are no mark-up
    return label;
}

// A text that must not make the window wider.
QLabel* NarrowLabel(const char* name) {
    auto* label = NamedLabel(name);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

QLabel* MessageLabel() {
    auto* label = NarrowLabel("lblMessage");
    label->setWordWrap(true);
    label->setMargin(6);
    label->setStyleSheet("background: #b02020; color: white");
    label->hide();
    return label;
}

}  // namespace

frmMain::frmMain(platform::PathMap paths)
    : paths_(std::move(paths)),
      pane_(new WavePane),
      lblMessage_(MessageLabel()),
      lblFile_(NarrowLabel("lblFile")),
      lblTime_(NamedLabel("lblTime")),
      lblMismatches_(NamedLabel("lblMismatches")),
      server_("Wavrik", "frmMain", [this](const std::string& command) { return Execute(command); }) {
    setObjectName("frmMain");
    setWindowTitle("Wavrik");  // companions are known by it: no file name here
    resize(pane_->fontMetrics().horizontalAdvance('0') * 110, pane_->fontMetrics().height() * 36);
    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(lblMessage_);
    column->addWidget(pane_);
    setCentralWidget(centre);
    statusBar()->addWidget(lblFile_, 1);
    statusBar()->addPermanentWidget(lblTime_);
    statusBar()->addPermanentWidget(lblMismatches_);
    lblFile_->setText(tr("File, Open shows .SI, .SO and .VCD files"));
    AddMenus();
    platform::qt::On(pane_, &WavePane::CursorMoved, this, [this] { ShowState(); });
    pane_->setAccessibleName(tr("Waves"));
    pane_->setFocus();
}

void frmMain::AddMenus() {
    struct Row {
        const char* Menu;
        const char* Name;
        const char* Caption;
        QKeySequence Keys;
        std::function<void()> Do;
    };
    constexpr double step = 2;
    const Row rows[] = {
        {"&File", "mnuFileOpen", "&Open...", QKeySequence("Ctrl+O"), [this] { AskForFile(); }},
        {"&File", "mnuFileExit", "E&xit", QKeySequence("Alt+F4"), [this] { close(); }},
        {"&View", "mnuViewZoomIn", "Zoom &In", QKeySequence("+"), [this] { pane_->Zoom(step); }},
        {"&View", "mnuViewZoomOut", "Zoom &Out", QKeySequence("-"), [this] { pane_->Zoom(1 / step); }},
        {"&View", "mnuViewFit", "&Fit", QKeySequence("F"), [this] { pane_->Fit(); }},
        {"&Go", "mnuGoNext", "&Next Mismatch", QKeySequence("F3"), [this] { Jump(Way::Forward); }},
        {"&Go", "mnuGoPrevious", "&Previous Mismatch", QKeySequence("Shift+F3"), [this] { Jump(Way::Back); }},
    };
    QMenu* menu = nullptr;
    for (const Row& row : rows) {
        if (menu == nullptr || menu->title() != row.Menu) menu = menuBar()->addMenu(row.Menu);
        QAction* action = menu->addAction(row.Caption);
        action->setObjectName(row.Name);
        action->setShortcut(row.Keys);
        platform::qt::On(action, &QAction::triggered, this, row.Do);
    }
}

void frmMain::AskForFile() {
    if (dialog_ == nullptr) {
        dialog_ = new QFileDialog(this, tr("Open"));
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        dialog_->setFileMode(QFileDialog::ExistingFile);
        dialog_->setNameFilter(tr("Waves (*.SI *.si *.SO *.so *.VCD *.vcd);;All files (*)"));
        if (!path_.empty())
            dialog_->setDirectory(QFileInfo(QString::fromStdString(paths_.ToHost(path_))).absolutePath());
        platform::qt::On(dialog_.data(), &QFileDialog::fileSelected, this,
                         [this](const QString& file) { Open(paths_.FromHost(file.toStdString())); });
    }
    dialog_->show();
    dialog_->activateWindow();
}

void frmMain::Open(const std::string& path) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const base::ScopeExit rest([] { QGuiApplication::restoreOverrideCursor(); });
    const bool isSame = !path_.empty() && paths_.ToHost(path) == paths_.ToHost(path_);
    try {
        Loaded loaded = LoadWaves(path, paths_);
        lblMessage_->hide();
        path_ = path;
        lblFile_->setText(QString::fromStdString(loaded.Source));
        isSame ? pane_->ShowAgain(std::move(loaded.Shown)) : pane_->ShowAnew(std::move(loaded.Shown));
    } catch (const base::RunTimeError& error) {
        Tell(error.Description());
    } catch (const std::bad_alloc&) {
        Tell(path + " needs more memory than there is");
    }
}

void frmMain::Tell(const std::string& message) {
    lblMessage_->setText(QString::fromStdString(message));
    lblMessage_->show();
}

void frmMain::ShowState() {
    const Waves& waves = pane_->Shown();
    const Time at = pane_->Cursor().At;
    QString time = QString("%1 %2").arg(at * waves.UnitCount).arg(QString::fromStdString(waves.Unit));
    if (waves.HasVectors) time += tr(", vector %1").arg(std::min(at, waves.End - 1) / VectorTime + 1);
    lblTime_->setText(time);
    const std::size_t count = CountMismatches(waves);
    lblMismatches_->setText(!waves.IsCompared ? QString()
                            : count == 0      ? tr("No mismatches")
                            : count == 1      ? tr("1 mismatch: F3")
                                              : tr("%1 mismatches: F3").arg(count));
}

void frmMain::Jump(Way way) {
    Spot from = pane_->Cursor();
    from.At -= from.At % VectorTime;  // within a vector the rows decide
    if (const auto spot = FindMismatch(pane_->Shown(), from, way))
        pane_->MoveCursor(*spot);
    else
        statusBar()->showMessage(tr("No further mismatch"), 3000);
}

bool frmMain::Execute(const std::string& text) {
    const auto command = ReadCommand(text);
    if (!command) return false;
    if (const auto* place = std::get_if<Placement>(&*command)) Take(*place);
    if (std::holds_alternative<Display>(*command)) ComeToFront();
    if (const auto* file = std::get_if<OpenFile>(&*command)) {
        // A large one takes longer than the other side waits. The keys stay where they are.
        platform::qt::Soon(this, [this, path = file->Path] {
            if (isMinimized()) showNormal();
            raise();
            Open(path);
        });
    }
    return true;
}

void frmMain::ComeToFront() {
    if (isMinimized()) showNormal();
    raise();
    activateWindow();
}

void frmMain::Place(platform::Registry& settings) {
    const auto key =
        settings.Open(R"(Software\Brennick Labs\Wavrik\1.0\Settings)", platform::Registry::Access::Read);
    if (!key) return;
    const auto read = [&](const char* name) {
        const auto number = settings.QueryNumber(*key, name);
        return number ? std::optional(static_cast<float>(static_cast<std::int32_t>(*number))) : std::nullopt;
    };
    const auto top = read("MainTop"), left = read("MainLeft"), width = read("MainWidth"),
               height = read("MainHeight");
    settings.Close(*key);
    if (top && left && width && height) Take({*top, *left, *width, *height});
}

// The rectangle is that of the frame, which is known when the window is on the screen.
void frmMain::Take(const Placement& place) {
    if (isMinimized() || isMaximized()) showNormal();
    const QSize frame(ToPixels(place.Width), ToPixels(place.Height));
    move(ToPixels(place.Left), ToPixels(place.Top));
    if (isVisible()) {
        resize(frame.shrunkBy(windowHandle()->frameMargins()));
        return;
    }
    resize(frame);
    frameSize_ = frame;
    winId();  // makes the window, so that it can be watched
    windowHandle()->installEventFilter(this);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    platform::qt::Guarded([&] {
        if (event->type() != QEvent::Expose || watched != windowHandle() || !frameSize_) return;
        resize(frameSize_->shrunkBy(windowHandle()->frameMargins()));
        frameSize_.reset();
    });
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace wavrik
