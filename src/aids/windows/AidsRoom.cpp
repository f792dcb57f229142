#include "aids/AidsRoom.h"

namespace aids {

AidsRoom::AidsRoom(session::App& app) : app_(app) {}

}  // namespace aids
