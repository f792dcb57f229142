#include <cstddef>
#include <cstdint>
#include <string>

#include "front/Run.h"

namespace {

class OneFile : public front::Files {
  public:
    std::string Text;
    std::optional<std::string> Read(std::string_view path, std::size_t) override {
        return path == "T.PLD" ? std::optional(Text) : std::nullopt;
    }
    bool Write(std::string_view, std::string_view) override { return true; }
    std::string Identity(std::string_view path) override { return std::string(path); }
};

}  // namespace

// Any text goes through the whole compiler.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    OneFile files;
    files.Text.assign(reinterpret_cast<const char*>(data), size);
    front::Listener silent;
    front::Run run(files, silent);
    run.Base = "T";
    run.Device = "virtual";
    run.Options = front::Options::Parse("abelxkbm1");
    (void)(ExpandStage(run) && AnalyseStage(run) && BuildStage(run) && MinimiseStage(run) && WriteStage(run));
    WriteList(run);
    return 0;
}
