#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "dis/Disassembly.h"
#include "fit/Device.h"
#include "front/Complex.h"
#include "front/Limits.h"
#include "kernel/Paths.h"

// teskdis: source out of a fuse map.

namespace {

enum Exit : int { exitDone = 0, exitErrors = 1, exitUsage = 2, exitFault = 4 };

constexpr const char* kUsage =
    "usage: teskdis [-d DEVICE] [-m] [-n NAMES] [-o OUT] FILE.JED (- reads standard input)\n";
constexpr const char* kVersion = "teskdis " TESKDIS_VERSION "\n";
constexpr const char* kHelp =
    R"(usage: teskdis [OPTION...] FILE.JED

Makes a design out of a fuse map (JEDEC): a .PLD that compiles to the same
fuses, and of its test vectors a .SI beside it. The messages go to standard
output. For - the map is read from standard input and the design goes to
standard output, the messages to standard error.

  -d DEVICE   mnemonic; if left out, the device that the file names, or the
              only one with as many fuses and pins
  -m          reduce the sums; without it they are those of the fuses, term by
              term
  -n NAMES    a design (.PLD) whose pins give the names, or a pin file: on each
              line a pin number and a name, "!" before the name of an active-low
              input, ";" before a comment. Other pins are called P and their
              number
  -o OUT      the design to write, - for standard output; it and the .SI beside
              it are replaced. FILE.PLD if left out, where none is there yet
  --help      print this
  --version   print the version

Exit codes: 0 done, 1 errors in the fuse map or with the files, 2 a wrong call,
4 a fault of the program.
)";

struct Arguments {
    std::string Device, Names, Output, File;
    bool Minimize = false;
    const char* Answer = nullptr;  // what --help or --version print
};

bool Parse(int count, char** values, Arguments& arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string_view value = values[i];
        std::string* text = value == "-d"   ? &arguments.Device
                            : value == "-n" ? &arguments.Names
                            : value == "-o" ? &arguments.Output
                                            : nullptr;
        if (value == "--help" || value == "--version") {
            arguments.Answer = value == "--help" ? kHelp : kVersion;
        } else if (text != nullptr) {
            if (i + 1 == count || *values[i + 1] == '\0') return false;
            *text = values[++i];
        } else if (value == "-m") {
            arguments.Minimize = true;
        } else if ((value.size() > 1 && value[0] == '-') || value.empty() || !arguments.File.empty()) {
            return false;
        } else {
            arguments.File = value;
        }
    }
    return arguments.Answer != nullptr || !arguments.File.empty();
}

// Errors of files, to be told with their name.
struct Refusal {
    dis::MessageCode Code;
    std::string What;
};

std::string ReadStandardInput(std::size_t limit) {
    std::string text;
    std::array<char, 1u << 16> piece;
    for (std::size_t count = 0; (count = std::fread(piece.data(), 1, piece.size(), stdin)) > 0;) {
        text.append(piece.data(), count);
        if (text.size() > limit) throw Refusal{"7610tc", "standard input is too large"};
    }
    if (std::ferror(stdin) != 0) throw Refusal{"7610tc", "standard input"};
    return text;
}

std::string ReadFile(const std::string& name, std::size_t limit) {
    if (name == "-") return ReadStandardInput(limit);
    try {
        return base::ReadWhole(kernel::HostPath(name), limit);
    } catch (const base::RunTimeError& error) {
        throw Refusal{"7610tc", name + ": " + error.Description()};
    }
}

std::string BaseOf(const std::string& path) {
    return std::filesystem::path(path).replace_extension().string();
}

class Program {
  public:
    explicit Program(Arguments arguments) : arguments_(std::move(arguments)) {
        auto& out = arguments_.Output;
        isAsked_ = !out.empty();
        if (!isAsked_) out = arguments_.File == "-" ? "-" : BaseOf(arguments_.File) + ".PLD";
    }

