#include <cstdint>
#include <cstdlib>
#include <string>

#include "convert/Failure.h"
#include "front/Parser.h"
#include "front/Run.h"
#include "net/Design.h"
#include "net/GhdlVerilog.h"
#include "net/SourceText.h"
#include "net/Synthesis.h"

namespace {

class OneFile : public front::Files {
  public:
    explicit OneFile(std::string text) : text_(std::move(text)) {}
    std::optional<std::string> Read(std::string_view path, std::size_t) override {
        return path == "T.PLD" ? std::optional(text_) : std::nullopt;
    }
    std::string Write(std::string_view, std::string_view) override { return {}; }
    std::string Identity(std::string_view path) override { return std::string(path); }

  private:
    std::string text_;
};

// The compiler reads what was made without a fault of syntax.
void DemandParses(const std::string& text) {
    OneFile files(text);
    front::Listener silent;
    front::Run run(files, silent);
    run.Base = "T";
    if (!front::ExpandStage(run)) std::abort();
    front::Parse(run.Source, run.Said, run.Syntax);
    if (!run.Ok()) std::abort();
}

void MakeDesign(std::string_view text, std::uint8_t bits) {
    net::Wishes wishes{.Name = "T", .MaxTerms = 2u + bits % 8u};
    if ((bits & 64) != 0) {
        wishes.Device = "G22V10";
        wishes.Sync = net::SyncControls::Shared;
    }
    wishes.PinsAreNodes = (bits & 32) != 0;
    DemandParses(net::MakeDesign(net::ReadBlif(text), wishes).File.Text());
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
