#include <cstdint>
#include <cstdlib>
#include <string>

#include "convert/Failure.h"
#include "fuzz/OneFile.h"
#include "net/Design.h"
#include "net/GhdlVerilog.h"
#include "net/SourceText.h"
#include "net/Synthesis.h"

namespace {

void MakeDesign(std::string_view text, std::uint8_t bits) {
    net::Wishes wishes{.Name = "T", .MaxTerms = 2u + bits % 8u};
    if ((bits & 64) != 0) {
        wishes.Device = "G22V10";
        wishes.Sync = net::SyncControls::Shared;
    }
    wishes.PinsAreNodes = (bits & 32) != 0;
    if (!Parses(net::MakeDesign(net::ReadBlif(text), wishes).File.Text())) std::abort();
}

}  // namespace

// Any netlist is refused or becomes a design that the compiler can read; any source, pin file and words of a
// tool are read to their end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] >= 128) {
        const net::Tongue tongue = data[0] % 2 == 0 ? net::Tongue::Vhdl : net::Tongue::Verilog;
        net::UnitsOf(text, tongue);
        net::AttributePins(text, tongue);
        if (net::WithoutAttributes(text).size() != text.size()) std::abort();
        net::ReadPinFile(text);
        net::ToolMessages(text, "0300vh");
        net::AdaptedVerilog(text, net::DefaultsOf(text));
        net::MayBeOff(text);
        return 0;
    }
    try {
        MakeDesign(text, data[0]);
    } catch (const convert::Failure&) {
    }
    return 0;
}
