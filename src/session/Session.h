#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "session/Documents.h"
#include "session/KeyMacros.h"
#include "session/Records.h"

namespace session {

// The shared state of a run of the program, made once by Main and passed by reference. Paths are logic paths
// (C:\…); folder values end in a backslash but for InstallRoot and WorkDir.
struct Session {
    // The installation, computed from the program's own path.
    std::string InstallRoot;
    std::string SharedDir;
    std::string ExamplesDir;
    std::string NettrelDir;
    std::string ZrxDir;      // empty if the folder is missing: no partitioner
    std::string UtilityDir;  // empty if the folder is missing: no converters, no VHDL
    std::string OvrelHelpDir;
    std::string ProgramDir;
    std::string HelpFile;

    // Option strings of the tool chain, and what a run works on.
    std::string CompilerFlags;
    std::string SimulatorFlags;
    std::string VhdlFlags;
    std::string PartitionFlags;
    std::string DeviceName;  // "&": the design names it
    std::string sProject;    // folder and base name of the current design, upper case; empty if none
    std::string ProjectListing;
    std::string LibraryName;
    std::string DeviceCatalog;
    std::string WorkDir;
    std::string SchematicTool;
    std::vector<session::SchematicTool> SchematicTools;

    FontRecord EditorFont;   // frmDocument, frmMacroDef, frmMacroRef
    FontRecord MessageFont;  // frmMessage
    FontRecord ProjectFont;  // frmProject

    std::array<CustomUtility, 7> StdUtils;  // the order is an interface: rows are addressed by index
    std::array<CustomUtility, 6> CustUtils;
    std::array<cKSMacros, 6> KsMacroSets;  // a recording for each row of CustUtils

    // Editor.
    session::Documents Documents;
    std::int32_t DocumentCount = 0;
    std::int32_t UntitledCount = 0;
    std::array<std::string, 7> RecentFiles;  // most recent first; index 6 is always empty
    std::span<const std::string> ShownRecentFiles() const { return std::span(RecentFiles).first(6); }
    std::string LastPath;
    std::int32_t DefaultTextColor = 0;
    bool HighlightEnabled = false;
    bool AutoArrange = false;
    bool AutoSymbolUpdate = false;
    std::vector<KeywordRec> Keywords;
    std::vector<std::int16_t> NoHighlightKeys;
    std::string Delimiters;
};

}  // namespace session
