#pragma once

#include <QLocalSocket>

#include "platform/Link.h"

class QDeadlineTimer;

namespace platform::qt {

// The link over the local socket of LinkServer.h. No call takes longer than half a second.
class HostLink : public ToolLink {
  public:
    void SetLinkTopic(const std::string& topic) override { topic_ = topic; }
    void SetLinkMode(LinkMode mode) override;
    void LinkExecute(const std::string& command) override;

  private:
    QByteArray ReadAnswer(const QDeadlineTimer& deadline);

    std::string topic_;
    QLocalSocket socket_;
    int awaited_ = 0;  // answers, with those that came too late
};

}  // namespace platform::qt
