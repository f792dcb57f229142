#include "shell/frmSplash.h"

#include <QApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace shell {

QString VersionText() { return QStringLiteral("Version ") + QStringLiteral(KORVANE_VERSION); }

frmSplash::frmSplash() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName("frmSplash");
    setWindowTitle("Korvane");
    auto* picture = new QLabel(this);
    picture->setPixmap(QIcon(":/icons/splash.svg").pixmap(QSize(420, 260)));
    picture->setFixedSize(420, 260);
    auto* version = new QLabel(VersionText(), picture);
    version->setObjectName("lblVersion");
    version->setStyleSheet("color: white;");
    version->adjustSize();
    version->move(24, 244 - version->height());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(picture);
    adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        move(screen->geometry().center() - rect().center());
    }
}

void frmSplash::ShowAndPaint() {
    show();
    raise();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace shell
