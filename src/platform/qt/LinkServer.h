#pragma once

#include <QLocalServer>
#include <QTimer>
#include <functional>
#include <string>

#include "base/PosixFile.h"

namespace platform::qt {

// The link between this program and its companions, for both ends.
//
// A server listens on the local socket LinkSocket("service|topic"). A client connects and sends commands;
// each gets one answer, in order, when it has been carried out: "accepted" or "refused". Commands and answers
// are UTF-8, each ends with a NUL byte and is no longer than MaxLinkMessage. Closing the connection ends the
// conversation; what was sent before is still carried out.
//
// Commands that a companion takes, numbers in twips: "Tile" and four numbers, top, left, width and height, a
// blank before each; "Open " and a path; "Display".
inline constexpr char LinkEnd = '\0';
inline constexpr auto LinkAccepted = "accepted";
inline constexpr auto LinkRefused = "refused";
inline constexpr qint64 MaxLinkMessage = 32767;  // bytes without LinkEnd

// The socket's path in the user's own run-time folder: "korvane.Wavrik%7CfrmMain.link".
QString LinkSocket(const std::string& topic);

// The server end, for the main thread of a companion.
class LinkServer {
  public:
    // Gets a command, tells whether it accepts it. The client waits meanwhile, half a second at most: boxes
    // are to be shown later (Soon). What it throws is shown as any error, and the command is refused.
    using Handler = std::function<bool(const std::string& command)>;

    // While an earlier copy of the companion has the name this one stands by, and takes it when that ends.
    LinkServer(const std::string& service, const std::string& topic, Handler execute);

    bool IsListening() const { return server_.isListening(); }

  private:
    void Take();
    void Serve();
    void Answer(QLocalSocket* client);

    const QString name_;
    const Handler execute_;
    base::Descriptor lock_;  // given back after the server has closed
    QLocalServer server_;
    QTimer standBy_;
};

}  // namespace platform::qt
