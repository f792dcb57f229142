#include "platform/qt/HostLink.h"

#include <QDeadlineTimer>

#include "platform/qt/LinkServer.h"

namespace platform::qt {
namespace {

constexpr int LinkTime = 500;         // ms, for a connection and for an answer
constexpr qint64 MaxLinkAnswer = 16;  // bytes with LinkEnd

[[noreturn]] void RaiseClosed() {
    throw base::RunTimeError(errLinkClosed, "The tool has ended the conversation");
}

}  // namespace

void HostLink::SetLinkMode(LinkMode mode) {
    // What was sent is left to the tool, even where it is late.
    socket_.disconnectFromServer();
    socket_.close();
    awaited_ = 0;
    if (mode == LinkMode::None) return;
    socket_.connectToServer(LinkSocket(topic_));
    if (socket_.waitForConnected(LinkTime)) return;
    socket_.abort();
    throw base::RunTimeError(base::errNoForeignApplication);
}

void HostLink::LinkExecute(const std::string& command) {
    if (command.size() > MaxLinkMessage || command.find(LinkEnd) != std::string::npos)
        throw base::RunTimeError(base::errInvalidCall);
    if (socket_.state() != QLocalSocket::ConnectedState) RaiseClosed();
    const QDeadlineTimer deadline(LinkTime);
    socket_.write(QByteArray::fromStdString(command) + LinkEnd);
    ++awaited_;
    QByteArray answer;
    while (awaited_ > 0) {
        answer = ReadAnswer(deadline);
        --awaited_;
    }
    if (answer != LinkAccepted)
        throw base::RunTimeError(errLinkRefused, "The tool did not carry out the command");
}

// Without its end. Throws what keeps the answer away.
QByteArray HostLink::ReadAnswer(const QDeadlineTimer& deadline) {
    for (;;) {
        const qsizetype length = socket_.peek(MaxLinkAnswer).indexOf(LinkEnd);
        if (length >= 0) return socket_.read(length + 1).chopped(1);
        if (socket_.bytesAvailable() >= MaxLinkAnswer) socket_.abort();  // no server of this link
        if (socket_.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) continue;
        if (socket_.state() != QLocalSocket::ConnectedState) RaiseClosed();
        throw base::RunTimeError(errLinkSilent, "The tool did not answer in time");
    }
}

}  // namespace platform::qt
