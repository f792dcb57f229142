#include "net/FrontEnd.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "base/HostNames.h"
#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Failure.h"
#include "convert/Program.h"
#include "front/Limits.h"
#include "kernel/Paths.h"
#include "net/Design.h"
#include "net/Synthesis.h"

namespace net {
namespace {

namespace fs = std::filesystem;

constexpr const char* Mark = "Made by VHDLTesk of ";  // tells designs that may be replaced

class FrontEnd {
  public:
    FrontEnd(const Call& call, bool analyzes, const Compiler& compile, std::vector<std::string>& lines)
        : call_(call), flags_(call.Flags), analyzes_(analyzes), compile_(compile), lines_(lines) {}

    bool Run() {
        const std::string named = convert::FileOf(call_.Source);
        base_ = base::StripExtension(named);
        const bool isClean = FindSource(named) && RunInFolder();
        return WriteList() && isClean;
    }

  private:
    bool Fails(MessageCode code, const std::string& detail) {
        Tell(Say(code, detail));
        return false;
    }
    void Tell(const Message& message) { lines_.push_back(model::ListLine(message, name_)); }
    bool TellAll(const std::vector<Message>& messages) {
        for (const Message& message : messages) Tell(message);
        return !model::HasErrors(messages);
    }

    // The .V stands in for a .VHD that is not there: the desktop knows the design's name alone.
    bool FindSource(const std::string& named) {
        std::error_code error;
        source_ = named;
        if (!fs::exists(source_, error) && base::EqualNoCase(base::Right(named, 4), ".VHD"))
            source_ = kernel::HostPath(base_ + ".V");
        if (!fs::exists(source_, error)) source_ = named;
        tongue_ = base::EqualNoCase(base::Right(source_, 2), ".V") ? Tongue::Verilog : Tongue::Vhdl;
        base_ = base::StripExtension(source_);
        name_ = fs::path(source_).filename().string();
        try {
            text_ = base::ReadWhole(source_, front::Limits::FileBytes);
            if (text_.starts_with("\xEF\xBB\xBF")) text_.erase(0, 3);  // neither tool takes the mark
            return true;
        } catch (const base::RunTimeError& failure) {
            return Fails("0100vh", source_ + ": " + failure.Description());
        }
    }

    bool RunInFolder() {
        std::string folder = (fs::temp_directory_path() / "vhdltesk-XXXXXX").string();
        if (::mkdtemp(folder.data()) == nullptr) return Fails("0101vh", folder);
        const base::ScopeExit clear([&] {
            std::error_code error;
            fs::remove_all(folder, error);
        });
        Synthesis synthesis(folder, fs::path(source_).parent_path().string(), call_.Seconds);
        bool isClean = false;
        try {
            isClean = ReadPins() && Synthesize(synthesis);
        } catch (const base::RunTimeError& failure) {
            Fails("0101vh", folder + ": " + failure.Description());
        }
        if (flags_.CreateLog) WriteFile(base_ + ".LOG", base::ToCrLf(synthesis.Log));
        return isClean;
    }

    bool ReadPins() {
        const fs::path beside(base_);
        const std::string file = base::FindName(FolderOf(beside), beside.filename().string() + "-PINS.TXT");
        const fs::path path = beside.parent_path() / file;
        std::error_code error;
        pins_.Pins = AttributePins(text_, tongue_);
        if (!fs::exists(path, error)) return true;
        PinFile own;
        try {
            own = ReadPinFile(base::ReadWhole(path.string(), front::Limits::FileBytes));
        } catch (const base::RunTimeError& failure) {
            return Fails("0100vh", path.string() + ": " + failure.Description());
        }
        for (const int line : own.BadLines) Fails("0500vh", file + " line " + std::to_string(line));
        own.Pins.merge(pins_.Pins);  // the file's hold
        pins_ = std::move(own);
        return pins_.BadLines.empty();
    }
    static std::string FolderOf(const fs::path& file) {
        return file.has_parent_path() ? file.parent_path().string() : ".";
    }

    bool Synthesize(Synthesis& synthesis) {
        const bool isAnalysed = synthesis.FindTools(tongue_) && synthesis.Analyse(text_, tongue_);
        if (!TellAll(synthesis.Notes) || !isAnalysed) return false;
        synthesis.Notes.clear();
        bool isPassed = false;
        const std::string top = FindTop(isPassed);
        if (top.empty()) return isPassed;
        const bool isElaborated = synthesis.Elaborate(top, tongue_);
        const bool goesOn = isElaborated && !analyzes_;
        const std::string netlist = goesOn ? synthesis.Synthesize(top, tongue_, Wanted()) : "";
        const bool isClean = TellAll(synthesis.Notes) && isElaborated;
        if (isClean && analyzes_)
            Tell(Say("0305vh", top + (flags_.Analyze ? ", as Analyze Only is on" : "")));
        if (!isClean || !goesOn) return isClean;
        return !netlist.empty() && Compile(netlist, synthesis.SignalNames);
    }

