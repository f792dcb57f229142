#include "toolchain/frmStatus.h"

#include "base/Number.h"
#include "toolchain/windows/DisplayText.h"

namespace toolchain {
namespace {

constexpr int shownCharacters = 40;     // of a label
constexpr qint64 flood = 10;            // milliseconds between messages for one label
constexpr std::size_t maxShown = 1000;  // bytes of a text that a label shows

}  // namespace

frmStatus::frmStatus(platform::ToolLibraries& libraries, platform::Dialogs& boxes, QWidget* owner)
    : Form("frmStatus", "Compilation Results", owner), libraries_(libraries), boxes_(boxes) {
    for (QLabel* label : {lblStatus, lblInfo, lblWarnings, lblErrors}) {
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // a long text widens nothing
        label->setMinimumWidth(platform::qt::InCharacters(shownCharacters, 1).width());
    }
    LayOut({platform::qt::Fields({{"Label1", "Status:", lblStatus},
                                  {"Label2", "Information:", lblInfo},
                                  {"Label3", "Warnings:", lblWarnings},
                                  {"Label4", "Errors:", lblErrors}}),
            Buttons({{"OK", "OK", [this] { accept(); }}})});
    EnableOk(false);
    handle_ =
        libraries_.Register([this](const platform::ToolMessage& message) { SubClass1_Message(message); });
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

void frmStatus::SetInfo(const std::string& text) { Show(*lblInfo, DisplayLine(text, maxShown)); }

void frmStatus::EnableOk(bool enabled) {
    auto& ok = Control<QPushButton>("OK");
    ok.setEnabled(enabled);
    if (enabled) ok.setFocus();
}

void frmStatus::SubClass1_Message(const platform::ToolMessage& message) {
    switch (message.Number) {
        case platform::msgStatus:
            Show(*lblStatus, DisplayLine(message.First, maxShown));
            break;
        case platform::msgInfo:
            SetInfo(message.First);
            break;
        case platform::msgError:
            CountUp(*lblErrors);
            break;
        case platform::msgWarning:
            CountUp(*lblWarnings);
            break;
        case platform::msgAddString:
            boxes_.Say(message.Second + " " + message.First);
            break;
        default:
            break;
    }
}

// Escape and the window's own close button do what OK does, and only when OK does it.
void frmStatus::Cancel_Click() {
    if (Control<QPushButton>("OK").isEnabled()) accept();
}

}  // namespace toolchain
