#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/RunTimeError.h"
#include "logic/Pla.h"

// Any text is either refused with an error or read, minimized to the same function, written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const auto level = static_cast<logic::Level>(data[0] % 5);
    const logic::Options options{.Shared = (data[0] / 5) % 2 == 0, .Effort = 0.01};
    try {
        const logic::Pla pla = logic::ReadPla({reinterpret_cast<const char*>(data) + 1, size - 1});
        const logic::Cover result = logic::Minimize(pla, level, options).Terms;
        const logic::Pla again = logic::ReadPla(logic::WritePla(result, pla.InputNames, pla.OutputNames));
        if (again.On.Size() != result.Size()) std::abort();
        if (pla.Type == "fr") return 0;
        logic::Cover upper = pla.On, lower = result;
        upper.AddAll(pla.DontCare);
        lower.AddAll(pla.DontCare);
        if (logic::CoversWithin(upper, result, 1000000) == false) std::abort();
        if (logic::CoversWithin(lower, pla.On, 1000000) == false) std::abort();
    } catch (const base::RunTimeError&) {
    }
    return 0;
}
