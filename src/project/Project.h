#pragma once

#include <cstddef>
#include <string>

#include "platform/Host.h"
#include "session/Session.h"

// The life of a project: a design's base path in `sProject`, its window, and the way out to its files.
namespace project {

// What a project asks of the windows and tools around it.
class ProjectDoors {
  public:
    virtual ~ProjectDoors() = default;

    virtual bool IsOpen() const = 0;    // mnuCloseProject of frmMain is enabled
    virtual void SetOpen(bool on) = 0;  // enables or disables it
    virtual void ShowProject() = 0;     // frmProject, loaded if need be
    virtual void HideProject() = 0;
    virtual bool UnloadProject() = 0;  // false: refused
    virtual bool ShowNewDesign() = 0;  // frmNewDesign, modal; false: cancelled
    virtual session::Document* ActiveDocument() = 0;
    virtual void OpenDocument(const std::string& path) = 0;
    // A command over the link to a running tool. Error 282 if nobody answers.
    virtual void Execute(const std::string& topic, const std::string& command) = 0;
};

struct ProjectDesk {
    session::Session& State;
    platform::Host& Host;
    ProjectDoors& Doors;
};

// frmProject has been loaded: the menus learn of it.
void ProjectLoaded(const ProjectDesk& desk);

// Before frmProject goes: closes each document whose caption holds the bare name of the project that the
// window shows. False as soon as one stays open: then the window must stay too.
bool QueryUnloadProject(const ProjectDesk& desk, const std::string& shownProject);

// A double click on the node of this file (empty: the root): opens it in a companion tool or as a document.
void OpenProjectFile(const ProjectDesk& desk, const std::string& projectFile);

// Commands of frmMain, and mnuProject of a document.
void mnuNewProject_Click(const ProjectDesk& desk);
void mnuProjectOpen_Click(const ProjectDesk& desk);
void mnuProject_Click(const ProjectDesk& desk, session::Document& document);

}  // namespace project
