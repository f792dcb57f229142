#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include "PlaDesign.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "front/Complex.h"
#include "front/Limits.h"
#include "front/Run.h"
#include "kernel/Paths.h"

// cfitr: the fitter of the complex devices by hand.
namespace {

enum Exit : int { exitDone = 0, exitErrors = 1, exitUsage = 2, exitFault = 4 };

constexpr const char* kUsage = "usage: cfitr [-d DEVICE] DESIGN.PLA\n";
constexpr const char* kVersion = "cfitr " CFITR_VERSION "\n";
constexpr const char* kHelp =
    R"(usage: cfitr [OPTION...] DESIGN.PLA

Fits a design into a C1502 or C1504. The design is a Berkeley table as teskc
writes it for these devices, with the pins in its comments. Beside it stand
then the fuse map (.JED), which is proved, the fitting report (.FIT) and the
program for JTAG players (.SVF).

  -d DEVICE  the device with its package, such as C1502T44; if left out, the
             one that the table names
  --help     print this
  --version  print the version

Exit codes: 0 done, 1 the design does not fit, or errors in it or with the
files, 2 a wrong call, 4 a fault of the program.
)";

struct Arguments {
    std::string Device, File;
    const char* Answer = nullptr;  // what --help or --version print
};

bool Parse(int count, char** values, Arguments& arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string_view value = values[i];
        if (value == "--help" || value == "--version")
            arguments.Answer = value == "--help" ? kHelp : kVersion;
        else if (value == "-d" && i + 1 < count)
            arguments.Device = values[++i];
        else if (value.empty() || value[0] == '-' || !arguments.File.empty())
            return false;
        else
            arguments.File = value;
    }
    return arguments.Answer != nullptr || !arguments.File.empty();
}

class List : public front::Listener {
  public:
    void Line(std::string_view text) override {
        std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
    }
};

bool Fit(const Arguments& arguments) {
    kernel::DiskFiles files;
    List list;
    front::Run run(files, list);
    run.Base = arguments.File.substr(
        0, arguments.File.size() - (base::Upper(arguments.File).ends_with(".PLA") ? 4 : 0));
    run.Said.FileNames = {std::string(front::FileName(arguments.File))};
    run.Library = kernel::InstalledLibrary();
    const auto text = files.Read(arguments.File, front::Limits::PlaBytes);
    if (!text) throw base::RunTimeError(base::errFileNotFound, "cannot be read");
    run.Result() = ReadPlaDesign(*text);
    if (!arguments.Device.empty()) run.Result().Device = base::Upper(arguments.Device);
    if (!front::SplitComplex(run.Result().Device))
        throw base::RunTimeError(base::errTypeMismatch, "no device of this fitter: " + run.Result().Device);
    run.Options.Jedec = true;
    return front::WriteStage(run);
}

}  // namespace

int main(int count, char** values) {
    Arguments arguments;
    if (!Parse(count, values, arguments)) {
        std::fputs(kUsage, stderr);
        return exitUsage;
    }
    try {
        const bool done =
            arguments.Answer != nullptr ? std::fputs(arguments.Answer, stdout) >= 0 : Fit(arguments);
        return std::fflush(stdout) == 0 && done ? exitDone : exitErrors;
    } catch (const base::RunTimeError& error) {
        std::fprintf(stderr, "cfitr: %s: %s\n", arguments.File.c_str(), error.what());
        return exitErrors;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "cfitr: internal error: %s\n", error.what());
        return exitFault;
    }
}
