#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

#include "platform/InputJournal.h"

namespace session {

using cKSMacro = platform::InputEvent;

// Recorded input in its order. Positions from 1; one that is not there is error 9.
class cKSMacros {
  public:
    void Add(std::uint32_t message, std::uint32_t paramL, std::uint32_t paramH, std::uint32_t time,
             std::uint32_t hWnd) {
        events_.push_back({message, paramL, paramH, time, hWnd});
    }
    const cKSMacro& Item(std::size_t position) const;
    std::size_t Count() const { return events_.size(); }
    void Remove(std::size_t position);

    auto begin() const { return events_.begin(); }
    auto end() const { return events_.end(); }

  private:
    std::deque<cKSMacro> events_;
};

}  // namespace session
