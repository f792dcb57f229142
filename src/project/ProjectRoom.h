#pragma once

#include <memory>

#include "platform/qt/MdiChild.h"
#include "project/Project.h"
#include "session/App.h"

namespace project {

// The door of projects and new designs: owns the project window.
class ProjectRoom : public session::Project, private ProjectDoors {
  public:
    // Enters itself and its commands into the hall.
    explicit ProjectRoom(session::App& app);
    ~ProjectRoom() override;

    void LoadWindows(platform::qt::MdiFrame& frame) { frame_ = &frame; }
    void UnloadWindows() { frame_ = nullptr; }

    void ShowProject() override;
    bool CloseProject() override;
    void UpdateTreeView() override;

  private:
    void AddCommands();
    ProjectDesk Desk() { return {app_.State, app_.Host, *this}; }

    bool IsOpen() const override { return isOpen_; }
    void SetOpen(bool on) override { isOpen_ = on; }
    void HideProject() override {}
    bool UnloadProject() override { return true; }
    bool ShowNewDesign() override { return false; }
    session::Document* ActiveDocument() override { return app_.Hall.Main->ActiveDocument(); }
    void OpenDocument(const std::string& path) override { app_.Hall.Editor->OpenDocument(path); }
    void Execute(const std::string& topic, const std::string& command) override;

    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
    bool isOpen_ = false;
};

}  // namespace project