    int Run() {
        try {
            const auto text = ReadFile(arguments_.File, proof::JedecLimits::FileBytes);
            const auto library = ReadFile(kernel::InstalledLibrary(), fit::LibraryLimits::FileBytes);
            auto request = RequestOf(library);
            const auto complex = front::ComplexLibrary(kernel::InstalledLibrary());
            request.ComplexLibrary = ReadFile(complex, front::kComplexLibraryBytes);
            if (errors_) return exitErrors;
            const auto result = dis::Disassemble(proof::ReadJedec(text), library, request);
            for (const auto& message : result.Messages) Say(message, arguments_.File);
            if (result.Ok()) Write(result);
        } catch (const Refusal& refusal) {
            Say(model::MakeMessage(refusal.Code.Entry(), {}, refusal.What), {});
        }
        return errors_ ? exitErrors : exitDone;
    }

  private:
    void Say(const dis::Message& message, const std::string& file) {
        errors_ = errors_ || message.Level == dis::Severity::Error;
        std::string line = model::Headline(message);
        if (message.At.Line > 0) line += " (" + file + " line " + std::to_string(message.At.Line) + ")";
        std::fprintf(arguments_.Output == "-" ? stderr : stdout, "%s\n", base::DisplayUtf8(line).c_str());
    }

    dis::Request RequestOf(const std::string& library) {
        dis::Request request;
        request.Device = arguments_.Device;
        request.Minimize = arguments_.Minimize;
        request.Name = arguments_.File == "-"
                           ? "Source"
                           : std::filesystem::path(BaseOf(arguments_.File)).filename().string();
        if (arguments_.Names.empty()) return request;
        const auto text = ReadFile(arguments_.Names, front::Limits::FileBytes);
        const bool isDesign = base::Upper(arguments_.Names).ends_with(".PLD");
        std::vector<dis::Message> messages;
        request.Names =
            isDesign ? dis::ReadDesignNames(text, library, messages) : dis::ReadPinFile(text, messages);
        for (const auto& message : messages) Say(message, arguments_.Names);
        return request;
    }

    void Write(const dis::Disassembly& result) {
        if (arguments_.Output == "-") {
            const auto& text = result.Pld;
            if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
                throw Refusal{"7610tc", "standard output"};
            return;
        }
        const auto vectors = BaseOf(arguments_.Output) + ".SI";
        Demand(arguments_.Output);
        if (!result.Si.empty()) Demand(vectors);
        WriteFile(arguments_.Output, result.Pld);
        if (!result.Si.empty()) WriteFile(vectors, result.Si);
        const auto files = arguments_.Output + (result.Si.empty() ? "" : ", " + vectors);
        Say(model::MakeMessage(dis::MessageCode("7609tc").Entry(), {}, files + " for " + result.Device), {});
    }

    // Nothing that nobody named is replaced, nor what the result comes from. Names are found in any case.
    void Demand(const std::string& path) const {
        std::error_code error;
        const auto host = kernel::HostPath(path);
        bool isRefused = !isAsked_ && std::filesystem::exists(host, error);
        for (const auto& input : {arguments_.File, arguments_.Names})
            isRefused = isRefused ||
                        (!input.empty() && std::filesystem::equivalent(host, kernel::HostPath(input), error));
        if (isRefused) throw Refusal{"7611tc", path};
    }

    static void WriteFile(const std::string& path, const std::string& text) {
        const auto why = kernel::DiskFiles().Write(path, text);
        if (!why.empty()) throw Refusal{"7610tc", path + ": " + why};
    }

    Arguments arguments_;
    bool isAsked_ = false;  // the output was named
    bool errors_ = false;
};

}  // namespace

int main(int count, char** values) {
    Arguments arguments;
    if (!Parse(count, values, arguments)) {
        std::fprintf(stderr, "teskdis: the command is not understood\n%s", kUsage);
        return exitUsage;
    }
    if (arguments.Answer != nullptr)
        return std::fputs(arguments.Answer, stdout) < 0 || std::fflush(stdout) != 0 ? exitErrors : exitDone;
    try {
        return Program(arguments).Run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "teskdis: internal error: %s\n", error.what());
        return exitFault;
    }
}
