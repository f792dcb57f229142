#include "platform/qt/HostFileDialog.h"

#include <QAbstractItemView>
#include <QFileIconProvider>
#include <QLineEdit>
#include <QListView>

#include "base/Text.h"
#include "platform/PathMap.h"
#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr auto EveryFile = "*";
constexpr auto Wildcards = "*?";

std::string FolderOf(const std::string& hostPath) { return hostPath.substr(0, hostPath.rfind('/') + 1); }

// The part before the next `mark`, cut off the head of `text` with the mark.
std::string TakePart(std::string_view& text, char mark) {
    const auto end = std::min(text.find(mark), text.size());
    std::string part(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

std::string Patterns(std::string_view list) {
    std::string patterns;
    while (!list.empty()) {
        const std::string pattern = base::Trim(TakePart(list, ';'));
        if (!pattern.empty())
            patterns += (patterns.empty() ? "" : " ") + (pattern == "*.*" ? EveryFile : pattern);
    }
    return patterns.empty() ? EveryFile : patterns;
}

// The common one reads into every file that it shows, which takes long in a large folder and for ever where
// a file never ends.
class Icons : public QFileIconProvider {
  public:
    QIcon icon(const QFileInfo& info) const override {
        return QFileIconProvider::icon(info.isDir() ? Folder : File);
    }
    using QFileIconProvider::icon;
    QString type(const QFileInfo& info) const override {
        if (info.isDir()) return "Folder";
        return info.suffix().isEmpty() ? "File" : info.suffix().toUpper() + " File";
    }
};

}  // namespace

QStringList NameFilters(const std::string& filter) {
    QStringList filters;
    std::string_view rest = filter;
    while (!rest.empty()) {
        const std::string caption = TakePart(rest, '|');
        const std::string patterns = Patterns(TakePart(rest, '|'));
        filters << QString::fromStdString(caption + " (" + patterns + ")");
    }
    return filters;
}

HostFileDialog::HostFileDialog(QWidget* parent, AcceptMode mode, const FileDialogRequest& request,
                               const FileSystem& files, Dialogs& boxes)
    : QFileDialog(parent),
      files_(files),
      boxes_(boxes),
      flags_(request.Flags),
      extension_(request.DefaultExtension.starts_with('.') ? request.DefaultExtension.substr(1)
                                                           : request.DefaultExtension) {
    setObjectName("FileDialog");
    setOptions(DontUseNativeDialog | DontConfirmOverwrite | HideNameFilterDetails |
               DontUseCustomDirectoryIcons);
    static Icons icons;  // the dialog's thread may ask it to the last
    setIconProvider(&icons);
    setAcceptMode(mode);
    setFileMode(AnyFile);
    const char* title = mode == AcceptOpen ? "Open" : "Save As";
    setWindowTitle(request.Title.empty() ? QString(title) : QString::fromStdString(request.Title));
    const QStringList filters = NameFilters(request.Filter);
    if (!filters.isEmpty()) setNameFilters(filters);
    Place(request);
    KeepWhatIsTyped();
}

// The toolkit selects in its list what is being typed, and writes the names of the selection over a typed
// path when the line is without the keyboard for a moment, as while the completions open. Here only what is
// selected in a list by hand goes into the line.
void HostFileDialog::KeepWhatIsTyped() {
    auto* selection = findChild<QListView*>("listView")->selectionModel();
    disconnect(selection, SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
               SLOT(_q_selectionChanged()));
    On(selection, &QItemSelectionModel::selectionChanged, this, [this] {
        const bool inList = qobject_cast<QAbstractItemView*>(focusWidget()) != nullptr;
        QMetaObject::invokeMethod(this, inList ? "_q_selectionChanged" : "_q_updateOkButton");
    });
}

void HostFileDialog::Place(const FileDialogRequest& request) {
    std::string folder = request.InitialFolder.empty() ? files_.CurrentDirectory() : request.InitialFolder;
    std::string name = request.FileName;
    if (const auto slash = name.find_last_of("\\/"); slash != std::string::npos) {
        if (files_.DirectoryExists(name.substr(0, slash + 1))) folder = name.substr(0, slash + 1);
        name = name.substr(slash + 1);
    }
    if (!files_.DirectoryExists(folder)) folder = files_.CurrentDirectory();
    setDirectory(QString::fromStdString(files_.ToHostPath(folder)));
    if (!name.empty()) selectFile(QString::fromStdString(name));
}

void HostFileDialog::accept() {
    Guarded([this] { TakeChoice(); });
}

void HostFileDialog::TakeChoice() {
    auto* edit = findChild<QLineEdit*>("fileNameEdit");
    const QString typed = edit == nullptr ? "" : edit->text();
    const QStringList selected = selectedFiles();  // a folder in the list, if nothing is typed
    if (typed.isEmpty() && selected.isEmpty()) return;
    const std::string whole = typed.isEmpty() ? selected.first().toStdString() : WholePath(typed);
    if (files_.DirectoryExists(files_.FromHostPath(whole))) {
        setDirectory(QString::fromStdString(whole));
        if (edit != nullptr) edit->clear();
        return;
    }
    if (!MayTake(whole)) return;
    chosen_ = whole;
    // The direct base would check by rules of its own. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QDialog::accept();
}

// The host path of what was typed, with the default extension if it has none and is no file without one.
std::string HostFileDialog::WholePath(const QString& typed) const {
    std::string path = typed.toStdString();
    if (path == "~" || path.starts_with("~/")) path.replace(0, 1, QDir::homePath().toStdString());
    path = PathMap::IsDrivePath(path)
               ? files_.ToHostPath(path)
               : QDir::cleanPath(directory().absoluteFilePath(QString::fromStdString(path))).toStdString();
    const bool bare = path.find('.', FolderOf(path).size()) == std::string::npos;
    const std::string logic = files_.FromHostPath(path);
    if (!bare || extension_.empty() || files_.FileExists(logic) || files_.DirectoryExists(logic)) return path;
    return path + "." + extension_;
}

bool HostFileDialog::MayTake(const std::string& hostPath) {
    const std::string logic = files_.FromHostPath(hostPath);
    const bool exists = files_.FileExists(logic);
    if (!exists && hostPath.find_first_of(Wildcards, FolderOf(hostPath).size()) != std::string::npos)
        return Refuse(hostPath, "The file name is not valid.");
    const bool pathKnown = files_.DirectoryExists(files_.FromHostPath(FolderOf(hostPath)));
    if (!pathKnown && (flags_ & (PathMustExist | FileMustExist)) != 0)
        return Refuse(hostPath, "Path does not exist.\nPlease verify the correct path was given.");
    if (!exists && (flags_ & FileMustExist) != 0)
        return Refuse(hostPath, "File not found.\nPlease verify the correct file name was given.");
    if (!exists || acceptMode() == AcceptOpen || (flags_ & OverwritePrompt) == 0) return true;
    return boxes_.MessageBox({.Text = hostPath + " already exists.\nDo you want to replace it?",
                              .Title = windowTitle().toStdString(),
                              .Choice = Buttons::YesNo,
                              .Picture = Icon::Warning}) == Answer::Yes;
}

bool HostFileDialog::Refuse(const std::string& hostPath, const char* reason) {
    boxes_.MessageBox(
        {.Text = hostPath + "\n" + reason, .Title = windowTitle().toStdString(), .Picture = Icon::Warning});
    return false;
}

}  // namespace platform::qt
