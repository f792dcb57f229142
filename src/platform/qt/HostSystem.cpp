#include "platform/qt/HostSystem.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMainWindow>
#include <algorithm>
#include <filesystem>

#include "platform/qt/Guard.h"
#include "platform/qt/ToolHostShield.h"

namespace platform::qt {

namespace {

constexpr std::size_t MaxWindowsDirectory = 144;  // bytes
constexpr int TurnTime = 50;                      // ms: a file that is handed over waits for its turn

// A link to the program counts as its place if the folders are named alike: it stands in an installation of
// the user's own. Any other link is a short way to the program.
std::string RunningProgram() {
    namespace fs = std::filesystem;
    const fs::path program = QCoreApplication::applicationFilePath().toStdString();
    const fs::path started = QCoreApplication::arguments().value(0).toStdString();
    std::error_code error;
    const bool isInOwnTree = started.is_absolute() && started.filename() == program.filename() &&
                             started.parent_path().filename() == program.parent_path().filename() &&
                             fs::equivalent(started, program, error);
    return (isInOwnTree ? started : program).string();
}

// The shown one, or null.
QWidget* FindMainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr) return window;
    return nullptr;
}

// The shown window of this program with the title, else the first whose title begins with it.
QWidget* FindWindow(const QString& title) {
    QWidget* found = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || title.isEmpty()) continue;
        if (window->windowTitle() == title) return window;
        if (found == nullptr && window->windowTitle().startsWith(title)) found = window;
    }
    return found;
}

bool BringForward(QWidget* window) {
    if (window == nullptr) return false;
    if (window->isMinimized()) window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    // A modal window takes the input: it has to be in front of the one asked for.
    QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* each : {window, modal}) {
        if (each == nullptr) continue;
        each->raise();
        each->activateWindow();
    }
    return true;
}

bool RaiseForOther(const std::string& title) {
    QWidget* window = FindWindow(QString::fromStdString(title));
    return BringForward(window != nullptr ? window : FindMainWindow());
}

}  // namespace

HostSystem::HostSystem(const FileSystem& files, std::string program, std::string instanceFolder)
    : files_(files),
      program_(std::move(program)),
      instance_(std::move(instanceFolder), [this](const std::string& request) { return Serve(request); }) {
    if (program_.empty()) program_ = RunningProgram();
    turn_.setInterval(TurnTime);
    On(&turn_, &QTimer::timeout, &turn_, [this] { OpenNext(); });
}

bool HostSystem::Serve(const std::string& request) {
    if (!request.starts_with('/')) return RaiseForOther(request);
    handedOver_.push_back(request);
    turn_.start();
    BringForward(FindMainWindow());
    return true;
}

void HostSystem::OpenNext() {
    const bool isBusy = QApplication::activeModalWidget() != nullptr ||
                        QApplication::activePopupWidget() != nullptr || ToolHostShield::IsUp();
    if (isBusy || !OnOpenFile) return;
    const std::string path = files_.FromHostPath(handedOver_.front());
    handedOver_.pop_front();
    if (handedOver_.empty()) turn_.stop();
    OnOpenFile(path);
}

std::string HostSystem::ProgramPath() const { return files_.FromHostPath(program_); }

std::string HostSystem::WindowsDirectory() const {
    std::string folder = program_;
    for (int i = 0; i < 2; ++i) folder.resize(std::min(folder.size(), folder.rfind('/')));
    folder = files_.FromHostPath(folder + "/Windows");
    return folder.size() > MaxWindowsDirectory ? "" : folder;
}

bool HostSystem::AppActivate(const std::string& title) {
    return BringForward(FindWindow(QString::fromStdString(title))) || instance_.AskToRaise(title);
}

std::vector<std::string> HostSystem::ScreenFonts() const {
    std::vector<std::string> names;
    for (const QString& family : QFontDatabase::families()) names.push_back(family.toStdString());
    // The font system draws these two with fonts of the same measures wherever they are missing.
    for (const char* name : {"Arial", "Courier New"}) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.emplace_back(name);
    }
    return names;
}

void HostSystem::SetHourglass(bool on) {
    const bool isOn = QGuiApplication::overrideCursor() != nullptr;
    if (on && !isOn) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    if (!on && isOn) QGuiApplication::restoreOverrideCursor();
}

}  // namespace platform::qt
