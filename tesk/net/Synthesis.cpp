#include "net/Synthesis.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <set>
#include <tuple>

#include "base/AtomicFile.h"
#include "base/PosixFile.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Failure.h"
#include "net/Blif.h"
#include "net/Child.h"
#include "net/GhdlVerilog.h"

namespace net {
namespace {

constexpr const char* Copy = "source.vhd";
constexpr const char* VerilogCopy = "source.v";
// The source's folder, whatever its name, by a link of the work folder.
constexpr const char* ReadVerilog = "read_verilog -Iinclude source.v";
constexpr const char* Std = "--std=08";
// A choice of many as a chain of choices of two, where constants that are off survive.
constexpr const char* ChoicesFile = "choices.v";
constexpr const char* Choices = R"((* techmap_celltype = "$pmux" *)
module choices #(parameter WIDTH = 1, S_WIDTH = 1) (
    input [WIDTH-1:0] A, input [WIDTH*S_WIDTH-1:0] B, input [S_WIDTH-1:0] S, output [WIDTH-1:0] Y);
  wire [WIDTH*(S_WIDTH+1)-1:0] t;
  assign t[WIDTH-1:0] = A;
  assign Y = t[WIDTH*S_WIDTH +: WIDTH];
  genvar i;
  generate for (i = 0; i < S_WIDTH; i = i + 1) begin : each
    \$mux #(.WIDTH(WIDTH)) m (
        .A(t[i*WIDTH +: WIDTH]), .B(B[i*WIDTH +: WIDTH]), .S(S[i]), .Y(t[(i+1)*WIDTH +: WIDTH]));
  end endgenerate
endmodule
)";
constexpr const char* Vendor = "-fsynopsys";  // packages that everybody used before numeric_std

// Takes "5:" off the front; -1 if there is no number.
int TakeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data() + text.size() || *end != ':' || number < 0) return -1;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    return number;
}

bool TakeWord(std::string_view& text, std::string_view word) {
    text = base::TrimView(text);
    if (!base::EqualNoCase(text.substr(0, word.size()), word)) return false;
    text = base::TrimView(text.substr(word.size()));
    return true;
}

// The place of "source.vhd:5:9:" or "source.v:5:"; its line is 0 if there is none, or if the tool does not
// know it ("source.v:0:").
model::Place TakePlace(std::string_view& line) {
    model::Place place;
    for (const char* name : {Copy, VerilogCopy}) {
        const std::size_t at = line.find(std::string(name) + ":");
        if (at == line.npos || (at > 0 && line[at - 1] != '/')) continue;
        std::string_view rest = line.substr(at + std::string_view(name).size() + 1);
        const int row = TakeNumber(rest);
        if (row < 0) break;
        place.Line = row;
        place.Column = row > 0 ? std::max(TakeNumber(rest), 0) : 0;
        line = rest;
        break;
    }
    return place;
}

// The place that a tool was at when it failed: "cannot handle this (source.vhd:4:27)".
model::Place PlaceInside(std::string_view said) {
    const std::size_t open = said.find(std::string("(") + Copy + ":");
    std::string text(said.substr(open == said.npos ? said.size() : open + 1));
    text = base::ReplaceAll(text.substr(0, text.find('\n')), ")", ":");
    std::string_view rest = text;
    return TakePlace(rest);
}

// What tools say at every run, or of their own doings.
bool IsChatter(std::string_view text) {
    for (const std::string_view known :
         {"only limited support for tri-state", "found logic loop", "ABC: ", "instance ", "Wire ", "note:"})
        if (base::Contains(text, known)) return true;
    return false;
}

// "multiple conflicting drivers for MODULE.\NET:" and the lines behind it, of which those of ports are told.
std::string ConflictAt(std::string_view line, std::string_view behind) {
    line.remove_suffix(line.ends_with(':') ? 1 : 0);
    std::string ports;
    while (!behind.empty()) {
        const std::string_view next = base::TakeLine(behind);
        if (!next.starts_with("    ")) break;
        const auto words = base::Words(next);
        if (words.size() == 3 && words[0] == "module")
            ports += (ports.empty() ? "" : ", ") + std::string(words[2]);
    }
    const std::string net(line.substr(std::min(line.rfind('.') + 1, line.size())));
    return "more than one thing drives a signal: " + base::ReplaceAll(ports.empty() ? net : ports, "\\", "");
}

}  // namespace

std::vector<Message> ToolMessages(std::string_view said, MessageCode fault) {
    std::vector<Message> messages;
    std::set<std::tuple<int, int, std::string>> known;
    while (!said.empty()) {
        std::string_view line = base::TakeLine(said);
        const model::Place place = TakePlace(line);
        const bool isWarning = TakeWord(line, "warning:");
        const bool isError = !isWarning && TakeWord(line, "error:");
        if (isWarning && line.starts_with("multiple conflicting drivers for ")) {
            messages.push_back(Say(fault, ConflictAt(base::TrimView(line), said)));
            continue;
        }
        if (place.Line == 0 && !isError) continue;  // an excerpt of the source, a summary, a remark
        if (IsChatter(line) || base::TrimView(line).empty()) continue;
        const std::string text = base::DisplayUtf8(base::TrimView(line));
        if (!known.emplace(place.Line, place.Column, text).second) continue;
        messages.push_back(Say(isWarning ? MessageCode("0301vh") : fault, text, place));
    }
    return messages;
}

