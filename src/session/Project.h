#pragma once

namespace session {

// The project window, as other rooms see it.
class Project {
  public:
    virtual ~Project() = default;

    virtual void ShowProject() = 0;   // frmProject, loaded if need be
    virtual bool CloseProject() = 0;  // mnuCloseProject_Click of frmMain; false if a document refused
    virtual void UpdateTreeView() = 0;
    virtual void ResetProjectFont() = 0;  // ResetFont of frmProject, if it is loaded
};

}  // namespace session
