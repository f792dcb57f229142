#pragma once

#include <functional>
#include <string>
#include <vector>

namespace platform {

// What the program asks of the desktop around it.
class System {
  public:
    virtual ~System() = default;

    virtual std::string ProgramPath() const = 0;  // full logic path of the running program, as on disk
    // GetWindowsDirectoryA: at most 144 bytes, no final backslash.
    virtual std::string WindowsDirectory() const = 0;
    virtual int PlatformId() const = 0;  // 2: the NT family

    // True if another instance of the program runs for this user; otherwise this one takes the place.
    virtual bool HasEarlierInstance() = 0;
    virtual bool AppActivate(const std::string& title) = 0;  // false: no such window

    // Opens a file (logic path) that was handed over from outside. Comes when no dialog is open and no tool
    // runs; files wait until this is set.
    std::function<void(const std::string& path)> OnOpenFile;

    virtual std::vector<std::string> ScreenFonts() const = 0;
    virtual void SetHourglass(bool on) = 0;  // the global pointer; not nested
};

// The hourglass for the length of an operation.
class HourglassScope {
  public:
    explicit HourglassScope(System& system) : system_(system) { system_.SetHourglass(true); }
    ~HourglassScope() { system_.SetHourglass(false); }
    HourglassScope(const HourglassScope&) = delete;
    HourglassScope& operator=(const HourglassScope&) = delete;

  private:
    System& system_;
};

}  // namespace platform
