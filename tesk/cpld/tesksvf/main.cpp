#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/AtomicFile.h"
#include "base/CommandLine.h"
#include "base/Installation.h"
#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/JedecText.h"
#include "cpld/Svf.h"
#include "proof/JedecFile.h"

namespace {

constexpr base::CommandLine program{"tesksvf", "tesksvf " TESKSVF_VERSION "\n",
                                    "usage: tesksvf [--no-jtag] [-o OUTPUT] FILE.JED|FILE.SVF\n",
                                    R"(usage: tesksvf [OPTION...] FILE.JED|FILE.SVF

Makes a program for JTAG players (SVF) of the fuse map of a C1502 or C1504: it
checks the device, erases, programs and verifies it. Of a file .SVF it makes
the fuse map that the program would write. The result stands beside the file
unless an output is named.

  -o OUTPUT  the file to write, - is standard output
  --no-jtag  take a map that turns the JTAG pins into ordinary ones: once it is
             in the device, no cable reaches it any more
  --help     print this
  --version  print the version

Exit codes: 0 done, 1 a file that can't be read, is wrong or can't be written,
2 a wrong call, 4 a fault of the program.
)"};

struct Arguments {
    std::string File, Output;
    bool WithoutJtag = false;
};

Arguments Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--no-jtag")
            arguments.WithoutJtag = true;
        else if (word == "-o" && i + 1 < words.size())
            arguments.Output = words[++i];
        else if (word.empty() || word[0] == '-' || !arguments.File.empty())
            throw base::WrongCall();
        else
            arguments.File = word;
    }
    if (arguments.File.empty()) throw base::WrongCall();
    return arguments;
}

// The devices of the installation that the program stands in.
std::vector<cpld::Device> Devices() {
    return cpld::ReadDevices(base::ReadWhole(base::InstalledFile({"Shared/Cplds.dl"}), 4u << 20));
}

[[noreturn]] void Refuse(const std::string& why) { throw base::RunTimeError(base::errTypeMismatch, why); }

std::string SvfOf(const std::string& text, const Arguments& arguments,
                  const std::vector<cpld::Device>& devices) {
    const auto file = proof::ReadJedec(text);
    for (const auto& message : file.Messages) {
        const std::string line = "line " + std::to_string(message.At.Line) + ": " + message.Text;
        if (message.Level == model::Severity::Error) Refuse(line);
        std::fprintf(stderr, "tesksvf: %s: %s\n", arguments.File.c_str(), line.c_str());
    }
    const cpld::Device* device = cpld::DeviceOfFuses(devices, file.Fuses.size());
    if (device == nullptr)
        Refuse("a map of " + std::to_string(file.Fuses.size()) + " fuses is not one of a C1502 or C1504");
    const std::string name = std::filesystem::path(arguments.File).filename().string();
    return cpld::WriteSvf(*device, file.Fuses, {device->Name + ", " + name, arguments.WithoutJtag});
}

std::string JedecOf(const std::string& text, const std::vector<cpld::Device>& devices) {
    auto map = cpld::ReadSvf(text, devices);
    return model::WriteJedec(cpld::JedecMapOf(*map.Of, std::move(map.Fuses), {}));
}

void Write(const std::string& output, const std::string& text) {
    if (output != "-") {
        base::AtomicFile file(output);
        file.Write(text);
        return file.Commit();
    }
    if (!base::WriteStandardOutput(text)) throw base::RunTimeError(base::errDiskFull, "cannot be written");
}

// `subject` is what an error is about.
void Convert(const Arguments& arguments, std::string& subject) {
    subject = "Cplds.dl";
    const auto devices = Devices();
    subject = arguments.File;
    const std::filesystem::path path = arguments.File;
    const bool isSvf = base::EqualNoCase(path.extension().string(), ".SVF");
    const std::string text = base::ReadWhole(arguments.File, 64u << 20);
    const std::string result = isSvf ? JedecOf(text, devices) : SvfOf(text, arguments, devices);
    auto beside = path;
    subject = arguments.Output.empty() ? beside.replace_extension(isSvf ? ".JED" : ".SVF").string()
                                       : arguments.Output;
    Write(subject, result);
}

int Run(const Arguments& arguments) {
    std::string subject;
    try {
        Convert(arguments, subject);
        return base::exitDone;
    } catch (const base::RunTimeError& error) {
        std::fprintf(stderr, "tesksvf: %s: %s\n", subject == "-" ? "standard output" : subject.c_str(),
                     error.what());
        return base::exitErrors;
    }
}

}  // namespace

int main(int count, char** values) {
    return base::RunProgram(program, count, values, [](const auto& words) { return Run(Parse(words)); });
}
