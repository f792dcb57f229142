#include "toolchain/frmErrorMessage.h"

#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/qt/Captions.h"

namespace toolchain {
namespace {

template <class Box>
Box* ReadOnly(const char* name, const std::string& text) {
    auto* box = platform::qt::Named(name, new Box(platform::qt::Shown(text)));
    box->setReadOnly(true);
    return box;
}

QPlainTextEdit* Lines(const char* name, const std::string& text) {
    auto* box = ReadOnly<QPlainTextEdit>(name, text);
    box->setTabChangesFocus(true);
    return box;
}

}  // namespace

frmErrorMessage::frmErrorMessage(const ErrorEntry& entry, QWidget* owner)
    : Form("frmErrorMessage", "Compile Message", owner) {
    LayOut({platform::qt::Fields({
                {"lblCode", "Code:", ReadOnly<QLineEdit>("txtCode", entry.Code)},
                {"lblLevel", "Level:", ReadOnly<QLineEdit>("txtLevel", entry.Level)},
                {"lblMessage", "Message:", Lines("txtMessage", entry.Message), 1},
                {"lblDescription", "Description:", Lines("txtDescription", entry.Description), 2},
                {"lblInformation", "Information:", Lines("txtInfo", entry.Information), 2},
            }),
            Buttons({{"OK", "OK", [this] { accept(); }}})},
           Size::OfUser);
    ResizeTo(88, 25);
    Control<QPushButton>("OK").setFocus();
}

}  // namespace toolchain
