#include "partitioner/PartitionerRoom.h"

namespace partitioner {

PartitionerRoom::PartitionerRoom(session::App& app) : app_(app) {}

}  // namespace partitioner
