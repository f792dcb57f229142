#include "shell/frmAbout.h"

#include <QIcon>

#include "shell/StartUp.h"
#include "shell/SystemInfo.h"
#include "shell/frmSplash.h"

namespace shell {
namespace {

using platform::qt::Column;
using platform::qt::Label;
using platform::qt::Row;
using platform::qt::Stretch;

constexpr int iconLines = 4;

QLabel* Picture(const char* name, const char* file) {
    const int side = platform::qt::InCharacters(1, iconLines).height();
    auto* picture = platform::qt::Named(name, new QLabel);
    picture->setPixmap(QIcon(file).pixmap(QSize(side, side), picture->devicePixelRatio()));
    return picture;
}

QLabel* Title() {
    QLabel* title = Label("lblTitle", applicationTitle);
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    return title;
}

}  // namespace

frmAbout::frmAbout(platform::Host& host, QWidget* owner)
    : Form("frmAbout", (std::string("About ") + applicationTitle).c_str(), owner) {
    LayOut({Row({Picture("picIcon", ":/icons/korvane.svg"),
                 Column({Title(), Label("lblVersion", VersionText().toStdString()),
                         Label("lblDescription", "Universal Compiler for Programmable Logic."), Stretch()}),
                 Stretch()}),
            Buttons({{"cmdOK", "OK", [this] { accept(); }},
                     {"cmdSysInfo", "&System Info...", [&host] { StartSysInfo(host); }}})});
}

}  // namespace shell