    // Empty if there is none; `isPassed`: and none is needed.
    std::string FindTop(bool& isPassed) {
        const std::string wanted = call_.Top.empty() ? pins_.Top : call_.Top;
        const std::vector<Unit> units = UnitsOf(text_, tongue_);
        std::vector<std::string> candidates;
        for (const Unit& unit : units)
            if (unit.Name == wanted || (tongue_ == Tongue::Vhdl && base::EqualNoCase(unit.Name, wanted)))
                return unit.Name;
        if (!wanted.empty()) return Fails("0303vh", "no unit is named " + wanted), "";
        const auto top = TopOf(units, fs::path(base_).filename().string(), candidates);
        if (top) return *top;
        isPassed = candidates.empty() && analyzes_;
        if (isPassed) return Tell(Say("0304vh", "")), "";
        std::string list;
        for (const std::string& name : candidates) list += (list.empty() ? "" : ", ") + name;
        return Fails("0303vh", list.empty() ? "no unit has ports" : list), "";
    }

    SynthesisOptions Wanted() const {
        return {flags_.ClockEnable, !flags_.NoSync, flags_.ResetsOnly, flags_.Optimize >= 3};
    }

    std::string Device() const {
        if (!call_.Device.empty() && call_.Device != "&") return call_.Device;
        return pins_.Device.empty() ? "virtual" : pins_.Device;
    }

    Wishes DesignWishes() const {
        Wishes wishes;
        wishes.Name = fs::path(base_).filename().string();
        wishes.Device = Device();
        wishes.Origin = Mark + name_ + ": what is changed here is lost with the next run";
        wishes.IsVhdl = tongue_ == Tongue::Vhdl;
        wishes.PinsAreNodes = flags_.Pinnodes;
        wishes.Sync = flags_.NoSync ? SyncControls::None : SyncControlsOf(wishes.Device);
        wishes.MaxTerms = static_cast<std::size_t>(std::clamp(flags_.Product, 2, 4096));
        wishes.MaxInputs = static_cast<std::size_t>(std::max(flags_.And, 1));
        wishes.Describe = flags_.Display;
        wishes.Pins = pins_.Pins;
        return wishes;
    }

    bool Compile(const std::string& netlist, const std::map<std::string, std::string>& signalNames) {
        Wishes wishes = DesignWishes();
        wishes.SignalNames = signalNames;
        Design design;
        try {
            design = MakeDesign(ReadBlif(netlist), wishes);
        } catch (const convert::Failure& failure) {
            return Fails("0400vh", failure.What);
        }
        if (!TellAll(design.Notes)) return false;
        std::string text = design.File.Text();
        // A part of a larger design, which has its own header.
        if (flags_.Pinnodes) text.erase(0, text.find("/*"));
        if (!Replace(base_ + ".PLD", text)) return false;
        Tell(Say("0409vh", fs::path(base_).filename().string() + ".PLD"));
        return flags_.Pinnodes || CompileDesign(design, wishes.Device);
    }

    // What a user wrote under that name stays.
    bool Replace(const std::string& path, const std::string& text) {
        const auto old = kernel::DiskFiles().Read(path, front::Limits::FileBytes);
        std::error_code error;
        if ((old && !base::Contains(*old, Mark)) || (!old && fs::exists(kernel::HostPath(path), error)))
            return Fails("0101vh", path + " was not made by VHDLTesk and stays; move it away");
        if (text.size() > front::Limits::FileBytes)
            return Fails("0400vh", "the design is larger than the compiler takes");
        return WriteFile(path, text);
    }

    bool WriteFile(const std::string& path, const std::string& text) {
        const std::string refusal = kernel::DiskFiles().Write(path, text);
        return refusal.empty() || Fails("0101vh", path + ": " + refusal);
    }

    bool CompileDesign(const Design& design, const std::string& device) {
        std::vector<std::string> said;
        std::string letters = device == "virtual" ? "axlkb" : "jaxlkb";
        letters += flags_.Optimize >= 5 ? "m2" : "m4";
        if (kernel::IsFile(base_ + ".SI")) letters += "s";
        const bool isClean = compile_(base_, device, letters, call_.Library, said);
        for (const std::string& line : said) {
            lines_.push_back(line);
            if (line.find("] Error") != line.npos || line.find("] Warning") != line.npos)
                Explain(line, design);
        }
        return isClean;
    }

    // The compiler tells the design's names; the user knows those of the source.
    void Explain(const std::string& line, const Design& design) {
        std::string names;
        for (std::size_t at = line.find(']'); at < line.size();) {
            const std::size_t from = at;
            while (at < line.size() && base::IsWordChar(line[at])) ++at;
            const auto known = design.SourceNames.find(line.substr(from, at - from));
            if (known != design.SourceNames.end() && !base::EqualNoCase(known->first, known->second) &&
                !base::Contains(names, known->first + " "))
                names += (names.empty() ? "" : ", ") + known->first + " is " + known->second;
            at += at == from ? 1 : 0;
        }
        if (!names.empty()) Tell(Say("0410vh", names));
    }

    bool WriteList() {
        std::string text;
        for (const std::string& line : lines_) text += line + "\r\n";
        std::error_code error;
        if (!fs::is_directory(FolderOf(base_), error)) return true;
        return WriteFile(base_ + ".VLS", text);
    }

    const Call& call_;
    const Flags& flags_;
    bool analyzes_;
    const Compiler& compile_;
    std::vector<std::string>& lines_;
    std::string source_, base_, name_, text_;
    Tongue tongue_ = Tongue::Vhdl;
    PinFile pins_;
};

}  // namespace

bool RunFrontEnd(const Call& call, bool analyzes, const Compiler& compile, std::vector<std::string>& lines) {
    return FrontEnd(call, analyzes || call.Flags.Analyze, compile, lines).Run();
}

}  // namespace net
