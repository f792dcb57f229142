#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/CommandLine.h"
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

constexpr base::CommandLine kProgram{
    "teskdis", "teskdis " TESKDIS_VERSION "\n",
    "usage: teskdis [-d DEVICE] [-m] [-n NAMES] [-o OUT] FILE.JED (- reads standard input)\n",
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
)"};

struct Arguments {
    std::string Device, Names, Output, File;
    bool Minimize = false;
};

Arguments Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        std::string* text = word == "-d"   ? &arguments.Device
                            : word == "-n" ? &arguments.Names
                            : word == "-o" ? &arguments.Output
                                           : nullptr;
        if (text != nullptr) {
            if (i + 1 == words.size() || words[i + 1].empty()) throw base::WrongCall();
            *text = words[++i];
        } else if (word == "-m") {
            arguments.Minimize = true;
        } else if ((word.size() > 1 && word[0] == '-') || word.empty() || !arguments.File.empty()) {
            throw base::WrongCall();
        } else {
            arguments.File = word;
        }
    }
    if (arguments.File.empty()) throw base::WrongCall();
    return arguments;
}

// Errors of files, to be told with their name.
struct Refusal {
    dis::MessageCode Code;
    std::string What;
};

std::string ReadFile(const std::string& name, std::size_t limit) {
    const bool isInput = name == "-";
    try {
        return isInput ? base::ReadStandardInput(limit) : base::ReadWhole(kernel::HostPath(name), limit);
    } catch (const base::RunTimeError& error) {
        throw Refusal{"7610tc", (isInput ? "standard input" : name) + ": " + error.Description()};
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
            if (errors_) return base::exitErrors;
            const auto result = dis::Disassemble(proof::ReadJedec(text), library, request);
            for (const auto& message : result.Messages) Say(message, arguments_.File);
            if (result.Ok()) Write(result);
        } catch (const Refusal& refusal) {
            Say(model::MakeMessage(refusal.Code.Entry(), {}, refusal.What), {});
        }
        return errors_ ? base::exitErrors : base::exitDone;
    }

  private:
    void Say(const dis::Message& message, const std::string& file) {
        errors_ = errors_ || message.Level == dis::Severity::Error;
        const std::string line = base::DisplayUtf8(model::ListLine(message, file));
        std::fprintf(arguments_.Output == "-" ? stderr : stdout, "%s\n", line.c_str());
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
            if (base::WriteStandardOutput(result.Pld)) return;
            throw Refusal{"7610tc", "standard output"};
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
    return base::RunProgram(kProgram, count, values,
                            [](const auto& words) { return Program(Parse(words)).Run(); });
}
