#include "toolchain/frmMessage.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <utility>

#include "base/Text.h"
#include "platform/qt/Guard.h"
#include "platform/qt/Twips.h"
#include "toolchain/frmErrorMessage.h"
#include "toolchain/windows/DisplayText.h"

namespace toolchain {

using platform::qt::Guarded;
using platform::qt::On;

namespace {

constexpr int lineMargin = 6;  // pixels, on either side of a line

// Lines of one width.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    int Width = 0;  // pixels

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {Width, option.fontMetrics.height() + 1};
    }
};

bool OpensLookup(int key) { return key == Qt::Key_F1 || key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

frmMessage::frmMessage(session::App& app, const ErrorCodes& codes, QWidget* parent)
    : QWidget(parent), app_(app), codes_(codes), lstMessages_(new QListView(this)) {
    setObjectName("frmMessage");
    setWindowTitle("Messages");
    lstMessages_->setObjectName("lstMessages");
    lstMessages_->setAccessibleName("Messages");
    lstMessages_->setModel(&model_);
    lstMessages_->setItemDelegate(new LineDelegate(this));
    lstMessages_->setUniformItemSizes(true);
    lstMessages_->setTextElideMode(Qt::ElideNone);
    lstMessages_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstMessages_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    lstMessages_->installEventFilter(this);
    setFocusProxy(lstMessages_);
    On(lstMessages_, &QListView::clicked, this, [this] { lstMessages_Click(); });
    layoutTimer_.setSingleShot(true);
    On(&layoutTimer_, &QTimer::timeout, this, [this] { LayOut(); });
    handle_ =
        app_.Host.Libraries.Register([this](const platform::ToolMessage& message) { Receive(message); });
    ResetFont();
}

frmMessage::~frmMessage() { app_.Host.Libraries.Unregister(handle_); }

void frmMessage::Receive(const platform::ToolMessage& message) {
    if (message.Number == platform::msgAddString) AddLine(message.Second);
    if (message.Number == platform::msgResetContent) {
        model_.Clear();
        longest_.clear();
        FitWidth();
    }
}

void frmMessage::AddLine(const std::string& line) {
    if (!layoutTimer_.isActive()) {
        const QScrollBar& bar = *lstMessages_->verticalScrollBar();
        follow_ = bar.value() == bar.maximum();
        layoutTimer_.start(0);
    }
    model_.Add(line);
    if (line.size() > longest_.size()) longest_ = base::Left(line, MessageModel::MaxLineLength);
}

void frmMessage::LayOut() {
    FitWidth();
    if (follow_) lstMessages_->scrollToBottom();
}

// Measures one line for all: the view asks no other for its size.
void frmMessage::FitWidth() {
    const QString line = DisplayLine(longest_, MessageModel::MaxLineLength);
    const int width = lstMessages_->fontMetrics().horizontalAdvance(line) + 2 * lineMargin;
    auto& delegate = static_cast<LineDelegate&>(*lstMessages_->itemDelegate());
    if (std::exchange(delegate.Width, width) != width) lstMessages_->doItemsLayout();
}

void frmMessage::ResetFont() {
    const session::FontRecord& wanted = app_.State.MessageFont;
    QFont font = lstMessages_->font();
    if (!wanted.Name.empty()) font.setFamily(QString::fromStdString(wanted.Name));
    font.setBold(wanted.Bold);
    font.setItalic(wanted.Italic);
    lstMessages_->setFont(font);
    FitWidth();
}

QMdiSubWindow& frmMessage::Frame() const { return *qobject_cast<QMdiSubWindow*>(parentWidget()); }
std::string frmMessage::Title() const { return windowTitle().toStdString(); }

void frmMessage::lstMessages_Click() {
    const auto code = ParseListLine(model_.Line(lstMessages_->currentIndex().row()));
    if (!code) return;
    ErrorEntry entry;
    entry.Code = *code;  // that of the line, be it in the table or not
    codes_.LookupError(*code, entry.Level, entry.Message, entry.Description, entry.Information);
    platform::qt::Modal(new frmErrorMessage(entry, window())).Run();
}

bool frmMessage::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || !OpensLookup(static_cast<QKeyEvent*>(event)->key())) {
        return QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::KeyPress) Guarded([this] { lstMessages_Click(); });
    event->accept();  // the key is the list's: no shortcut of the main window takes it
    return true;
}

void frmMessage::resizeEvent(QResizeEvent*) { lstMessages_->setGeometry(rect()); }

void frmMessage::closeEvent(QCloseEvent* event) {
    event->ignore();
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    (frame != nullptr ? static_cast<QWidget*>(frame) : this)->hide();
}

}  // namespace toolchain
