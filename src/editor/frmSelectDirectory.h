#pragma once

#include <string>

#include "platform/FileSystem.h"
#include "platform/qt/Form.h"

class QComboBox;
class QListWidget;
class QListWidgetItem;

namespace editor {

// "Select Directory": walks through the folders of a drive. A double click, or Enter, goes into a folder of
// the list, which shows the way to the current one and what lies in it.
class frmSelectDirectory : public platform::qt::Form {
  public:
    // `drive`: "C:"; the walk begins at the current folder.
    frmSelectDirectory(const platform::FileSystem& files, const std::string& drive, QWidget* owner = nullptr);

    std::string SelectedPath;  // of the current folder, no final backslash but for C:\.

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Enter(const QListWidgetItem* folder);
    void ShowFolder(const std::string& path);
    void AddFolder(const std::string& name, const std::string& path, int depth);

    const platform::FileSystem& files_;
    QComboBox* DriveList;
    QListWidget* DirList;
};

}  // namespace editor
