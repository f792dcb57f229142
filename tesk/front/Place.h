#pragma once

#include "model/Place.h"

namespace front {

using model::Place;

}  // namespace front
