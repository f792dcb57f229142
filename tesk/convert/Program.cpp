#include "convert/Program.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>

#include "base/HostNames.h"
#include "base/Installation.h"
#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Converters.h"
#include "front/Limits.h"
#include "kernel/Paths.h"

namespace convert {
namespace {

constexpr std::size_t MaxTableBytes = 64u << 20;
constexpr std::size_t MaxTextBytes = 8u << 20;

std::string BareNameOf(const std::string& hostPath) {
    return std::filesystem::path(hostPath).stem().string();
}

std::string CellsText() {
    try {
        return base::ReadWhole(base::InstalledFile({"NTR.LIB"}), MaxTextBytes);
    } catch (const base::RunTimeError& failure) {
        Fail(0, std::string("the cell library NTR.LIB cannot be read: ") + failure.Description());
    }
}

void Tell(const std::string& program, const std::string& file, const Failure& failure) {
    const std::string line = failure.Line > 0 ? " line " + std::to_string(failure.Line) : "";
    // It may show bytes of a file that is no text.
    std::string what = base::DisplayUtf8(failure.What);
    for (char& c : what)
        if (static_cast<unsigned char>(c) < ' ') c = '?';
    std::fprintf(stderr, "%s: %s%s: %s\n", program.c_str(), file.c_str(), line.c_str(), what.c_str());
}

std::string TextOf(const std::string& host) {
    try {
        return base::ReadWhole(host, MaxTableBytes);
    } catch (const base::RunTimeError& error) {
        Fail(0, error.Description());
    }
}

void Write(const std::string& output, const std::string& text) {
    if (text.size() > front::Limits::FileBytes) Fail(0, "the design is larger than the compiler takes");
    const std::string refusal = kernel::DiskFiles().Write(output, text);
    if (!refusal.empty()) Fail(0, output + " is not written: " + refusal);
}

}  // namespace

std::string FileOf(const std::string& name) {
    std::error_code error;
    std::string asIs = kernel::HostPath(name);
    if (std::filesystem::exists(asIs, error) || !base::IsWholePath(name)) return asIs;
    return base::HostPathBelow("", base::IsDrivePath(name) ? name.substr(2) : name);
}

Job ReadJob(const std::vector<std::string>& arguments, bool namesOutput) {
    std::size_t cut = arguments.size();
    if (namesOutput) {
        for (std::size_t i = arguments.size(); i-- > 1 && cut == arguments.size();)
            if (base::IsWholePath(arguments[i]) || arguments.size() == 2) cut = i;
    }
    Job job{base::JoinWords(arguments, 0, cut), base::JoinWords(arguments, cut, arguments.size())};
    if (namesOutput && job.Output.empty()) return {};
    // The desktop looks for this very name.
    if (!namesOutput) job.Output = base::StripExtension(job.Input) + ".PLD";
    return job;
}

int RunConverter(const std::string& program, const Job& job, const Converter& convert) {
    const std::string input = FileOf(job.Input);
    const std::string output = FileOf(job.Output);
    try {
        if (input == output) Fail(0, "the result would replace it");
        const Conversion result = convert(TextOf(input), BareNameOf(input));
        Write(output, result.Text);
        for (const std::string& note : result.Notes)
            std::fprintf(stderr, "%s: %s: %s\n", program.c_str(), input.c_str(), note.c_str());
        return base::exitDone;
    } catch (const Failure& failure) {
        Tell(program, input, failure);
        return base::exitErrors;
    } catch (const std::exception& error) {
        Tell(program, input, {0, std::string("internal error: ") + error.what()});
        return base::exitFault;
    }
}

int ConverterMain(const std::string& what, const std::vector<std::string>& arguments) {
    const Job job = ReadJob(arguments, what == "TDF2TESK");
    if (job.Input.empty()) {
        std::fprintf(stderr, "usage: %s FILE%s\n", what.c_str(), what == "TDF2TESK" ? " RESULT" : "");
        return base::exitUsage;
    }
    const auto text = [](const auto& convert) -> Converter {
        return [convert](std::string_view bytes, const std::string& name) {
            if (bytes.size() > MaxTextBytes) Fail(0, "the file is larger than 8 MB");
            return convert(bytes, name);
        };
    };
    if (what == "PLA2TESK") return RunConverter(what, job, ConvertPla);
    if (what == "PTOT") return RunConverter(what, job, text(ConvertPalasm));
    if (what == "ONTESK") return RunConverter(what, job, text(ConvertOntesk));
    if (what == "TDF2TESK") return RunConverter(what, job, text(ConvertAhdl));
    return RunConverter(what, job, text([](std::string_view bytes, const std::string& name) {
                            return ConvertNetlist(bytes, name, CellsText());
                        }));
}

}  // namespace convert
