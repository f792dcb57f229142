#include "toolchain/BackPin.h"

#include <array>
#include <string>

#include "base/RunTimeError.h"
#include "toolchain/Compiler.h"

namespace toolchain {
namespace {

// Kept to the blank: the tool takes the device and the design glued to its option, and the second backslash.
struct Lines {
    const char* DesignsDevice;
    const char* GivenDevice;
};
constexpr std::array lines = {Lines{"backpin.exe -f virtual ", "backpin.exe -f"},
                              Lines{"\\backpin.exe -b virtual ", "\\backpin.exe -b"},
                              Lines{"\\backpin.exe -p virtual ", "\\backpin.exe -p"}};

std::string CommandLine(const session::Session& state, BackPin what) {
    const Lines& line = lines.at(static_cast<std::size_t>(what));
    const bool isGiven = !state.DeviceName.empty() && state.DeviceName != "&";
    const std::string device = isGiven ? line.GivenDevice + state.DeviceName : line.DesignsDevice;
    return state.UtilityDir + device + state.sProject;
}

}  // namespace

void RunBackPin(session::App& app, session::Document& document, BackPin what) {
    try {
        RunAndWait(app.Host, CommandLine(app.State, what));
        document.txtText().SetText(app.Host.Files.ReadFile(document.FileName()));
        app.Hall.Editor->HighlightSyntax(document);
    } catch (const base::RunTimeError&) {
        // Told in the header.
    }
}

}  // namespace toolchain
