#include "shell/StartUp.h"

#include "base/RunTimeError.h"
#include "base/modLib.h"
#include "editor/HighlightTables.h"
#include "toolchain/Compiler.h"

namespace shell {
namespace {

std::string ProgramFolder(const std::string& programPath) {
    const std::string folder = base::DirectoryPart(programPath);
    return folder.ends_with('\\') ? folder.substr(0, folder.size() - 1) : folder;
}

std::string WithoutFinalBackslash(const std::string& folder) {
    return folder.ends_with('\\') ? folder.substr(0, folder.size() - 1) : folder;
}

void FillStdUtils(session::Session& state, platform::Host& host) {
    const std::string windows = GetWindowsDir(host.Desktop);
    const bool isNt = host.Desktop.PlatformId() == 2;
    const std::string& root = state.InstallRoot;
    const struct {
        std::string Program;
        const char* Name;
    } rows[] = {
        {windows + "\\calc.exe", "Calculator"},
        {windows + "\\explorer.exe", "Explorer"},
        {windows + (isNt ? "\\system32\\command.com" : "\\command.com"), "DOS"},
        {root + "\\Stavrik\\Stavrik.exe", "Stavrik"},
        {root + "\\Schematic\\Schematic.exe", "Schematic"},
        {root + "\\Wavrik\\Wavrik.exe", "Wavrik"},
        {root + "\\Programmer\\", "Programmer"},  // a folder on purpose: nothing more specific is known
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        state.StdUtils[i] = {};
        state.StdUtils[i].Program = rows[i].Program;
        state.StdUtils[i].Name = rows[i].Name;
    }
}

}  // namespace

void ComputeInstallRoot(session::Session& state, const std::string& programPath) {
    const std::string folder = ProgramFolder(programPath);
    const std::string executable = programPath.substr(programPath.rfind('\\') + 1);
    const std::size_t tail = base::StripExtension(executable).size() + 1;
    state.InstallRoot = folder.substr(0, folder.size() - std::min(tail, folder.size()));
    state.SharedDir = state.InstallRoot + "\\Shared\\";
    state.ExamplesDir = state.InstallRoot + "\\Examples\\";
}

void ComputeFolders(session::Session& state, const std::string& programPath) {
    const std::string folder = ProgramFolder(programPath);
    state.ZrxDir = folder + "\\ZrxPart\\";
    state.UtilityDir = folder + "\\Utility\\";
    state.NettrelDir = state.InstallRoot + "\\Nettrel\\";
    state.OvrelHelpDir = folder + "\\OvrelHlp\\";
    state.ProgramDir = folder + "\\";
}

void PrepareRegistry(session::Session& state, platform::Host& host) {
    const auto key = host.Settings.Create(settingsKey, "Korvane");
    if (!key) {
        host.Boxes.Say("Unable to create registration database entries for Korvane!");
        return;
    }
    // Written whatever the last run left: every run opens its first file dialog in the examples.
    host.Settings.SetText(*key, "LastPathway", state.ExamplesDir);
    host.Settings.Flush(*key);
    host.Settings.Close(*key);
}

void TestFolders(session::Session& state, platform::Host& host) {
    const auto exists = [&](const std::string& folder) {
        return host.Files.DirectoryExists(WithoutFinalBackslash(folder));
    };
    if (!exists(state.SharedDir)) {
        host.Boxes.Say("The Korvane directory structure has been corrupted.  Please reinstall Korvane");
    }
    if (!exists(state.ZrxDir)) state.ZrxDir.clear();
    if (!exists(state.UtilityDir)) state.UtilityDir.clear();
}

bool CopyIfChanged(platform::FileSystem& files, const std::string& source, const std::string& target) {
    const auto from = files.Stamp(source);
    if (from && from == files.Stamp(target)) return true;
    try {
        files.CopyFile(source, target);
        return true;
    } catch (const base::RunTimeError&) {
        return false;
    }
}

bool InstallDeviceLibrary(session::Session& state, platform::Host& host) {
    if (CopyIfChanged(host.Files, state.SharedDir + "Fullset.dl", state.SharedDir + "tesk.dl")) return true;
    host.Boxes.MessageBox({.Text = "Unable to install device library file, Fullset.dl.",
                           .Title = "Initialization Error - Application Ending",
                           .Picture = platform::Icon::Stop});
    return false;
}

void FillTables(session::Session& state, platform::Host& host) {
    state.NoHighlightKeys = editor::MakeNoHighlightKeys();
    state.Delimiters = editor::MakeDelimiters();
    state.Keywords = editor::DefaultKeywords();
    FillStdUtils(state, host);
    // These strings matter for an instant only: the configuration file replaces them.
    if (state.CompilerFlags.empty()) state.CompilerFlags = "jasxlm4";
    if (state.SimulatorFlags.empty()) state.SimulatorFlags = "l";
    if (state.VhdlFlags.empty()) state.VhdlFlags = "-a";
    state.DeviceName = "&";
    state.sProject.clear();
    state.ProjectListing.clear();
    state.UntitledCount = 0;
    state.DocumentCount = 0;
    state.SchematicTools = {
        {"Protel For Windows", 1}, {"Orcad For Windows", 2}, {"Orcad For DOS", 3}, {"Tango", 4}};
}

std::string GetWindowsDir(platform::System& system) {
    constexpr std::size_t longest = 144;
    const std::string folder = system.WindowsDirectory();
    return folder.substr(0, std::min(folder.find('\0'), longest));
}

bool Main(session::Session& state, platform::Host& host, toolchain::ErrorCodes& errors,
          StartUpWindows& windows) {
    if (host.Desktop.HasEarlierInstance()) {
        host.Desktop.AppActivate(applicationTitle);
        return false;
    }
    const std::string program = host.Desktop.ProgramPath();
    state.HelpFile = ProgramFolder(program) + "\\Korvane.HLP";
    ComputeInstallRoot(state, program);
    PrepareRegistry(state, host);
    ComputeFolders(state, program);
    TestFolders(state, host);
    toolchain::PatchFitterPif(host.Files, state);
    windows.ShowSplash();
    if (!InstallDeviceLibrary(state, host)) return false;
    FillTables(state, host);
    errors.LoadErrorCodes(host.Files, host.Boxes, state.ProgramDir);
    windows.LoadMain();
    windows.UnloadSplash();
    windows.ShowMain();
    return true;
}

}  // namespace shell
