#include "project/frmProject.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QShortcut>
#include <QTreeWidget>

#include "base/ScopeExit.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

// The pictures lie in a static library, whose resources are registered by hand.
static void InitImages() { Q_INIT_RESOURCE(images); }

namespace project {

using platform::qt::On;

frmProject::frmProject(const ProjectDesk& desk) : desk_(desk), TreeView(new QTreeWidget(this)) {
    InitImages();
    imlTree = {QIcon(":/imlTree/1.svg"), QIcon(":/imlTree/2.svg")};
    setObjectName("frmProject");
    setAttribute(Qt::WA_DeleteOnClose);
    TreeView->setObjectName("TreeView");
    TreeView->setAccessibleName("Project files");
    TreeView->setHeaderHidden(true);
    TreeView->setUniformRowHeights(true);
    TreeView->setExpandsOnDoubleClick(false);  // that opens the file
    TreeView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    // A long name scrolls.
    TreeView->header()->setStretchLastSection(false);
    TreeView->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setWidget(TreeView);
    setFocusProxy(TreeView);
    Connect();
    ResetFont();
    UpdateTreeView();
}

void frmProject::Connect() {
    On(TreeView, &QTreeWidget::currentItemChanged, this,
       [this](const QTreeWidgetItem* item) { TreeView_NodeClick(item); });
    On(TreeView, &QTreeWidget::itemDoubleClicked, this, [this] { TreeView_DblClick(); });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(key, TreeView);
        shortcut->setContext(Qt::WidgetShortcut);
        On(shortcut, &QShortcut::activated, this, [this] { TreeView_DblClick(); });
    }
}

void frmProject::ResetFont() {
    const session::FontRecord& wanted = desk_.App.State.ProjectFont;
    QFont font = TreeView->font();
    if (!wanted.Name.empty()) font.setFamily(QString::fromStdString(wanted.Name));
    font.setBold(wanted.Bold);
    font.setItalic(wanted.Italic);
    TreeView->setFont(font);
}

void frmProject::UpdateTreeView() {
    const QSignalBlocker noClicks(TreeView);
    TreeView->clear();
    tree_ = ReadProjectTree(desk_.App.Host.Files, desk_.App.State.sProject);
    setWindowTitle(platform::qt::Shown(ProjectCaption(desk_.App.State.sProject)));
    QTreeWidgetItem* last = AddNodes();
    TreeView->expandAll();
    TreeView->scrollToItem(last);
}

// The last of them. The node of ProjectFile stays the current one.
QTreeWidgetItem* frmProject::AddNodes() {
    std::vector<QTreeWidgetItem*> items;
    QTreeWidgetItem* current = nullptr;
    for (std::size_t i = 0; i < tree_.size(); ++i) {
        const TreeNode& node = tree_[i];
        auto* item = items.emplace_back(new QTreeWidgetItem({platform::qt::Shown(node.Text)}));
        item->setIcon(0, imlTree.at(static_cast<std::size_t>(node.Image - 1)));
        item->setData(0, Qt::UserRole, QVariant::fromValue(i));
        if (i > 0) items[node.Parent]->addChild(item);
        if (!ProjectFile.empty() && ProjectFileOf(tree_, i) == ProjectFile) current = item;
    }
    // Only now: the view hears of all of them at once.
    TreeView->addTopLevelItem(items.front());
    if (current != nullptr) TreeView->setCurrentItem(current);
    return items.back();
}

void frmProject::TreeView_NodeClick(const QTreeWidgetItem* item) {
    if (item != nullptr) ProjectFile = ProjectFileOf(tree_, item->data(0, Qt::UserRole).value<std::size_t>());
}

void frmProject::TreeView_DblClick() {
    const std::string file = ProjectFile;  // what it opens may bring the tree up to date
    OpenProjectFile(desk_, file);
}

bool frmProject::Unload() {
    if (!isUnloaded_) close();
    return isUnloaded_;
}

void frmProject::closeEvent(QCloseEvent* event) {
    event->ignore();
    platform::qt::Guarded([this] {
        // A document may be saved under another name as it closes, which closes the project too.
        if (isUnloaded_ || std::exchange(isClosing_, true)) return;
        const base::ScopeExit done([this] { isClosing_ = false; });
        if (!QueryUnloadProject(desk_.App, tree_.front().Text)) return;
        isUnloaded_ = true;
        emit Unloaded();
    });
    if (isUnloaded_) QMdiSubWindow::closeEvent(event);
}

}  // namespace project
