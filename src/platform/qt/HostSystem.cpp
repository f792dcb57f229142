#include "platform/qt/HostSystem.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMainWindow>
#include <algorithm>

namespace platform::qt {

namespace {

constexpr std::size_t MaxWindowsDirectory = 144;  // bytes

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
    : files_(files), program_(std::move(program)), instance_(std::move(instanceFolder), RaiseForOther) {
    if (program_.empty()) program_ = QCoreApplication::applicationFilePath().toStdString();
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
