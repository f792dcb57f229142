#pragma once

#include <cstdint>
#include <string>

#include "session/Document.h"

namespace session {

// The hall: every call from one room into another, by the name of the command or operation. Implemented by
// the shell, which knows all rooms. No room includes another.
class Commands {
  public:
    virtual ~Commands() = default;

    // Main window (shell).
    virtual void SetTBMenu(Document& document) = 0;
    virtual void ArrangeWindows() = 0;
    virtual void SaveSettings() = 0;
    virtual void UpdateMruMenus() = 0;  // RecentFiles into the menus of frmMain and of every document
    virtual void SetPanel(int panel, const std::string& text) = 0;  // 1 to 6, refreshed at once
    virtual std::string Panel(int panel) const = 0;
    virtual Document* ActiveDocument() = 0;  // null if the active child is none
    virtual void ToggleToolbar() = 0;        // shows it if it is hidden, and the other way round
    virtual void ToggleStatusBar() = 0;
    // A command of frmMain by its name, such as "mnuFileOpen". An unknown name is error 5.
    virtual void MainCommand(const std::string& name) = 0;
    virtual bool HasMainCommand(const std::string& name) const = 0;
    virtual void ExitProgram() = 0;
    virtual void ShowHelpTopic(const std::string& topic) = 0;
    virtual void RunUtility(const std::string& caption) = 0;  // of the Utilities menu
    virtual void LaunchTool(const std::string& tool, const std::string& file) = 0;

    // Editor.
    virtual void OpenDocument() = 0;
    virtual void OpenDocument(const std::string& path) = 0;
    virtual void HighlightSyntax(Document& document) = 0;
    virtual void HighlightWord(Document& document) = 0;

    // Tool chain.
    virtual void RunDepCompile(Document& document) = 0;
    virtual void RunIndepCompile(Document& document) = 0;
    virtual void RunDepSimulate(Document& document) = 0;
    virtual void RunIndepSimulate(Document& document) = 0;
    virtual void RunVhdlCompile() = 0;
    virtual void RunVhdlAnalysis() = 0;
    virtual std::int16_t RunAndWait(const std::string& commandLine) = 0;  // 0, or the error number
    virtual void BringMessagesToFront() = 0;

    // Project.
    virtual void CloseProject() = 0;  // mnuCloseProject_Click of frmMain
    virtual void UpdateTreeView() = 0;
};

}  // namespace session
