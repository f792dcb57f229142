#include "editor/frmSelectDirectory.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QListWidget>

#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace editor {
namespace {

using platform::qt::Named;
using platform::qt::On;

constexpr const char* root = "C:\\";  // all that a host has lies below it

std::string Below(const std::string& folder, const std::string& name) {
    return folder + (folder.ends_with('\\') ? "" : "\\") + name;
}

}  // namespace

frmSelectDirectory::frmSelectDirectory(const platform::FileSystem& files, const std::string& drive,
                                       QWidget* owner)
    : Form("frmSelectDirectory", "Select Directory", owner),
      files_(files),
      DriveList(Named("DriveList", new QComboBox)),
      DirList(Named("DirList", new QListWidget)) {
    DriveList->addItem("C:");
    DriveList->setAccessibleName("Drive");
    DirList->setAccessibleName("Folders");
    DirList->setMinimumSize(platform::qt::InCharacters(50, 14));
    DirList->installEventFilter(this);
    LayOut({DirList, DriveList,
            Buttons({{"OK", "OK", [this] { accept(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}})},
           Size::OfUser);
    DriveList->setCurrentText(platform::qt::Shown(drive));
    On(DriveList, &QComboBox::activated, this, [this] { ShowFolder(root); });
    On(DirList, &QListWidget::itemDoubleClicked, this, [this](const QListWidgetItem* item) { Enter(item); });
    ShowFolder(files_.CurrentDirectory());
}

bool frmSelectDirectory::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = watched == DirList && event->type() == QEvent::KeyPress;
    const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return Form::eventFilter(watched, event);
    platform::qt::Guarded([this] { Enter(DirList->currentItem()); });
    return true;
}

void frmSelectDirectory::Enter(const QListWidgetItem* folder) {
    if (folder != nullptr) ShowFolder(folder->data(Qt::UserRole).toByteArray().toStdString());
}

void frmSelectDirectory::ShowFolder(const std::string& path) {
    SelectedPath = path;
    DirList->clear();
    int depth = 0;
    AddFolder(root, root, depth);
    for (std::size_t from = std::string_view(root).size(); from < path.size();) {
        const std::size_t end = std::min(path.find('\\', from), path.size());
        AddFolder(path.substr(from, end - from), path.substr(0, end), ++depth);
        from = end + 1;
    }
    DirList->setCurrentRow(depth++);
    for (const std::string& name : files_.ListFolders(path)) AddFolder(name, Below(path, name), depth);
}

// The path as bytes: a name need not be UTF-8.
void frmSelectDirectory::AddFolder(const std::string& name, const std::string& path, int depth) {
    constexpr int step = 3;  // blanks
    const QString indent(static_cast<qsizetype>(step) * depth, ' ');
    auto* line = new QListWidgetItem(indent + platform::qt::LineOf(name), DirList);
    line->setData(Qt::UserRole, QByteArray::fromStdString(path));
}

}  // namespace editor
