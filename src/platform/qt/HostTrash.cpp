#include "platform/qt/HostTrash.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <cerrno>

#include "base/AtomicFile.h"
#include "base/RunTimeError.h"

namespace platform::qt {
namespace {

constexpr int maxNames = 1000;

std::string Encoded(const QString& path) { return QFile::encodeName(path).toStdString(); }

// The user's trash folder. A new user has none yet, and where none can be made the toolkit would take the
// current folder for it.
QString TrashFolder() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString trash = data + "/Trash";
    const bool made =
        QDir().mkpath(data) && (QDir(trash).exists() || ::mkdir(Encoded(trash).c_str(), 0700) == 0);
    if (!made || ::access(Encoded(trash).c_str(), W_OK) != 0) base::RaiseErrno(EACCES, Encoded(trash));
    return trash;
}

// Takes a free name in the trash by writing where the file came from, as the desktops agreed.
QString TakeName(const QString& trash, const QString& path) {
    const QString name = QFileInfo(path).fileName();
    for (int i = 1; i <= maxNames; ++i) {
        const QString taken = i == 1 ? name : name + "." + QString::number(i);
        const std::string info = Encoded(trash + "/info/" + taken + ".trashinfo");
        const base::Descriptor file(::open(info.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (file.Get() < 0 && errno == EEXIST) continue;
        if (file.Get() < 0) base::RaiseErrno(errno, info);
        base::WriteBytes(
            file, info,
            "[Trash Info]\nPath=" + QUrl::toPercentEncoding(path, "/").toStdString() + "\nDeletionDate=" +
                QDateTime::currentDateTime().toString("yyyy-MM-ddThh:mm:ss").toStdString() + "\n");
        return taken;
    }
    base::RaiseErrno(EEXIST, Encoded(trash));
}

void CopyToTrash(const QString& trash, const std::string& hostPath) {
    for (const char* part : {"/files", "/info"}) QDir().mkpath(trash + part);
    base::Descriptor source;
    struct stat status {};
    base::OpenRegular(hostPath, source, status);
    const QString name = TakeName(trash, QFile::decodeName(hostPath.c_str()));
    try {
        base::AtomicFile copy(Encoded(trash + "/files/" + name));
        base::ReadBlocks(source, hostPath, [&](std::string_view block) { copy.Write(block); });
        copy.SetModified(status.st_mtim);
        copy.Commit();
        if (::unlink(hostPath.c_str()) != 0) base::RaiseErrno(errno, hostPath);
    } catch (const base::RunTimeError&) {
        QFile::remove(trash + "/files/" + name);
        QFile::remove(trash + "/info/" + name + ".trashinfo");
        throw;
    }
}

}  // namespace

void MoveToTrash(const std::string& hostPath) {
    const QString trash = TrashFolder();
    if (!QFile::moveToTrash(QFile::decodeName(hostPath.c_str()))) CopyToTrash(trash, hostPath);
}

}  // namespace platform::qt
