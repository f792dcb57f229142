#include <cstddef>
#include <cstdint>
#include <iterator>

#include "fuzz/OneFile.h"

// The first byte chooses the options; any text behind it goes through the whole compiler.
constexpr const char* kOptions[] = {"abelxkbm1", "oabxm4ks", "tczxkdm2", "bxm0", "abm3kx", "tzxokbm4"};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    OneFile files({reinterpret_cast<const char*>(data) + 1, size - 1});
    front::Listener silent;
    front::Run run(files, silent);
    run.Base = "T";
    run.Device = "virtual";
    run.Options = front::Options::Parse(kOptions[data[0] % std::size(kOptions)]);
    (void)(ExpandStage(run) && AnalyseStage(run) && BuildStage(run) && MinimiseStage(run) && WriteStage(run));
    WriteList(run);
    return 0;
}
