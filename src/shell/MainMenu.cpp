#include "shell/MainMenu.h"

namespace shell {
namespace {

using namespace platform;

constexpr MenuRow rows[] = {
    {0, "mnuFile", "&File"},
    {1, "mnuFileNew", "&New"},
    {2, "mnuNewDesign", "&Design File"},
    {2, "mnuNewProject", "&Project"},
    {2, "mnuNewText", "&Text File"},
    {1, "mnuFileOpen", "&Open", "Ctrl+O"},
    {1, "mnuClose", "&Close"},
    {1, "mnuFileBar1", "-"},
    {1, "mnuProjectOpen", "Open &Project"},
    {1, "mnuCloseProject", "Close Proj&ect"},
    {1, "mnuFileBar2", "-"},
    {1, "mnuImport", "&Import"},
    {2, "mnuImportAhdl", "&AHDL"},
    {2, "mnuImportPla", "P&LA"},
    {2, "mnuImportNettrel", "&Schematic Netlist"},
    {2, "mnuImportOntesk", "&ONTESK "},
    {2, "mnuImportPalasm", "&Palasm (Rev 1)"},
    {2, "mnuImportVerilog", "&Verilog", "", menuDisabled},
    {2, "mnuImportVhdl", "V&HDL", "", menuDisabled},
    {1, "mnuFileSep3", "-"},
    {1, "mnuFilePrintSetup", "Printer S&etup"},
    {1, "mnuFilePrint", "&Print", "Ctrl+P"},
    {1, "mnuFileBar4", "-"},
    {1, "mnuFileMru", "", "", menuHidden, 6},
    {1, "mnuFileBar6", "-", "", menuHidden},
    {1, "mnuFileExit", "E&xit"},

    {0, "mnuView", "&View"},
    {1, "mnuViewToolbar", "&Toolbar", "", menuChecked},
    {1, "mnuViewStatusBar", "&Status Bar", "", menuChecked},

    {0, "mnuOptions", "&Options"},
    {1, "mnuCompiler", "&Compiler"},
    {1, "mnuOptionsDevices", "&Devices"},
    {1, "mnuSimulator", "&Simulator"},
    {1, "mnuVhdl", "&VHDL"},
    {1, "mnuOptionsBar1", "-"},
    {1, "mnuKorvane", "&Korvane"},

    {0, "mnuWindow", "&Window"},
    {1, "mnuWindowCascade", "&Cascade"},
    {1, "mnuWindowTileHorizontal", "Tile &Horizontal"},
    {1, "mnuWindowTileVertical", "Tile &Vertical"},
    {1, "mnuWindowArrangeIcons", "&Arrange Icons"},
    {1, "mnuWindowBar1", "-"},
    {1, "mnuWindowAuto", "&Auto Arrange"},

    {0, "mnuHelp", "&Help"},
    {1, "mnuHelpContents", "&Contents"},
    {1, "mnuHelpSearch", "&Search"},
    {1, "mnuHelpBar1", "-"},
    {1, "mnuHelpTesk", "Tesk Programmers &Reference"},
    {1, "mnuHelpFitters", "&Fitters"},
    {1, "mnuHelpOvrel", "Ovrel &Info"},
    {2, "mnuHelpOvrelList", "Ovrel1", "", menuHidden, 1},  // shown once it bears a file's name
    {1, "mnuHelpSimulator", "S&imulator"},
    {1, "mnuHelpSchematic", "S&chematic"},
    {1, "mnuHelpBubble", "&Bubble Entry"},
    {1, "mnuHelpVhdl", "&VHDL"},
    {1, "mnuHelpPartition", "&Zonerex", "", menuHidden},
    {1, "mnuHelpSep2", "-", "", menuHidden},
    {1, "mnuHelpSep3", "-"},
    {1, "mnuHelpAbout", "&About"},
};

}  // namespace

platform::MenuTable MainMenu() { return rows; }

}  // namespace shell