std::string YosysScript(const std::string& read, const std::string& top, const SynthesisOptions& options) {
    // Cells by the letters of Cells.h; behind each the values that it may power up with.
    std::string cells = "-cell $_DFF_P_ 01 -cell $_DLATCH_P_ 01";
    const std::string values = options.ResetsOnly ? "0" : "?";
    if (!options.ResetsOnly) cells += " -cell $_DFFSR_PPP_ 01 -cell $_DLATCHSR_PPP_ 01";
    cells += " -cell $_DFF_PP" + values + "_ 01 -cell $_DLATCH_PP" + values + "_ 01";
    if (options.SyncControls) cells += " -cell $_SDFF_PP?_ 01";
    if (options.ClockEnables) cells += " -cell $_DFFE_PP_ 01 -cell $_DFFE_PP" + values + "P_ 01";
    // Multiplexers of what can be off must stay: ResolveThreeState goes through them.
    const bool restructures = options.Restructure && !options.ThreeState;
    const std::string optimize = restructures ? "opt -full\n" : "opt\n";
    std::string script = read + "\nhierarchy -check -top " + top + "\nproc\nflatten\n";
    if (options.ThreeState)
        script += "techmap -map " + std::string(ChoicesFile) +
                  " t:$pmux\nopt_clean\nsimplemap t:$mux\ntribuf -merge\n";
    script += optimize + "memory\n" + optimize + "techmap\n" + optimize + "simplemap\ndfflegalize " + cells;
    script += "\nopt_expr\n";
    if (restructures) script += "abc -g AND,OR,XOR\n";
    return script + "opt_clean -purge\nwrite_blif -conn design.blif\n";
}

void Synthesis::Write(const std::string& file, const std::string& text) const {
    base::AtomicFile out(folder_ + "/" + file);
    out.Write(text);
    out.Commit(base::AtomicFile::Durability::Quick);
}
std::string Synthesis::Read(const std::string& file) const {
    return base::ReadWhole(folder_ + "/" + file, MaxNetlistBytes);
}

bool Synthesis::FindTools(Tongue tongue) {
    yosys_ = FindProgram("yosys");
    ghdl_ = tongue == Tongue::Vhdl ? FindProgram("ghdl") : "";
    const bool lacksGhdl = tongue == Tongue::Vhdl && ghdl_.empty();
    if (yosys_.empty() || lacksGhdl) {
        const std::string missing = yosys_.empty() && lacksGhdl ? "ghdl and yosys"
                                    : lacksGhdl                 ? "ghdl"
                                                                : "yosys";
        Notes.push_back(Say(
            "0200vh", "install " + missing + " (apt install " + base::ReplaceAll(missing, " and", "") + ")"));
        return false;
    }
    return (ghdl_.empty() || IsNewEnough(ghdl_, 2, 0)) && IsNewEnough(yosys_, 0, 10);
}

bool Synthesis::IsNewEnough(const std::string& program, int major, int minor) {
    const ChildEnd end = RunChild({program, program == ghdl_ ? "--version" : "-V"}, folder_, seconds_);
    int hasMajor = 0, hasMinor = 0;
    const std::string told = end.Output.substr(0, end.Output.find('\n'));
    const std::size_t digit = told.find_first_of("0123456789");
    const bool isTold =
        digit != told.npos && std::sscanf(told.c_str() + digit, "%d.%d", &hasMajor, &hasMinor) == 2;
    Log += told + "\n";
    if (end.Kind != ChildEnd::How::Exited || !isTold) {
        Notes.push_back(Say("0202vh", program + " does not tell its version"));
        return false;
    }
    if (hasMajor > major || (hasMajor == major && hasMinor >= minor)) return true;
    Notes.push_back(Say("0201vh", told));
    return false;
}

