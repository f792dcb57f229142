#pragma once

#include <utility>

namespace base {

// Runs an action at the end of the block, however that is left. What the action itself throws is dropped: the
// error that is on its way says more.
template <typename Action>
class ScopeExit {
  public:
    explicit ScopeExit(Action action) : action_(std::move(action)) {}
    ~ScopeExit() {
        try {
            if (isDue_) action_();
        } catch (...) {
            // Told above.
        }
    }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

    void Cancel() { isDue_ = false; }

  private:
    Action action_;
    bool isDue_ = true;
};

}  // namespace base
