#include <filesystem>

#include "drill/Drill.h"

namespace {

bool IsInstalled(const std::string& tool) { return std::filesystem::exists("/usr/bin/" + tool); }

}  // namespace

// The VHDL front end from its menu entries, its list in frmMessage ("Messages") and frmErrorMessage.
TEST_P(Drill, CompilesVhdlAndExplainsItsErrors) {
    if (!IsInstalled("ghdl") || !IsInstalled("yosys"))
        GTEST_SKIP() << "SKIPPED: ghdl and yosys are not installed";
    StartWith("A.VHD",
              "entity a is port (x, y : in bit; z : out bit); end;\r\n"
              "architecture r of a is begin\r\nz <= x and y\r\nend;\r\n");
    Key("ctrl+F11");
    Click("Error: Error in the source: ';' expected", In::Messages);
    WaitWindow("Compile Message");
    ExpectSeen("0300vh");
    KeyAway("Compile Message", "Return");
    Click("z <= x and", In::Document);
    Key("End");
    Type(";");
    Key("ctrl+s");
    Menu({"&Options", "&VHDL"}, "VHDL Options");
    Click("Analyze Only");
    ClickAway("VHDL Options");
    Key("F11");
    ExpectSeen("Design written: A.PLD", In::Messages);
    ExpectPart("A.PLD", "Z = X & Y ;\r\n");
}
