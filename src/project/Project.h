#pragma once

#include <string>

#include "session/App.h"

// The life of a project: a design's base path in `sProject`, its window, and the way out to its files.
namespace project {

// The windows of the room.
class ProjectWindows {
  public:
    virtual ~ProjectWindows() = default;

    virtual bool IsOpen() const = 0;  // frmProject is loaded
    virtual void HideProject() = 0;
    virtual bool UnloadProject() = 0;  // false: refused
    virtual bool ShowNewDesign() = 0;  // frmNewDesign, modal; false: cancelled
};

struct ProjectDesk {
    session::App& App;
    ProjectWindows& Windows;
};

// frmProject has been loaded: the documents learn of it.
void ProjectLoaded(session::App& app);

// Before frmProject goes: closes each document whose caption holds the bare name of the project that the
// window shows. False as soon as one stays open: then the window must stay too.
bool QueryUnloadProject(session::App& app, const std::string& shownProject);

// A double click on the node of this file (empty: the root): opens it in a companion tool or as a document.
void OpenProjectFile(const ProjectDesk& desk, const std::string& projectFile);

// Commands of frmMain, and mnuProject of a document.
void mnuNewProject_Click(const ProjectDesk& desk);
void mnuProjectOpen_Click(const ProjectDesk& desk);
void mnuProject_Click(const ProjectDesk& desk, session::Document& document);

}  // namespace project
