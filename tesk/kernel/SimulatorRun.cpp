#include "kernel/Stages.h"

void SimulatorRun::TellUnreadable(std::string_view code, std::string_view extension) {
    const std::string path = Base + std::string(extension);
    const std::string name(front::FileName(path));
    const sim::Message missing{std::string(code), sim::Severity::Error, 0, "File cannot be read: " + name};
    Said.AddForeign(front::Level::Error, sim::ListLine(missing, name));
}
