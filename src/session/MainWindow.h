#pragma once

#include <string>

namespace session {

class Document;

// frmMain, as other rooms see it.
class MainWindow {
  public:
    virtual ~MainWindow() = default;

    virtual void SetPanel(int panel, const std::string& text) = 0;  // 1 to 6, refreshed at once
    virtual std::string Panel(int panel) const = 0;
    virtual Document* ActiveDocument() = 0;  // null if the active child is none
    virtual void UpdateMruMenus() = 0;       // RecentFiles into the menus of frmMain and of every document
};

}  // namespace session
