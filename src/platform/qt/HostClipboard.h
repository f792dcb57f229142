#pragma once

#include <QObject>
#include <string>
#include <string_view>

#include "platform/Clipboard.h"

class QMimeData;

namespace platform::qt {

// A text as it is handed on, a new object; and the text of what is handed over. Bytes that are no UTF-8 go
// along under a name of this program.
QMimeData* MakeTextData(std::string_view text);
std::string TextOf(const QMimeData& data);

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
