#include "platform/qt/ToolWatch.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStyle>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr Clock::Milliseconds firstPatience{10'000};
constexpr Clock::Milliseconds laterPatience{60'000};
constexpr Clock::Milliseconds pause{1'000};  // in the talk of a tool that talks on

QWidget* BoxParent() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr) return window;
    return nullptr;
}

// No message box of the toolkit: there a letter without Alt presses a button, and who types into the blue
// would stop the tool.
QDialog* MakeBox(QWidget* parent) {
    auto* box = new QDialog(parent);
    box->setObjectName("ToolBox");
    box->setWindowTitle("Korvane");
    box->setWindowModality(Qt::ApplicationModal);
    auto* picture = new QLabel(box);
    const int size = box->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, box);
    picture->setPixmap(box->style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, box).pixmap(size));
    auto* text = new QLabel("The tool does not answer.", box);
    text->setObjectName("Text");
    auto* buttons = new QDialogButtonBox(box);
    auto* stop = buttons->addButton("&Stop it", QDialogButtonBox::AcceptRole);
    auto* wait = buttons->addButton("&Wait", QDialogButtonBox::RejectRole);
    stop->setObjectName("Stop");
    wait->setObjectName("Wait");
    stop->setAutoDefault(false);
    wait->setDefault(true);
    wait->setFocus();
    QObject::connect(buttons, &QDialogButtonBox::accepted, box, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, box, &QDialog::reject);
    auto* grid = new QGridLayout(box);
    grid->addWidget(picture, 0, 0);
    grid->addWidget(text, 0, 1);
    grid->addWidget(buttons, 1, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    return box;
}

}  // namespace

ToolWatch::ToolWatch(const Clock& clock)
    : clock_(clock), patience_(firstPatience), quietSince_(clock.Now()) {}

ToolWatch::~ToolWatch() {
    delete box_.data();
    QCoreApplication::processEvents();
}

// A box that a try to close has opened while the tool talks all the time stays until the tool ends: the user
// has no other way to stop it.
void ToolWatch::Heard() {
    quietSince_ = clock_.Now();
    heard_ = quietSince_;
    if (IsOpen() && !talks_) box_->hide();
}

Clock::Milliseconds ToolWatch::Silence() const { return clock_.Now() - quietSince_; }

bool ToolWatch::GoOn(QEventLoop::ProcessEventsFlags how) {
    QCoreApplication::processEvents(how);
    const bool closeTry = shield_.TakeCloseTry();
    if (!stop_ && !IsOpen() && (closeTry || Silence() >= patience_)) Ask();
    return !stop_;
}

void ToolWatch::Ask() {
    talks_ = heard_ && clock_.Now() - *heard_ < pause;
    delete box_.data();
    box_ = MakeBox(BoxParent());
    On(box_.data(), &QDialog::finished, &shield_, [this](int result) { Answer(result); });
    // Who works elsewhere meanwhile, such as in a window of the tool, goes on there.
    box_->setAttribute(Qt::WA_ShowWithoutActivating, QApplication::activeWindow() == nullptr);
    box_->show();
}

void ToolWatch::Answer(int result) {
    stop_ = result == QDialog::Accepted;
    patience_ = laterPatience;
    quietSince_ = clock_.Now();
}

}  // namespace platform::qt
