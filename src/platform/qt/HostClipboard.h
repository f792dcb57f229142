#pragma once

#include <QObject>

#include "platform/Clipboard.h"

namespace platform::qt {

// The desktop's clipboard. Bytes that are no UTF-8 survive between instances of this program: other programs
// get the text with replacement characters.
class HostClipboard : public Clipboard {
  public:
    HostClipboard();
    bool HasText() const override;
    std::string Text() const override;
    void SetText(const std::string& text) override;

  private:
    QObject listener_;
};

}  // namespace platform::qt
