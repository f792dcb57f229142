#include "kernel/Stages.h"

void SimulatorRun::TellUnreadable(sim::MessageCode code, std::string_view extension) {
    const std::string path = Base + std::string(extension);
    const std::string name(front::FileName(path));
    model::Message missing = model::MakeMessage(code.Entry(), {});
    missing.Text = "File cannot be read: " + name;
    Said.AddForeign(missing.Level, model::ListLine(missing, name));
}
