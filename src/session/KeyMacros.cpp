#include "session/KeyMacros.h"

#include "base/RunTimeError.h"

namespace session {

const cKSMacro& cKSMacros::Item(std::size_t position) const {
    if (position < 1 || position > Count()) throw base::RunTimeError(base::errSubscript);
    return events_[position - 1];
}

void cKSMacros::Remove(std::size_t position) {
    Item(position);
    events_.erase(events_.begin() + static_cast<std::ptrdiff_t>(position - 1));
}

}  // namespace session
