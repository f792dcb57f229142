#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "base/CommandLine.h"
#include "base/Text.h"
#include "base/ToolInterface.h"
#include "front/Messages.h"
#include "kernel/EarlierOutputs.h"
#include "kernel/GnuLine.h"
#include "kernel/Host.h"
#include "kernel/Paths.h"
#include "kernel/StandardStreams.h"

// teskc: the compiler without the desktop.

extern "C" std::int32_t TeskkVB(base::RunRecord* record);

// The entry below has no context.
static std::string refusals;   // lines on outputs that could not be written
static bool fault = false;     // of our own
static std::string gnuFolder;  // with --gnu: of the design, with its slash
static bool isGnu = false;

extern "C" std::int32_t SendMessageA(std::uint32_t, std::uint32_t message, std::uintptr_t,
                                     std::intptr_t lparam) {
    if (message != base::msgAddString) return 0;
    const std::string line = reinterpret_cast<const char*>(lparam);
    std::printf("%s\n", (isGnu ? kernel::GnuLine(line, gnuFolder) : line).c_str());
    if (front::IsOf(front::Code::CannotWrite, line)) refusals += line + "\n";
    if (front::IsOf(front::Code::InternalFault, line)) fault = true;
    return 0;
}

namespace {

constexpr base::CommandLine kProgram{
    "teskc", "teskc " TESKC_VERSION "\n",
    "usage: teskc [-o LETTERS] [-d DEVICE] [--gnu] FILE.PLD (- reads standard input)\n",
    R"(usage: teskc [OPTION...] FILE.PLD

Compiles a design. The outputs stand beside it, the messages go to standard
output. For - the design is read from standard input, the one output that the
letters ask for goes to standard output, and the messages to standard error.

  -o LETTERS  outputs j h i f x a l e p b c t zx zq, reduction m0 to m4, kb kd
              ks kx, secure g, simulate s, one-hot o, name n; "jaxlm4" if left
              out, "jm4" for -
  -d DEVICE   mnemonic; "&", the default, is the one that the design names,
              "virtual" has no limits
  --gnu       messages as FILE:LINE:COLUMN: error: TEXT [NUMBER], for editors
  --help      print this
  --version   print the version

Exit codes: 0 no errors, 1 errors in the design or with its files, 2 a wrong
call, 4 a fault of the program.
)"};

struct Arguments {
    std::optional<std::string> Options;
    std::string Device = "&";
    std::string File;
    bool IsGnu = false;
};

Arguments Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--gnu")
            arguments.IsGnu = true;
        else if (word == "-o" && i + 1 < words.size())
            arguments.Options = words[++i];
        else if (word == "-d" && i + 1 < words.size())
            arguments.Device = words[++i];
        else if ((word.size() > 1 && word[0] == '-') || word.empty() || !arguments.File.empty())
            throw base::WrongCall();
        else
            arguments.File = word;
    }
    if (arguments.File.empty()) throw base::WrongCall();
    return arguments;
}

int ExitOf(bool isClean) { return isClean ? base::exitDone : fault ? base::exitFault : base::exitErrors; }

// The record holds 255 bytes of a path: a longer one is worked on from its own folder.
bool Shorten(std::string& path) {
    const std::size_t cut = path.rfind('/');
    if (path.size() < base::RunRecord::TextSize || cut == std::string::npos) return true;
    if (chdir(path.substr(0, cut + 1).c_str()) != 0) return false;
    path.erase(0, cut + 1);
    return true;
}

int CompileFile(const Arguments& arguments) {
    const std::string letters = arguments.Options.value_or("jaxlm4");
    std::string base = arguments.File;
    if (base.size() > 4 && base::EqualNoCase(base.substr(base.size() - 4), ".PLD"))
        base.resize(base.size() - 4);
    base::RunRecord record = base::EmptyRecord();
    constexpr std::size_t most = base::RunRecord::TextSize;
    if (!Shorten(base) || base.size() >= most || letters.size() >= most || arguments.Device.size() >= most)
        throw base::WrongCall{"an argument is too long"};
    base::SetText(record.szLibrary, kernel::InstalledLibrary());
    base::SetText(record.szOptions, letters);
    base::SetText(record.szDevice, arguments.Device);
    base::SetText(record.szDesign, base);
    const kernel::EarlierOutputs earlier(base, front::Options::Parse(letters));
    const bool isClean = TeskkVB(&record) == 0;
    earlier.RemoveThoseLeft(refusals);
    return ExitOf(isClean);
}

int CompileStream(const Arguments& arguments) {
    const std::string letters = arguments.Options.value_or("jm4");
    const front::Options options = front::Options::Parse(letters);
    if (options.Simulate || kernel::OutputsOf(options).size() > 1)
        throw base::WrongCall{"for - the letters may ask for one output, and not for s"};
    const bool isClean =
        kernel::CompileStandardInput(letters, arguments.Device, kernel::InstalledLibrary(), isGnu, fault);
    return ExitOf(isClean);
}

int Compile(const Arguments& arguments) {
    isGnu = arguments.IsGnu;
    gnuFolder = arguments.File.substr(0, arguments.File.rfind('/') + 1);
    return arguments.File == "-" ? CompileStream(arguments) : CompileFile(arguments);
}

}  // namespace

int main(int count, char** values) {
    return base::RunProgram(kProgram, count, values, [](const auto& words) { return Compile(Parse(words)); });
}
