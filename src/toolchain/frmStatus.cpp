#include "toolchain/frmStatus.h"

#include "base/Number.h"
#include "toolchain/windows/DisplayText.h"
#include "ui_frmStatus.h"

namespace toolchain {
namespace {

constexpr int formWidth = 380;          // pixels
constexpr qint64 flood = 10;            // milliseconds between messages for one label
constexpr std::size_t maxShown = 1000;  // bytes of a text that a label shows

}  // namespace

frmStatus::frmStatus(platform::ToolLibraries& libraries, platform::Dialogs& boxes, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmStatus>()), libraries_(libraries), boxes_(boxes) {
    handle_ =
        libraries_.Register([this](const platform::ToolMessage& message) { SubClass1_Message(message); });
    ui_->setupUi(this);
    for (QLabel* label : {ui_->lblStatus, ui_->lblInfo, ui_->lblWarnings, ui_->lblErrors}) {
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // a long text widens nothing
    }
    ui_->lblErrors->setText("0");
    ui_->lblWarnings->setText("0");
    ui_->lblStatus->setText("Initializing");
    EnableOk(false);
    connect(ui_->OK, &QPushButton::clicked, this, &QDialog::accept);
    setFixedSize(formWidth, sizeHint().height());
}

frmStatus::~frmStatus() { libraries_.Unregister(handle_); }

// Repainted at once: ordinary painting gets its turn only now and then while a library works. In a flood of
// messages a repaint each would cost more than the run; there the ordinary painting shows every few.
void frmStatus::Show(QLabel& label, const QString& text) {
    label.setText(text);
    QElapsedTimer& since = repainted_[&label];
    if (since.isValid() && since.elapsed() < flood) return;
    since.start();
    label.repaint();
}

// The caption is the counter.
void frmStatus::CountUp(QLabel& label) {
    const std::int64_t count = base::TextToInt32(label.text().toStdString());
    Show(label, QString::number(base::ToInt32(count + 1)));
}

void frmStatus::SetInfo(const std::string& text) { Show(*ui_->lblInfo, DisplayLine(text, maxShown)); }

void frmStatus::EnableOk(bool enabled) {
    ui_->OK->setEnabled(enabled);
    if (enabled) ui_->OK->setFocus();
}

void frmStatus::SubClass1_Message(const platform::ToolMessage& message) {
    switch (message.Number) {
        case platform::msgStatus:
            Show(*ui_->lblStatus, DisplayLine(message.First, maxShown));
            break;
        case platform::msgInfo:
            SetInfo(message.First);
            break;
        case platform::msgError:
            CountUp(*ui_->lblErrors);
            break;
        case platform::msgWarning:
            CountUp(*ui_->lblWarnings);
            break;
        case platform::msgAddString:
            boxes_.Say(message.Second + " " + message.First);
            break;
        default:
            break;
    }
}

// Escape and the window's own close button do what OK does, and only when OK does it.
void frmStatus::reject() {
    if (ui_->OK->isEnabled()) accept();
}

}  // namespace toolchain
