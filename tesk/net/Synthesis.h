#pragma once

#include <map>
#include <string>
#include <vector>

#include "net/MessageTable.h"
#include "net/SourceText.h"

// The tools of the synthesis: ghdl for VHDL, yosys for all that comes behind. They work on a copy of the
// source in a folder of their own.
namespace net {

struct SynthesisOptions {
    bool ClockEnables = false;  // registers may have them
    bool SyncControls = true;   // synchronous resets and presets stay apart from the data
    bool ResetsOnly = false;    // a preset becomes the reset of a register that holds the complement
    bool Restructure = false;   // gates are put together anew, but not with ThreeState
    bool ThreeState = false;    // something can be off; told by the source
};

class Synthesis {
  public:
    // `folder`: an empty one; `sourceFolder`: where the source looks for what it includes.
    Synthesis(std::string folder, std::string sourceFolder, int seconds)
        : folder_(std::move(folder)), sourceFolder_(std::move(sourceFolder)), seconds_(seconds) {}

    // The tools are there and new enough. All of these tell in Notes what is wrong.
    bool FindTools(Tongue tongue);
    bool Analyse(const std::string& text, Tongue tongue);
    bool Elaborate(const std::string& top, Tongue tongue);  // behind Analyse
    // The netlist; empty if there was an error. Behind Elaborate.
    std::string Synthesize(const std::string& top, Tongue tongue, SynthesisOptions options);

    std::vector<Message> Notes;
    std::string Log;                                 // the commands and all that they said
    std::map<std::string, std::string> SignalNames;  // the source's for the names that ghdl gave

  private:
    bool IsNewEnough(const std::string& program, int major, int minor);
    // `fault`: the code of what the tool finds wrong in the source.
    bool Run(const std::vector<std::string>& command, MessageCode fault, const std::string& output = {});
    bool Yosys(const std::string& script, MessageCode fault);
    std::string Ghdl(const std::string& top);
    void TellLost(const struct GhdlVerilog& verilog);
    void Write(const std::string& file, const std::string& text) const;
    std::string Read(const std::string& file) const;

    std::string folder_, sourceFolder_;
    int seconds_;
    std::string ghdl_, yosys_;
    std::string text_;
};

// What a tool said of the copy of the source ("source.vhd:5:9: text"), and of nothing if it named no place.
// `fault`: the code of an error.
std::vector<Message> ToolMessages(std::string_view said, MessageCode fault);

std::string YosysScript(const std::string& read, const std::string& top, const SynthesisOptions& options);

}  // namespace net
