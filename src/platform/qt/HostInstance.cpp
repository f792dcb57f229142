#include "platform/qt/HostInstance.h"

#include <fcntl.h>
#include <sys/file.h>

#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>
#include <cerrno>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr int ConnectTime = 2000;    // ms
constexpr int AnswerTime = 5000;     // ms
constexpr qint64 MaxRequest = 8192;  // bytes: more than the longest path
constexpr auto LockName = "/korvane.lock";
constexpr auto SocketName = "/korvane.socket";

}  // namespace

HostInstance::HostInstance(std::string folder, std::function<bool(const std::string&)> serve)
    : folder_(std::move(folder)), serve_(std::move(serve)) {
    if (folder_.empty())
        folder_ = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation).toStdString();
    On(&server_, &QLocalServer::newConnection, &server_, [this] { Serve(); });
}

bool HostInstance::Take() {
    if (IsTaken() || folder_.empty()) return true;
    const int lock = ::open((folder_ + LockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock < 0) return true;
    if (::flock(lock, LOCK_EX | LOCK_NB) != 0) {
        const bool held = errno == EWOULDBLOCK;
        ::close(lock);
        return !held;
    }
    lock_.Reset(lock);
    Listen();
    return true;
}

void HostInstance::Listen() {
    const QString name = QString::fromStdString(folder_ + SocketName);
    QLocalServer::removeServer(name);  // left by a crash: the lock is ours
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(name);
}

void HostInstance::Serve() {
    while (QLocalSocket* client = server_.nextPendingConnection()) {
        client->setReadBufferSize(MaxRequest);
        QObject::connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        QTimer::singleShot(AnswerTime, client, &QLocalSocket::abort);
        const auto answer = [this, client] {
            if (!client->canReadLine()) return;
            const QByteArray request = client->readLine(MaxRequest);
            const bool isWhole = request.endsWith('\n');
            client->write(isWhole && serve_(request.chopped(1).toStdString()) ? "1\n" : "0\n");
            client->disconnectFromServer();
        };
        On(client, &QLocalSocket::readyRead, client, answer);
        answer();
    }
}

bool HostInstance::AskToRaise(const std::string& title) const {
    if (IsTaken() || folder_.empty()) return false;
    QLocalSocket socket;
    socket.connectToServer(QString::fromStdString(folder_ + SocketName));
    if (!socket.waitForConnected(ConnectTime)) return false;
    socket.write(QByteArray::fromStdString(title) + '\n');
    socket.flush();
    if (!socket.canReadLine() && !socket.waitForReadyRead(AnswerTime)) return false;
    return socket.readLine(MaxRequest).startsWith('1');
}

}  // namespace platform::qt
