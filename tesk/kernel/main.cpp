#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "front/Messages.h"
#include "kernel/EarlierOutputs.h"
#include "kernel/Host.h"
#include "kernel/Paths.h"
#include "kernel/RunRecord.h"

// teskc: the compiler without the desktop. Prints the message list; ends with 0, or 1 if there were errors.

extern "C" std::int32_t TeskkVB(kernel::RunRecord* record);

static std::string refusals;  // lines on outputs that could not be written: the entry below has no context

extern "C" std::int32_t SendMessageA(std::uint32_t, std::uint32_t message, std::uintptr_t,
                                     std::intptr_t lparam) {
    if (message != kernel::addLine) return 0;
    const std::string line = reinterpret_cast<const char*>(lparam);
    std::printf("%s\n", line.c_str());
    static const std::string refusal = "[" + std::string(front::Entry(front::Code::CannotWrite).Number) + "]";
    if (line.starts_with(refusal)) refusals += line + "\n";
    return 0;
}

namespace {

constexpr std::string_view kUsage =
    "usage: teskc [-o letters] [-d device] FILE.PLD\n"
    "  -o letters  option letters, \"jaxlm4\" if left out: outputs j h i f x a l e p b c t zx zq,\n"
    "              reduction m0 to m4, kb kd ks kx, secure g, simulate s, one-hot o, name n\n"
    "  -d device   mnemonic; \"&\" (the default) takes the one of the design, \"virtual\" has no limits\n";

struct Arguments {
    std::string Options = "jaxlm4";
    std::string Device = "&";
    std::string File;
};

bool Parse(int count, char** values, Arguments& arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string_view value = values[i];
        const bool option = value == "-o" || value == "-d";
        if (option && i + 1 < count)
            (value == "-o" ? arguments.Options : arguments.Device) = values[++i];
        else if (option || (value.size() > 1 && value[0] == '-') || !arguments.File.empty())
            return false;
        else
            arguments.File = value;
    }
    return !arguments.File.empty();
}

// The record holds 255 bytes of a path: a longer one is worked on from its own folder.
bool Shorten(std::string& path) {
    const std::size_t cut = path.rfind('/');
    if (path.size() < kernel::RunRecord::Text{}.size() || cut == std::string::npos) return true;
    if (chdir(path.substr(0, cut + 1).c_str()) != 0) return false;
    path.erase(0, cut + 1);
    return true;
}

// The device library of the installation, or the full set that it is made from.
std::string Library() {
    std::error_code error;
    const auto shared =
        std::filesystem::read_symlink("/proc/self/exe", error).parent_path().parent_path() / "Shared";
    const auto own = shared / "tesk.dl";
    return (std::filesystem::exists(own, error) ? own : shared / "Fullset.dl").string();
}

}  // namespace

int main(int count, char** values) {
    Arguments arguments;
    if (!Parse(count, values, arguments)) {
        std::fputs(kUsage.data(), stderr);
        return 1;
    }
    std::string base = arguments.File;
    if (base.size() > 4 && base::EqualNoCase(base.substr(base.size() - 4), ".PLD"))
        base.resize(base.size() - 4);
    kernel::RunRecord record{};
    const std::size_t most = kernel::RunRecord::Text{}.size();
    if (!Shorten(base) || base.size() >= most || arguments.Options.size() >= most ||
        arguments.Device.size() >= most) {
        std::fputs("teskc: an argument is too long\n", stderr);
        return 1;
    }
    kernel::SetText(record.szLibrary, Library());
    kernel::SetText(record.szOptions, arguments.Options);
    kernel::SetText(record.szDevice, arguments.Device);
    kernel::SetText(record.szDesign, base);
    const kernel::EarlierOutputs earlier(base, front::Options::Parse(arguments.Options));
    const bool isClean = TeskkVB(&record) == 0;
    earlier.RemoveThoseLeft(refusals);
    return isClean ? 0 : 1;
}
