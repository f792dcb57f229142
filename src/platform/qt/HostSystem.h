#pragma once

#include <QTimer>
#include <deque>

#include "platform/FileSystem.h"
#include "platform/System.h"
#include "platform/qt/HostInstance.h"

namespace platform::qt {

// The desktop around a running QApplication.
class HostSystem : public System {
  public:
    // The program is the running one, by the name that it was started under, and the folder for the one
    // instance the user's run-time folder, unless a host path is given.
    explicit HostSystem(const FileSystem& files, std::string program = {}, std::string instanceFolder = {});

    std::string ProgramPath() const override;
    std::string WindowsDirectory()
        const override;  // `Windows` beside the program's folder; empty if too long
    int PlatformId() const override { return 2; }

    bool HasEarlierInstance() override { return !instance_.Take(); }
    bool AppActivate(const std::string& title) override;

    std::vector<std::string> ScreenFonts() const override;
    void SetHourglass(bool on) override;

  private:
    bool Serve(const std::string& request);
    void OpenNext();

    const FileSystem& files_;
    std::string program_;
    std::deque<std::string> handedOver_;  // host paths
    QTimer turn_;
    HostInstance instance_;
};

}  // namespace platform::qt
