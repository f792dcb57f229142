#include "toolchain/CompilerOptions.h"

#include <algorithm>
#include <iterator>

#include "base/RunTimeError.h"
#include "base/modLib.h"

namespace toolchain {
namespace {

using O = CompilerOptions;
using enum CompilerTab;

constexpr std::int16_t quick = 1;

constexpr CompilerOption table[] = {
    {"j", &O::Jedec, "chkJedec", OutputFiles, "Frame2", "JEDEC/POF/PRG", "Create programming file"},
    {"h", &O::Ascii, "chkAscii", OutputFiles, "Frame2", "ASCII/Hex", "Create an ASCII-Hex file. Proms only"},
    {"i", &O::Hl, "chkHl", OutputFiles, "Frame2", "HL", "Creates an HL file for Signetics IFL devices"},
    {"f", &O::Fuse, "chkFuse", OutputFiles, "Frame3", "Fuse Plot", "Include jedec fuse information"},
    {"x", &O::Equations, "chkEquations", OutputFiles, "Frame3", "Equations",
     "Create doc file with reduced equations"},
    {"a", &O::Absolute, "chkAbsolute", OutputFiles, "Frame4", "Absolute",
     "Create an absolute file for simulation"},
    {"l", &O::List, "chkList", OutputFiles, "Frame4", "List", "Create an error listing file"},
    {"e", &O::Expanded, "chkExpanded", OutputFiles, "Frame4", "Expanded Macro",
     "Create .mx file expanding macros and repeat statements"},
    {"p", &O::Pdif, "chkPdif", OutputFiles, "Frame4", "PDIF", "Generate a PDIF file for P-CAD"},
    {"b", &O::Pla, "chkPla", OutputFiles, "Frame4", "PLA", "Create Berkeley PLA formatted file"},
    {"c", &O::Palasm, "chkPalasm", OutputFiles, "Frame4", "PALASM",
     "Create Palasm file for other design tool"},
    {"t", &O::Edif, "chkEdif", OutputFiles, "Frame4", "EDIF",
     "Create an EDIF file for use with other design tools"},
    {"zx", &O::Xnf, "chkXnf", OutputFiles, "Frame4", "XNF", "Create an XNF file for Xilinx FPGAs"},
    {"zq", &O::Qdif, "chkQdif", OutputFiles, "Frame4", "QDIF", "QuickLogic's QDIF format"},
    {"m", &O::Minimization, "optMinimization", Minimization, "", "", ""},
    {"kb", &O::Best, "chkBest", Optimization, "", "Best For Polarity",
     "Optimize product term usage for pins and pinnodes"},
    {"kd", &O::Demorgan, "chkDemorgan", Optimization, "", "Demorgan",
     "Demorganize all pins and pinnodes. Overrides DEMORGAN statement"},
    {"ks", &O::Share, "chkShare", Optimization, "", "P-Term Sharing",
     "Force product term sharing during minimization. Group reduction"},
    {"kx", &O::Keep, "chkKeep", Optimization, "", "Keep XOR Equations", "Do not expand XOR to AND-OR"},
    {"g", &O::Secure, "chkSecure", General, "", "Secure Device", "Program the security fuse"},
    {"d", &O::Deactivate, "chkDeactivate", General, "", "Deactivate Unused OR Terms",
     "Remove unused OR gates in IFL devices"},
    {"s", &O::Simulate, "chkSimulate", General, "", "Simulate", "Simulate after compilation"},
    {"w", &O::ViewSimulation, "chkViewSimulation", General, "", "View Simulation Results",
     "Simulate after compilation"},
    {"o", &O::Onehot, "chkOnehot", General, "", "One-hot-bit State Machine",
     "Compile all state macines as one-hot"},
    {"n", &O::Name, "chkName", General, "", "JEDEC name = PLD name", "Jedec file name = pld file name"},
};

bool IsMinimization(const CompilerOption& option) { return option.Field == &O::Minimization; }

// Kept: the table's "k" tokens are never looked for, so their second letters count as tokens of their own;
// strings that users have stored rely on it.
void ParseLetter(char letter, CompilerOptions& options) {
    const auto option = std::find_if(std::begin(table), std::end(table), [&](const CompilerOption& row) {
        return row.Token.size() == 1 && row.Token.front() == letter;
    });
    if (option != std::end(table)) options.*option->Field = 1;
}

}  // namespace

std::span<const CompilerOption> CompilerOptionTable() { return table; }

std::vector<session::OutputFrame> OutputFrames() {
    std::vector<session::OutputFrame> frames{
        {"Frame2", "Download", {}}, {"Frame3", "Doc File Options", {}}, {"Frame4", "General", {}}};
    for (session::OutputFrame& frame : frames)
        for (const CompilerOption& row : table)
            if (row.Frame == frame.Name)
                frame.Options.push_back({std::string(row.Token), row.Control, row.Caption, row.Tip});
    return frames;
}

void ParseCompilerFlags(std::string_view flags, CompilerOptions& options) {
    options.MinimizationSeen = false;
    for (std::size_t at = 0; at < flags.size(); ++at) {
        if (flags[at] == 'z') {  // any letter but "x", and the end, means QDIF
            ++at;
            (at < flags.size() && flags[at] == 'x' ? options.Xnf : options.Qdif) = 1;
        } else if (flags[at] == 'm') {
            ++at;
            if (at >= flags.size() || !base::IsDigitChar(flags[at])) {
                throw base::RunTimeError(base::errTypeMismatch);
            }
            options.Minimization = static_cast<std::int16_t>(flags[at] - '0');
            options.MinimizationSeen = true;
        } else {
            ParseLetter(flags[at], options);
        }
    }
}

std::string WriteCompilerFlags(const CompilerOptions& options) {
    std::string flags;
    for (const CompilerOption& option : table) {
        const std::int16_t value = options.*option.Field;
        if (IsMinimization(option)) {
            flags += option.Token;
            flags += std::to_string(value);
        } else if (value == 1) {
            flags += option.Token;
        }
    }
    return flags;
}

void ReadCompilerTab(CompilerTab tab, const CompilerOptions& controls, CompilerOptions& options) {
    for (const CompilerOption& option : table) {
        if (option.Tab == tab) options.*option.Field = controls.*option.Field;
    }
}

std::int16_t ShownMinimization(const CompilerOptions& options) {
    return options.MinimizationSeen ? options.Minimization : quick;
}

bool ShowCatalog(session::App& app) {
    std::string& catalog = app.State.DeviceCatalog;
    try {
        app.Host.Boxes.Say(
            catalog.empty()
                ? "The device catalog file could not be found.  Please select a device catalog."
                : "The device catalog file " + catalog + " could not be found. Please select one now");
        catalog.clear();
        const auto choice = app.Host.Boxes.OpenFile(
            {.Filter = "Device Catalogs (*.cat)|*.cat",
             .FileName = app.State.ProgramDir + "DEVICE.CAT",
             .InitialFolder = app.State.WorkDir,
             .Flags = platform::FileMustExist | platform::PathMustExist | platform::ExtensionDifferent});
        if (!choice) return false;
        catalog = *choice;
        return true;
    } catch (const base::RunTimeError&) {
        return false;
    }
}

}  // namespace toolchain
