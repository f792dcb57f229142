#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRasterWindow>
#include <optional>

#include "platform/qt/HostRegistry.h"
#include "platform/qt/LinkServer.h"
#include "platform/qt/Twips.h"

// A tool that is called as its program: a companion, which notes beside it what it is told. The window of the
// Calculator leaves the keys where they are.

namespace {

void Note(const QString& line) {
    QFile file(QCoreApplication::applicationFilePath() + ".log");
    if (file.open(QIODevice::Append)) file.write(line.toUtf8() + '\n');
}

// It can be spoken to from when it has lost the keys, as slow starters are.
class ToolWindow : public QRasterWindow {
  public:
    // To the place in its settings, which it notes with how it was started.
    void Place(const QString& tool) {
        platform::qt::HostRegistry settings;
        const auto key = settings.Open("Software\\Brennick Labs\\" + tool.toStdString() + "\\1.0\\Settings",
                                       platform::Registry::Access::Read);
        if (!key) return;
        QString note = "Start " + QCoreApplication::arguments().mid(1).join(' ');
        int place[4] = {};
        const char* values[] = {"MainLeft", "MainTop", "MainWidth", "MainHeight"};
        for (int i = 0; i < 4; ++i) {
            const auto twips = settings.QueryNumber(*key, values[i]).value_or(0);
            place[i] = platform::qt::ToPixels(static_cast<float>(twips));
            note += QString(" %1").arg(twips);
        }
        setGeometry(place[0], place[1], place[2], place[3]);
        Note(note);
    }

  protected:
    void focusOutEvent(QFocusEvent*) override {
        if (server_) return;
        const std::string tool = title().toStdString();
        server_.emplace(tool == "Schematic" ? "Schematic/PCB" : tool, "frmMain",
                        [](const std::string& command) {
                            Note(QString::fromStdString(command));
                            return true;
                        });
        Note("Behind");
    }

  private:
    std::optional<platform::qt::LinkServer> server_;
};

}  // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).baseName();
    const bool isCompanion = program != "calc";
    ToolWindow window;
    window.setTitle(isCompanion ? program : "Calculator");
    window.setFlag(Qt::WindowDoesNotAcceptFocus, !isCompanion);
    window.resize(100, 50);
    window.Place(program);
    window.show();
    return QGuiApplication::exec();
}
