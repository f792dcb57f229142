#include "project/ProjectRoom.h"

#include "base/RunTimeError.h"

namespace project {

ProjectRoom::ProjectRoom(session::App& app) : app_(app) {
    app.Hall.Project = this;
    AddCommands();
}

ProjectRoom::~ProjectRoom() = default;

void ProjectRoom::AddCommands() {
    app_.Hall.MainCommands.Add({
        {"mnuProjectOpen", [this](int) { mnuProjectOpen_Click(Desk()); }},
    });
}

void ProjectRoom::ShowProject() {}
bool ProjectRoom::CloseProject() { return true; }
void ProjectRoom::UpdateTreeView() {}

void ProjectRoom::Execute(const std::string&, const std::string&) {
    throw base::RunTimeError(base::errNoForeignApplication);
}

}  // namespace project
