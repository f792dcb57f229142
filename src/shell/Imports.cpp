#include "shell/Imports.h"

#include "base/modLib.h"

namespace shell {
namespace {

struct Importer {
    const char* Entry;
    const char* Title;
    const char* Filter;
    std::string session::Session::*Folder;
    const char* Program;
    bool IsToldTheResult = false;  // the others write it by the same rule of their own
};

constexpr Importer importers[] = {
    {"mnuImportAhdl", "Import Altera TDF File", "Altera HDL (*.tdf)|*.tdf", &session::Session::UtilityDir,
     "TDF2TESK.EXE", true},
    {"mnuImportNettrel", "Import Schematic Netlist",
     "Orcad Capture (*.edn)|*.edn|Orcad 386 (*.edf)|*.edf|Protel (*.net)|*.net",
     &session::Session::NettrelDir, "NTR.EXE"},
    {"mnuImportOntesk", "Import ONTESK", "All Files (*.*)|*.*", &session::Session::UtilityDir, "ONTESK.EXE"},
    {"mnuImportPalasm", "Import Palasm", "All Files (*.*)|*.*", &session::Session::UtilityDir, "PTOT.EXE"},
    {"mnuImportPla", "Import Berkeley PLA File", "Berkeley PLA (*.pla)|*.pla|Open PLA (*.tt2)|*.tt2",
     &session::Session::UtilityDir, "PLA2TESK.EXE"},
};

// Kept: nobody looks at how the converter ended. If it left no file, the empty document says so.
void Import(session::App& app, const Importer& importer) {
    const auto file = app.Host.Boxes.OpenFile(
        {.Title = importer.Title, .Filter = importer.Filter, .InitialFolder = app.State.WorkDir});
    if (!file || file->empty()) return;
    const std::string result = base::StripExtension(*file) + ".PLD";
    std::string line = app.State.*importer.Folder + importer.Program + " " + platform::Argument(*file);
    if (importer.IsToldTheResult) line += " " + platform::Argument(result);
    if (app.Hall.ToolChain->RunAndWait(line) < 1) app.Hall.Editor->OpenDocument(result);
}

}  // namespace

std::vector<session::MainCommand> ImportCommands(session::App& app) {
    std::vector<session::MainCommand> commands;
    for (const Importer& each : importers)
        commands.emplace_back(each.Entry, [&app, &each](int) { Import(app, each); });
    return commands;
}

}  // namespace shell
