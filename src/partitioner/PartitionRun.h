#pragma once

#include <string>

#include "base/PartitionInterface.h"
#include "session/App.h"

namespace partitioner {

// A run of the partitioner on the design sProject, through three closed libraries in ZrxDir, each loaded for
// its call. They report to the two handles. What goes wrong is told in a box.
class PartitionRun {
  public:
    PartitionRun(session::App& app, platform::WindowHandle messages, platform::WindowHandle solutions);

    // The number of solutions found. Kept: after a Fit it searches with the options and the file of that.
    std::int32_t FindSolutions();
    void ListSolutions();
    void Fit(const std::string& entry);          // an entry of the list
    void FitSolution(const std::string& entry);  // the same by a double click

  private:
    bool HasDocument() const;
    std::int32_t Call(const std::string& name, const std::string& failure);

    session::App& app_;
    base::ZrxRecord record_;  // a library may change it
};

}  // namespace partitioner
