#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/RunTimeError.h"
#include "shell/ConfigFile.h"

// What reads as a configuration is written and read again without loss.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    session::Session first;
    try {
        shell::ParseConfig({reinterpret_cast<const char*>(data), size}, first);
    } catch (const base::RunTimeError&) {
        return 0;
    }
    const std::string bytes = shell::ConfigBytes(first);
    session::Session second;
    shell::ParseConfig(bytes, second);
    if (shell::ConfigBytes(second) != bytes) std::abort();
    return 0;
}
