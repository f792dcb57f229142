#pragma once

#include <QIcon>
#include <QMdiSubWindow>
#include <array>
#include <string>

#include "platform/qt/MdiChild.h"
#include "project/Project.h"
#include "project/ProjectTree.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace project {

// The child window with the tree of the project's files. Closing it closes the documents of the project, and
// it stays when one of them does.
class frmProject : public QMdiSubWindow, public platform::qt::MdiChild {
    Q_OBJECT

  public:
    explicit frmProject(const ProjectDesk& desk);

    void UpdateTreeView();  // reads the folder of sProject
    void ResetFont();       // name, bold and italic of ProjectFont; the size stays
    bool Unload();          // false if a document stayed open

    // platform::qt::MdiChild
    QMdiSubWindow& Frame() override { return *this; }
    std::string Title() const override { return windowTitle().toStdString(); }
    std::optional<QRect> PlaceIn(const platform::qt::ChildPlaces& places) const override {
        return places.Project;
    }
    bool CanClose() const override { return true; }

  signals:
    void Unloaded();  // the window goes at the next turn of the event loop

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void Connect();
    QTreeWidgetItem* AddNodes();
    void TreeView_NodeClick(const QTreeWidgetItem* item);
    void TreeView_DblClick();

    ProjectDesk desk_;
    ProjectTree tree_;
    std::string ProjectFile;  // of the node last clicked; empty for the root
    std::array<QIcon, 2> imlTree;
    QTreeWidget* TreeView;
    bool isClosing_ = false;
    bool isUnloaded_ = false;
};

}  // namespace project