bool Synthesis::Run(const std::vector<std::string>& command, MessageCode fault, const std::string& output) {
    const ChildEnd end = RunChild(command, folder_, seconds_, output);
    Log += "\n$";
    for (const std::string& word : command) Log += " " + word;
    Log += "\n" + end.Output + end.Errors;
    const std::string name = command[0].substr(command[0].rfind('/') + 1);
    if (end.Kind == ChildEnd::How::TookTooLong) {
        Notes.push_back(Say("0203vh", name + ", " + std::to_string(seconds_) + " seconds"));
        return false;
    }
    if (end.Kind == ChildEnd::How::Stopped) {
        Notes.push_back(Say("0203vh", name));
        return false;
    }
    const std::string said = end.Errors + end.Output;
    const bool isBug = base::Contains(said, "Bug occurred");
    if (end.Kind != ChildEnd::How::Exited || isBug) {
        Notes.push_back(Say("0202vh",
                            name + (end.Kind == ChildEnd::How::Killed ? ", signal " + std::to_string(end.Code)
                                    : isBug                           ? ", a fault of its own"
                                                                      : " can't be started"),
                            isBug ? PlaceInside(said) : model::Place{}));
        return false;
    }
    const std::vector<Message> told = ToolMessages(said, fault);
    Notes.insert(Notes.end(), told.begin(), told.end());
    if (end.Code == 0) return true;
    if (!model::HasErrors(told)) {
        const std::string_view first = base::TrimView(std::string_view(said).substr(0, said.find('\n')));
        Notes.push_back(Say(fault, first.empty() ? name + " gave up" : base::DisplayUtf8(first)));
    }
    return false;
}

bool Synthesis::Yosys(const std::string& script, MessageCode fault) {
    Write("design.ys", script);
    return Run({yosys_, "-q", "-s", "design.ys"}, fault);
}

bool Synthesis::Analyse(const std::string& text, Tongue tongue) {
    text_ = text;
    Write(tongue == Tongue::Vhdl ? Copy : VerilogCopy, text);
    std::error_code error;  // without the link includes are not found, which is told
    std::filesystem::create_directory_symlink(std::filesystem::absolute(sourceFolder_, error),
                                              folder_ + "/include", error);
    if (tongue == Tongue::Verilog) return Yosys(std::string(ReadVerilog) + "\n", "0300vh");
    return Run({ghdl_, "-a", Std, Vendor, Copy}, "0300vh");
}

bool Synthesis::Elaborate(const std::string& top, Tongue tongue) {
    if (tongue == Tongue::Vhdl) return Run({ghdl_, "-e", Std, Vendor, top}, "0300vh");
    // What Analyse told already is not told again.
    const std::vector<Message> told = Notes;
    const bool isDone = Yosys(std::string(ReadVerilog) + "\nhierarchy -check -top " + top +
                                  "\nproc\nflatten\ntribuf -logic\ncheck\n",
                              "0300vh");
    std::erase_if(Notes, [&, seen = std::size_t{0}](const Message& note) mutable {
        if (seen++ < told.size()) return false;
        for (const Message& old : told)
            if (old.Text == note.Text && old.At == note.At) return true;
        return false;
    });
    return isDone;
}

std::string Synthesis::Ghdl(const std::string& top) {
    std::vector<Message> before = Notes, told;
    Write(Copy, WithoutAttributes(text_));
    const bool isAnalysed = Run({ghdl_, "-a", Std, Vendor, Copy}, "0302vh");
    if (!isAnalysed) return "";
    Notes = std::move(before);  // its warnings were told
    for (const char* form : {"verilog", "vhdl"}) {
        const std::string file = std::string("ghdl.") + form;
        if (!Run({ghdl_, "--synth", Std, Vendor, "--latches", std::string("--out=") + form, top}, "0302vh",
                 file))
            return "";
        if (form[0] == 'v' && form[1] == 'e') told = Notes;
    }
    Notes = std::move(told);
    auto adapted = AdaptedVerilog(Read("ghdl.verilog"), DefaultsOf(Read("ghdl.vhdl")));
    if (!adapted) {
        Notes.push_back(Say("0202vh", "ghdl lost the last choice of a case"));
        return "";
    }
    SignalNames = std::move(adapted->SignalNames);
    TellLost(*adapted);
    return model::HasErrors(Notes) ? "" : std::move(adapted->Text);
}

// A signal without a driver was told by ghdl itself.
void Synthesis::TellLost(const GhdlVerilog& verilog) {
    const auto isTold = [this](const std::string& name) {
        return std::any_of(Notes.begin(), Notes.end(), [&](const Message& note) {
            return base::Contains(note.Text, "signal \"" + name + "\" is never assigned");
        });
    };
    for (const std::string& name : verilog.Lost)
        if (!isTold(name)) Notes.push_back(Say("0306vh", name));
    for (const std::string& name : verilog.Constant)
        if (!isTold(name)) Notes.push_back(Say("0307vh", name));
}

std::string Synthesis::Synthesize(const std::string& top, Tongue tongue, SynthesisOptions options) {
    std::string read = ReadVerilog;
    options.ThreeState = MayBeOff(text_);
    if (tongue == Tongue::Vhdl) {
        const std::string verilog = Ghdl(top);
        if (verilog.empty()) return "";
        options.ThreeState = MayBeOff(verilog);
        Write("design.v", verilog);
        read = "read_verilog design.v";
    }
    if (options.ThreeState) Write(ChoicesFile, Choices);
    std::vector<Message> before = Notes;
    if (!Yosys(YosysScript(read, top, options), "0302vh")) return "";
    if (tongue == Tongue::Verilog) Notes = std::move(before);  // reading it again told nothing new
    return Read("design.blif");
}

}  // namespace net
