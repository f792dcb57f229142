#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "front/Analysis.h"
#include "front/Files.h"
#include "front/Fitting.h"
#include "front/Options.h"
#include "front/Report.h"
#include "front/Source.h"
#include "front/Syntax.h"

// One run of the compiler, and its five stages. Each takes what the ones before it left in the run; each
// returns false if errors make the next one pointless.
namespace front {

struct Run {
    Run(Files& files, Listener& listener) : Disk(files), Said(listener) {}

    Files& Disk;
    Report Said;

    // What the caller asks for.
    std::string Base;     // the design's path without extension; outputs are named from it
    std::string Device;   // mnemonic, "virtual", or "&" for the one that the design names
    std::string Library;  // path of the device library
    front::Options Options;

    front::Source Source;
    front::Syntax Syntax;
    front::Analysis Analysis;
    std::optional<Fitted> Fit;  // none for a virtual device

    std::vector<std::string> Written;  // names of the output files
    std::string JedecPath;             // of the .JED, empty if none was written

    Design& Result() { return Analysis.Result; }
    // Writes an output and notes it; a failure is reported.
    void Write(const std::string& path, std::string_view text);
    // The same without the note.
    bool WriteUnnoted(const std::string& path, std::string_view text);
    bool Ok() const { return Said.Errors() == 0; }
    std::string Output(std::string_view extension) const { return Base + std::string(extension); }
};

bool ExpandStage(Run& run);    // reads Base + ".PLD", writes the .MX
bool AnalyseStage(Run& run);   // statements, names, gates
bool BuildStage(Run& run);     // sums of product terms
bool MinimiseStage(Run& run);  // reduced
bool WriteStage(Run& run);     // fits and writes the outputs but for the .LST
void WriteList(Run& run);      // the .LST, whatever came before; the last step of a run

}  // namespace front
