#pragma once

#include "session/App.h"

namespace platform::qt {
class MdiFrame;
}

namespace partitioner {

// The door of the partitioner: its parameters, its run, its device library.
class PartitionerRoom {
  public:
    // Enters its commands into the hall.
    explicit PartitionerRoom(session::App& app);

    void LoadWindows(platform::qt::MdiFrame& frame) { frame_ = &frame; }

  private:
    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
};

}  // namespace partitioner
