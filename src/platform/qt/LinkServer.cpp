#include "platform/qt/LinkServer.h"

#include <fcntl.h>
#include <sys/file.h>

#include <QLocalSocket>
#include <QPointer>
#include <QStandardPaths>
#include <QUrl>
#include <utility>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr int StandByInterval = 250;   // ms
constexpr qint64 MaxUnread = 1 << 20;  // bytes

}  // namespace

QString LinkSocket(const std::string& topic) {
    const QByteArray name = QUrl::toPercentEncoding(QString::fromStdString(topic));
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/korvane." + name + ".link";
}

LinkServer::LinkServer(const std::string& service, const std::string& topic, Handler execute)
    : name_(LinkSocket(service + "|" + topic)), execute_(std::move(execute)) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    standBy_.setInterval(StandByInterval);
    On(&server_, &QLocalServer::newConnection, &server_, [this] { Serve(); });
    On(&standBy_, &QTimer::timeout, &standBy_, [this] { Take(); });
    Take();
}

// The lock tells a copy that runs from a socket that a crash has left: the system takes locks back.
void LinkServer::Take() {
    standBy_.start();
    const QByteArray path = name_.toUtf8() + ".lock";
    base::Descriptor lock(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock.Get() < 0 || ::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) return;
    QLocalServer::removeServer(name_);
    if (!server_.listen(name_)) return;
    lock_.Reset(::fcntl(lock.Get(), F_DUPFD_CLOEXEC, 0));  // the same lock
    standBy_.stop();
}

void LinkServer::Serve() {
    while (QLocalSocket* client = server_.nextPendingConnection()) {
        client->setReadBufferSize(MaxUnread);
        QObject::connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        On(client, &QLocalSocket::readyRead, client, [this, client] { Answer(client); });
        Answer(client);
    }
}

void LinkServer::Answer(QLocalSocket* client) {
    QByteArrayList commands;  // taken before the first answer, which finds out that a client has gone
    for (;;) {
        const qsizetype length = client->peek(MaxLinkMessage + 1).indexOf(LinkEnd);
        if (length < 0) break;
        commands.append(client->read(length + 1).chopped(1));
    }
    if (client->bytesAvailable() > MaxLinkMessage) client->abort();
    const QPointer<QLocalSocket> there(client);  // the handler may run an event loop
    for (const QByteArray& command : commands) {
        bool isAccepted = false;
        Guarded([&] { isAccepted = execute_(command.toStdString()); });
        if (!there || !there->isOpen()) continue;
        there->write(QByteArray(isAccepted ? LinkAccepted : LinkRefused) + LinkEnd);
        there->flush();
    }
}

}  // namespace platform::qt
