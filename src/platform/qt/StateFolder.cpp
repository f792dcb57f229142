#include "platform/qt/StateFolder.h"

#include <QDir>

namespace platform::qt {

std::string StateFolder(const FileSystem& files) {
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder)) folder = QDir::homePath() + "/.local/state";
    return files.FromHostPath(folder.toStdString() + "/korvane") + "\\";
}

}  // namespace platform::qt
