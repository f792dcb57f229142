#include "net/Synthesis.h"

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

namespace net {
namespace {

constexpr const char* Copy = "source.vhd";
constexpr const char* VerilogCopy = "source.v";
// The source's folder, whatever its name, by a link of the work folder.
constexpr const char* ReadVerilog = "read_verilog -Iinclude source.v";
constexpr const char* Std = "--std=08";
constexpr const char* Vendor = "-fsynopsys";  // packages that everybody used before numeric_std

// Takes "5:" off the front; 0 if there is no number.
int TakeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data() + text.size() || *end != ':') return 0;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    return number;
}

bool TakeWord(std::string_view& text, std::string_view word) {
    text = base::TrimView(text);
    if (!base::EqualNoCase(text.substr(0, word.size()), word)) return false;
    text = base::TrimView(text.substr(word.size()));
    return true;
}

// The place of "source.vhd:5:9:" or "source.v:5:"; its line is 0 if there is none.
model::Place TakePlace(std::string_view& line) {
    model::Place place;
    for (const char* name : {Copy, VerilogCopy}) {
        const std::size_t at = line.find(std::string(name) + ":");
        if (at == line.npos || (at > 0 && line[at - 1] != '/')) continue;
        std::string_view rest = line.substr(at + std::string_view(name).size() + 1);
        place.Line = TakeNumber(rest);
        place.Column = place.Line > 0 ? TakeNumber(rest) : 0;
        if (place.Line > 0) line = rest;
        break;
    }
    return place;
}

// What tools say at every run, or of their own doings.
bool IsChatter(std::string_view text) {
    for (const std::string_view known :
         {"only limited support for tri-state", "found logic loop", "ABC: ", "instance ", "Wire "})
        if (base::Contains(text, known)) return true;
    return false;
}

}  // namespace

std::vector<Message> ToolMessages(std::string_view said, MessageCode fault) {
    std::vector<Message> messages;
    std::set<std::tuple<int, int, std::string>> known;
    for (std::string_view line : base::LineViews(said)) {
        const model::Place place = TakePlace(line);
        const bool isWarning = TakeWord(line, "warning:");
        const bool isError = !isWarning && TakeWord(line, "error:");
        if (place.Line == 0 && !isError) continue;  // an excerpt of the source, a summary, a remark
        if (IsChatter(line) || base::TrimView(line).empty()) continue;
        const std::string text = base::DisplayUtf8(base::TrimView(line));
        if (!known.emplace(place.Line, place.Column, text).second) continue;
        messages.push_back(Say(isWarning ? MessageCode("0301vh") : fault, text, place));
    }
    return messages;
}

// A constant or a signal as Verilog writes it: "01XX" is 4'b01XX.
static std::string VerilogValue(std::string_view value) {
    const bool isConstant = value.size() > 2 && (value.front() == '"' || value.front() == '\'');
    if (!isConstant) return std::string(value);
    const std::string bits = base::Lower(value.substr(1, value.size() - 2));
    return std::to_string(bits.size()) + "'b" + bits;
}

std::map<std::string, std::string> DefaultsOf(std::string_view vhdl) {
    std::map<std::string, std::string> defaults;
    std::string_view target;
    for (const std::string_view line : base::LineViews(vhdl)) {
        const auto words = base::Words(line);
        if (words.size() > 4 && words[0] == "with" && words[2] == "select" && words[4] == "<=")
            target = words[3];
        if (target.empty() || words.size() != 3 || words[1] != "when" || words[2] != "others;") continue;
        defaults[std::string(target)] = VerilogValue(words[0]);
        target = {};
    }
    return defaults;
}

std::optional<std::string> AdaptedVerilog(std::string_view text,
                                          const std::map<std::string, std::string>& defaults,
                                          std::map<std::string, std::string>& signalNames) {
    std::string adapted;
    std::string caseTarget;  // what the rows of an open case assign, until one says it for all others
    for (const std::string_view line : base::LineViews(text)) {
        const std::string_view bare = base::TrimView(line);
        auto words = base::Words(bare);
        if (bare == "endcase" && !caseTarget.empty()) {
            const auto known = defaults.find(caseTarget);
            if (known == defaults.end()) return std::nullopt;
            adapted += "default: " + caseTarget + " <= " + known->second + ";\n";
        }
        if (bare == "endcase" || bare.starts_with("default:")) caseTarget.clear();
        if (words.size() > 3 && words[0].ends_with(':') && words[2] == "<=" && words[0] != "default:")
            caseTarget = words[1];
        (adapted += line) += '\n';
        if (!bare.ends_with("// (signal)") && !bare.ends_with("// (isignal)")) continue;
        if (words[0] == "assign") words.erase(words.begin());
        if (words.size() < 3 || words[1] != "=" || !words[2].ends_with("_q;")) continue;
        signalNames.emplace(words[2].substr(0, words[2].size() - 1), words[0]);
    }
    return adapted;
}

std::string YosysScript(const std::string& read, const std::string& top, const SynthesisOptions& options) {
    // Cells by the letters of Cells.h; behind each the values that it may power up with.
    std::string cells = "-cell $_DFF_P_ 01 -cell $_DLATCH_P_ 01";
    const std::string values = options.ResetsOnly ? "0" : "?";
    if (!options.ResetsOnly) cells += " -cell $_DFFSR_PPP_ 01 -cell $_DLATCHSR_PPP_ 01";
    cells += " -cell $_DFF_PP" + values + "_ 01 -cell $_DLATCH_PP" + values + "_ 01";
    if (options.SyncControls) cells += " -cell $_SDFF_PP?_ 01";
    if (options.ClockEnables) cells += " -cell $_DFFE_PP_ 01 -cell $_DFFE_PP" + values + "P_ 01";
    const std::string optimize = options.Restructure ? "opt -full\n" : "opt\n";
    std::string script =
        read + "\nhierarchy -check -top " + top + "\nproc\nflatten\ntribuf -logic\n" + optimize;
    script += "techmap\n" + optimize + "simplemap\ndfflegalize " + cells + "\nopt_expr\n";
    if (options.Restructure) script += "abc -g AND,OR,XOR\n";
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
    const std::string said = end.Errors + end.Output;
    const bool isBug = base::Contains(said, "Bug occurred");
    if (end.Kind != ChildEnd::How::Exited || isBug) {
        Notes.push_back(
            Say("0202vh", name + (end.Kind == ChildEnd::How::Killed ? ", signal " + std::to_string(end.Code)
                                  : isBug                           ? ", a fault of its own"
                                                                    : " can't be started")));
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
    const bool isDone =
        Yosys(std::string(ReadVerilog) + "\nhierarchy -check -top " + top + "\nproc\n", "0300vh");
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
    const auto verilog = AdaptedVerilog(Read("ghdl.verilog"), DefaultsOf(Read("ghdl.vhdl")), SignalNames);
    if (verilog) return *verilog;
    Notes.push_back(Say("0202vh", "ghdl lost the last choice of a case"));
    return "";
}

std::string Synthesis::Synthesize(const std::string& top, Tongue tongue, const SynthesisOptions& options) {
    std::string read = ReadVerilog;
    if (tongue == Tongue::Vhdl) {
        const std::string verilog = Ghdl(top);
        if (verilog.empty()) return "";
        Write("design.v", verilog);
        read = "read_verilog design.v";
    }
    std::vector<Message> before = Notes;
    if (!Yosys(YosysScript(read, top, options), "0302vh")) return "";
    if (tongue == Tongue::Verilog) Notes = std::move(before);  // reading it again told nothing new
    return Read("design.blif");
}

}  // namespace net
