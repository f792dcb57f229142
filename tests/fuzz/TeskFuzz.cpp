#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

#include "front/Run.h"

namespace {

class OneFile : public front::Files {
  public:
    std::string Text;
    std::optional<std::string> Read(std::string_view path, std::size_t) override {
        return path == "T.PLD" ? std::optional(Text) : std::nullopt;
    }
    std::string Write(std::string_view, std::string_view) override { return {}; }
    std::string Identity(std::string_view path) override { return std::string(path); }
};

}  // namespace

// The first byte chooses the options; any text behind it goes through the whole compiler.
constexpr const char* kOptions[] = {"abelxkbm1", "oabxm4ks", "tczxkdm2", "bxm0", "abm3kx", "tzxokbm4"};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    OneFile files;
    files.Text.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    front::Listener silent;
    front::Run run(files, silent);
    run.Base = "T";
    run.Device = "virtual";
    run.Options = front::Options::Parse(kOptions[data[0] % std::size(kOptions)]);
    (void)(ExpandStage(run) && AnalyseStage(run) && BuildStage(run) && MinimiseStage(run) && WriteStage(run));
    WriteList(run);
    return 0;
}
