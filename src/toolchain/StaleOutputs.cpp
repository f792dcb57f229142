#include "toolchain/StaleOutputs.h"

#include <algorithm>
#include <array>

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace toolchain {
namespace {

using namespace std::string_view_literals;

// Sources of a run; of VHDL and Verilog ones the .PLD is made.
constexpr std::array keptExtensions = {"pld"sv, "si"sv, "m"sv, "vhd"sv, "v"sv};

// What compiler, simulator, VHDL front end, fitters and partitioner can write. Any other file is taken for
// the user's own, even if it came during a run.
constexpr std::array outputExtensions = {
    "abs"sv, "doc"sv, "edf"sv, "fit"sv, "hex"sv, "hl"sv, "jed"sv, "lst"sv, "mx"sv,  "pdf"sv, "pds"sv, "pla"sv,
    "pof"sv, "prg"sv, "qdf"sv, "rpt"sv, "slf"sv, "so"sv, "sym"sv, "tt2"sv, "vcd"sv, "vls"sv, "xnf"sv,
};

template <typename Table>
bool Has(const Table& table, std::string_view extension) {
    return std::find(table.begin(), table.end(), extension) != table.end();
}

void ClearAway(platform::FileSystem& files, const std::string& name, bool isOutput) {
    try {
        if (isOutput) {
            files.DeleteFile(name);
        } else {
            files.TrashFile(name);
        }
    } catch (const base::RunTimeError&) {
        // A file that can't be cleared away stays: the run goes on.
    }
}

}  // namespace

void DeleteStaleOutputs(platform::FileSystem& files, const std::string& design, RunOutputs& outputs) {
    for (const std::string& name : files.List(design + ".*")) {
        // Kept: the extension runs from the first dot of the name, so that of a file with two dots both
        // parts count. A design with a dot in its own name thus keeps its outputs.
        const auto dot = name.find('.');
        if (dot == name.npos) continue;
        const std::string extension = base::Lower(name.substr(dot + 1));
        if (Has(keptExtensions, extension)) continue;
        const std::string path = design + "." + extension;
        ClearAway(files, path, Has(outputExtensions, extension) && outputs.Wrote(path));
    }
}

}  // namespace toolchain
