#pragma once

#include <string>

#include "platform/Host.h"
#include "session/Session.h"
#include "toolchain/ErrorCodes.h"

// The program's start, step by step, without its windows.
namespace shell {

inline constexpr const char* applicationTitle = "Korvane";
inline constexpr const char* settingsKey = "Software\\Brennick Labs\\Korvane\\5.0\\Settings";

// Installation folders by arithmetic on the program's path. A program folder whose name is not as long as the
// executable's base name yields a wrong root: kept, there is no separator search.
void ComputeInstallRoot(session::Session& state, const std::string& programPath);
void ComputeFolders(session::Session& state, const std::string& programPath);

// Makes the settings key and writes LastPathway, on every start.
void PrepareRegistry(session::Session& state, platform::Host& host);

// Tells of a missing Shared folder, empties the values of missing optional ones.
void TestFolders(session::Session& state, platform::Host& host);

// True if target is (now) a copy of source: same length and modification time, or copied without error.
bool CopyIfChanged(platform::FileSystem& files, const std::string& source, const std::string& target);

// Shared\Fullset.dl to Shared\tesk.dl. False after the box of a failure: the program has to end.
bool InstallDeviceLibrary(session::Session& state, platform::Host& host);

// Tables and default global state.
void FillTables(session::Session& state, platform::Host& host);

// The Windows directory: at most 144 bytes, cut at the first NUL.
std::string GetWindowsDir(platform::System& system);

// The windows of the start, in the order of use.
class StartUpWindows {
  public:
    virtual ~StartUpWindows() = default;
    virtual void ShowSplash() = 0;  // without waiting, painted at once
    virtual void LoadMain() = 0;    // creates frmMain and runs its window load
    virtual void UnloadSplash() = 0;
    virtual void ShowMain() = 0;
};

// The whole start. False if the program has to end at once (a second instance, no device library).
bool Main(session::Session& state, platform::Host& host, toolchain::ErrorCodes& errors,
          StartUpWindows& windows);

}  // namespace shell
