#include "kernel/StandardStreams.h"

#include <cstdio>

#include "base/CommandLine.h"
#include "kernel/CompilerSteps.h"
#include "kernel/GnuLine.h"
#include "kernel/Paths.h"
#include "kernel/StageGuard.h"

namespace kernel {

namespace {

constexpr std::string_view kBase = "stdin";  // messages call the design stdin.PLD

class StandardFiles : public DiskFiles {
  public:
    std::optional<std::string> Output;

    std::optional<std::string> Read(std::string_view path, std::size_t maxBytes) override {
        return path == Design() ? ReadStandardInput(maxBytes) : DiskFiles::Read(path, maxBytes);
    }
    std::string Write(std::string_view, std::string_view bytes) override {
        if (!Output) Output = bytes;  // what lies beside a fuse map comes behind it
        return {};
    }
    std::string Identity(std::string_view path) override {
        return path == Design() ? std::string(path) : DiskFiles::Identity(path);
    }

  private:
    static std::string Design() { return std::string(kBase) + ".PLD"; }

    static std::optional<std::string> ReadStandardInput(std::size_t maxBytes) {
        try {
            return base::ReadStandardInput(maxBytes);
        } catch (const base::RunTimeError&) {
            return std::nullopt;
        }
    }
};

class ErrorStream : public front::Listener {
  public:
    bool IsGnu = false;
    bool Fault = false;

    void Line(std::string_view text) override {
        const std::string line(text);
        std::fprintf(stderr, "%s\n", (IsGnu ? GnuLine(line, "") : line).c_str());
        Fault = Fault || front::IsOf(front::Code::InternalFault, text);
    }
};

}  // namespace

bool CompileStandardInput(const std::string& letters, const std::string& device, const std::string& library,
                          bool isGnu, bool& fault) {
    StandardFiles files;
    ErrorStream list;
    list.IsGnu = isGnu;
    front::Run run(files, list);
    run.Base = kBase;
    run.Device = device;
    run.Library = library;
    run.Options = front::Options::Parse(letters);
    const bool done = Guarded(run.Said, "compile", [&] {
        const bool compiled = RunCompiler(run);
        front::WriteList(run);
        return compiled && run.Ok();
    });
    fault = list.Fault;
    if (!files.Output) return done;
    if (base::WriteStandardOutput(*files.Output)) return done;
    run.Said.Add(front::Code::CannotWrite, {}, "standard output");
    return false;
}

}  // namespace kernel
