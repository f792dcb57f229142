#include "project/ProjectRoom.h"

#include <QMdiArea>

#include "base/RunTimeError.h"
#include "platform/qt/Guard.h"
#include "project/frmNewDesign.h"
#include "project/frmProject.h"

namespace project {

ProjectRoom::ProjectRoom(session::App& app) : app_(app) {
    app.Hall.Project = this;
    AddCommands();
}

void ProjectRoom::AddCommands() {
    app_.Hall.MainCommands.Add({
        {"mnuNewDesign", [this](int) { ShowNewDesign(); }},
        {"mnuNewProject", [this](int) { mnuNewProject_Click(Desk()); }},
        {"mnuProjectOpen", [this](int) { mnuProjectOpen_Click(Desk()); }},
        {"mnuCloseProject", [this](int) { CloseProject(); }, [this] { return IsOpen(); }},
    });
    app_.Hall.DocumentCommands.Add({
        {"mnuProject", [this](session::Document& document, int) { mnuProject_Click(Desk(), document); }},
    });
}

void ProjectRoom::UnloadWindows() {
    window_ = nullptr;
    frame_ = nullptr;
}

void ProjectRoom::LoadProject() {
    window_ = new frmProject(Desk());
    frame_->AddChild(*window_, *window_);
    platform::qt::On(window_, &frmProject::Unloaded, window_, [this] { window_ = nullptr; });
    ProjectLoaded(app_);
}

void ProjectRoom::ShowProject() {
    if (window_ == nullptr) LoadProject();
    window_->show();
    window_->mdiArea()->setActiveSubWindow(window_);
    window_->raise();
}

void ProjectRoom::HideProject() {
    if (window_ != nullptr) window_->hide();
}

bool ProjectRoom::UnloadProject() { return window_ == nullptr || window_->Unload(); }

void ProjectRoom::UpdateTreeView() {
    if (window_ != nullptr) window_->UpdateTreeView();
}

void ProjectRoom::ResetProjectFont() {
    if (window_ != nullptr) window_->ResetFont();
}

bool ProjectRoom::ShowNewDesign() {
    platform::qt::Modal dialog(new frmNewDesign(app_, &frame_->Window()));
    dialog.Run();
    return dialog.IsThere() && !dialog->Cancelled;
}

}  // namespace project
