#include "shell/SystemInfo.h"

#include "base/RunTimeError.h"
#include "base/ScopeExit.h"

namespace shell {
namespace {

// The machine's keys lie in the same store as the user's.
constexpr const char* programKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* folderKey = "SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr std::size_t maxValueSize = 1024;

// Empty if there is none.
std::string SysInfoProgram(platform::Host& host) {
    if (const auto program = ReadKeyValue(host.Settings, programKey, "PATH")) return *program;
    const auto folder = ReadKeyValue(host.Settings, folderKey, "MSINFO");
    const std::string program = folder.value_or("") + "\\MSINFO32.EXE";
    return folder && host.Files.FileExists(program) ? program : "";
}

}  // namespace

std::optional<std::string> ReadKeyValue(platform::Registry& settings, std::string_view key,
                                        std::string_view name) {
    const auto open = settings.Open(key, platform::Registry::Access::Read);
    if (!open) return std::nullopt;
    const base::ScopeExit close([&] { settings.Close(*open); });
    if (const auto number = settings.QueryNumber(*open, name))
        return std::to_string(static_cast<std::int32_t>(*number));
    auto text = settings.QueryText(*open, name);
    if (!text || text->size() > maxValueSize) return std::nullopt;
    if (text->ends_with('\0')) text->pop_back();
    return text;
}

void StartSysInfo(platform::Host& host) {
    try {
        const std::string program = SysInfoProgram(host);
        if (!program.empty()) {
            host.Programs.Start(program);
            return;
        }
    } catch (const base::RunTimeError&) {
        // A program that is named and can't be started is as good as none.
    }
    host.Boxes.Say("System Information Is Unavailable At This Time");
}

}  // namespace shell
