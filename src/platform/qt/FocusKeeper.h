#pragma once

#include <QDeadlineTimer>
#include <QTimer>
#include <cstdint>
#include <vector>

#include "platform/Windows.h"

namespace platform::qt {

// No program can be told to open its window without the keys. The window that had them takes them back from
// programs that are started behind it.
class FocusKeeper {
  public:
    FocusKeeper();

    void KeepFrom(std::uint32_t process);  // just started

  private:
    struct Newcomer {
        std::uint32_t Process;
        QDeadlineTimer Patience;  // for its window to come, then for the keys to follow it
        bool IsThere = false;
        bool HadKeys = false;
    };

    void Look();
    bool IsDone(Newcomer& newcomer, const std::vector<TopLevelWindow>& open, std::uint32_t active) const;

    std::uint32_t window_ = 0;  // that had the keys
    std::vector<Newcomer> newcomers_;
    QTimer timer_;
};

}  // namespace platform::qt
