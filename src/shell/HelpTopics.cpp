#include "shell/HelpTopics.h"

#include <algorithm>
#include <iterator>

namespace shell {
namespace {

struct HelpTopic {
    std::string_view Form;
    const char* Topic;
};

constexpr HelpTopic topics[] = {
    {"frmCompiler", "Compiler"},
    {"frmSimulator", "Simulator"},
    {"frmVhdl", "VHDL"},
    {"frmFindText", "Find"},
    {"frmReplace", "Replace"},
    {"frmExport", "Export"},
    {"frmZrxParams", "Zonerex"},
    {"frmZonerex", "Zonerex"},
    {"frmMacroDef", "Insert Macro Definition"},
    {"frmKorvane", "Korvane"},
    {"frmTable", "Tables"},
    {"frmMacroCreate", "Create Macro"},
    {"frmMacroRef", "Insert Macro Reference"},
    {"frmErrorMessage", "Errors"},
};

}  // namespace

const char* HelpTopicOf(std::string_view form) {
    const auto row = std::find_if(std::begin(topics), std::end(topics),
                                  [&](const HelpTopic& t) { return t.Form == form; });
    return row == std::end(topics) ? nullptr : row->Topic;
}

std::vector<HelpFile> HelpFiles(const session::Session& state) {
    const std::string& root = state.InstallRoot;
    return {
        {"", state.HelpFile},
        {"mnuHelpTesk", state.ProgramDir + "TeskRef.hlp"},
        {"mnuHelpFitters", root + "\\Korvane\\Fitters.hlp"},
        {"mnuHelpSimulator", root + "\\Wavrik\\Wavrik.hlp"},
        {"mnuHelpSchematic", root + "\\Schematic\\Schematic.hlp"},
        {"mnuHelpBubble", root + "\\Stavrik\\Stavrik.hlp"},
        {"mnuHelpVhdl", state.ProgramDir + "VHDL_mug.hlp"},
        {"mnuHelpPartition", state.ProgramDir + "Zonerex.hlp"},
        {"", state.ProgramDir + "Import.hlp"},
    };
}

}  // namespace shell
