#pragma once

#include "platform/qt/MdiChild.h"
#include "project/Project.h"
#include "session/App.h"

namespace project {

class frmProject;

// The door of projects and new designs: owns the project window.
class ProjectRoom : public session::Project, private ProjectWindows {
  public:
    // Enters itself and its commands into the hall.
    explicit ProjectRoom(session::App& app);

    void LoadWindows(platform::qt::MdiFrame& frame) { frame_ = &frame; }
    void UnloadWindows();

    void ShowProject() override;
    bool CloseProject() override { return UnloadProject(); }
    void UpdateTreeView() override;  // nothing without the window
    void ResetProjectFont() override;

  private:
    void AddCommands();
    void LoadProject();
    ProjectDesk Desk() { return {app_, *this}; }

    bool IsOpen() const override { return window_ != nullptr; }
    void HideProject() override;
    bool UnloadProject() override;
    bool ShowNewDesign() override;

    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
    frmProject* window_ = nullptr;  // of the main window; null unless it is loaded
};

}  // namespace project
