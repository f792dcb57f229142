#pragma once

#include <memory>
#include <string>

#include "front/Run.h"
#include "kernel/Streams.h"
#include "sim/Simulation.h"

// The entry of each stage library. Kernels and stages come from one build and share the run's object. An
// entry returns 1 if the run can go on, 0 if errors end it; no exception leaves it.

struct SimulatorRun {
    SimulatorRun(front::Files& files, front::Listener& listener) : Disk(files), Said(listener) {}

    // Reports that the design's file of this extension cannot be read.
    void TellUnreadable(sim::MessageCode code, std::string_view extension);

    front::Files& Disk;
    front::Report Said;
    std::string Base;   // the design's path without extension
    std::string Jedec;  // the path of the .JED that vectors are appended to
    sim::SimulationOptions Options;
    sim::Checked Checked;
    std::unique_ptr<kernel::DiskSource> Si;
    std::unique_ptr<kernel::DiskSpool> Steps;
};

extern "C" {
int TeskxStage(front::Run* run);
int TeskaStage(front::Run* run);
int TeskbStage(front::Run* run);
int TeskmStage(front::Run* run);
int TeskcStage(front::Run* run);
int VornaStage(SimulatorRun* run);  // reads .ABS and .SI
int VsimaStage(SimulatorRun* run);  // simulates, writes .SO and .VCD, appends to .JED
}
