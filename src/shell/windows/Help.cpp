#include "shell/windows/Help.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "base/RunTimeError.h"
#include "base/modLib.h"
#include "platform/qt/Guard.h"
#include "shell/HelpTopics.h"
#include "shell/StartUp.h"
#include "shell/frmHelp.h"

namespace shell {

Help::Help(session::App& app) : app_(app) { qApp->installEventFilter(this); }
Help::~Help() = default;

bool Help::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::KeyPress || widget == nullptr) return false;
    if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) return false;
    const char* topic = HelpTopicOf(widget->window()->objectName().toStdString());
    if (topic == nullptr) return false;
    platform::qt::Guarded([&] { ShowHelpTopic(topic); });
    return true;
}

void Help::AddCommands() {
    auto& commands = app_.Hall.MainCommands;
    commands.Add({{"mnuHelpContents", [this](int) { ShowApplicationHelp(Command::Contents); }},
                  {"mnuHelpSearch", [this](int) { ShowApplicationHelp(Command::PartialKey); }}});
    const auto files = HelpFiles(app_.State);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string entry = files[i].Entry;
        if (entry.empty()) continue;
        const auto show = [this, i](int) { WinHelp(HelpFiles(app_.State)[i].Path, Command::Contents); };
        commands.Add({{entry, show}});
    }
}

void Help::ShowApplicationHelp(Command command) {
    if (!app_.State.HelpFile.empty()) return WinHelp(app_.State.HelpFile, command);
    app_.Host.Boxes.MessageBox(
        {.Text = "Unable to display Help Contents. There is no Help associated with this project.",
         .Title = applicationTitle,
         .Picture = platform::Icon::Information});
}

void Help::ShowHelpTopic(const std::string& topic) { WinHelp(app_.State.HelpFile, Command::Key, topic); }

void Help::WinHelp(const std::string& file, Command command, const std::string& key) {
    try {
        Open(file, command, key);
    } catch (const base::RunTimeError& error) {
        app_.Host.Boxes.Say(error.Description());
    }
}

void Help::Open(const std::string& file, Command command, const std::string& key) {
    frmHelp& viewer = Viewer();
    const HelpLibrary& library = viewer.Library();
    const auto contents = library.Contents(base::BareName(file));
    if (!contents) throw base::RunTimeError(base::errFileNotFound, "The help file " + file + " is missing.");
    const auto page = command == Command::Key ? library.Keyword(key) : contents;
    if (page) viewer.ShowPage(*page);
    if (!page || command == Command::PartialKey) viewer.ShowSearch(key);
    viewer.BringUp();
}

frmHelp& Help::Viewer() {
    if (viewer_ == nullptr || viewer_->Library().Books.empty()) {
        HelpLibrary library;
        for (const HelpFile& file : HelpFiles(app_.State)) {
            if (!app_.Host.Files.FileExists(file.Path)) continue;
            library.Books.push_back(
                ReadHelpBook(base::BareName(file.Path), app_.Host.Files.ReadFile(file.Path)));
        }
        viewer_ = std::make_unique<frmHelp>(std::move(library));
    }
    return *viewer_;
}

}  // namespace shell
