#include <algorithm>
#include <array>

#include "cpld/Svf.h"
#include "front/Complex.h"
#include "front/Outputs.h"
#include "front/Proving.h"
#include "front/Run.h"

namespace front {

namespace {

constexpr std::size_t kLibraryBytes = fit::LibraryLimits::FileBytes;

struct Missing {
    bool Options::*Asked;
    std::string_view Text;
};
constexpr std::array kMissing{
    Missing{&Options::Ascii, ".HEX, the device is no PROM"},
    Missing{&Options::Hl, ".HL, this compiler does not write HL"},
    Missing{&Options::Pdif, ".PDF, this compiler does not write PDIF"},
    Missing{&Options::Qdif, ".QDF, this compiler does not write QDIF"},
};

void Write(Run& run, std::string_view extension, const std::string& text) {
    run.Write(run.Output(extension), text);
}

const Fitted* FitOf(const Run& run) { return run.Fit ? &*run.Fit : nullptr; }

bool TooLarge(const sim::AbsDesign& design) {
    std::size_t terms = 0;
    std::size_t literals = 0;
    for (const sim::Function& function : design.Functions) {
        terms += function.Terms.size();
        for (const sim::Term& term : function.Terms) literals += term.size();
    }
    return design.Nets.size() > sim::AbsLimits::Nets || design.Fields.size() > sim::AbsLimits::Fields ||
           design.Functions.size() > sim::AbsLimits::Functions || terms > sim::AbsLimits::Terms ||
           literals > sim::AbsLimits::Literals;
}

void WriteAbs(Run& run) {
    const sim::AbsDesign design = ToAbs(run.Result(), FitOf(run));
    if (TooLarge(design))
        run.Said.Add(Code::OutputMissing, {0, 0, 0}, ".ABS, the design is larger than the simulator takes");
    else
        Write(run, ".ABS", sim::WriteAbs(design));
}

void WritePla(Run& run) {
    if (const auto text = PlaText(run.Result()))
        Write(run, ".PLA", *text);
    else
        run.Said.Add(Code::PlaTooLarge, {0, 0, 0});
}

void WritePds(Run& run) {
    const std::string obstacle = PdsObstacle(run.Result());
    if (obstacle.empty())
        Write(run, ".PDS", PdsText(run.Result()));
    else
        run.Said.Add(Code::OutputMissing, {0, 0, 0}, ".PDS, " + obstacle);
}

void WriteXnf(Run& run) {
    const auto text = run.Fit ? std::nullopt : XnfText(run.Result());
    if (text)
        Write(run, ".XNF", *text);
    else
        run.Said.Add(
            Code::OutputMissing, {0, 0, 0},
            run.Fit ? ".XNF, the device is no gate array" : ".XNF, it has no synchronous reset and preset");
}

// What lies beside the fuse map of a complex device: the fitting report, and the program that writes it.
void WriteComplex(Run& run, const std::string& base) {
    const ComplexFit& complex = *run.Fit->Complex;
    run.Write(base + ".FIT", ComplexReport(complex));
    if (complex.Settled.Settings.Jtag == cpld::JtagPins::User)
        return run.Said.Add(Code::OutputMissing, {},
                            ".SVF, the JTAG pins become ordinary ones; tesksvf --no-jtag writes it");
    const std::string title = run.Result().Device + ", " + std::string(FileName(base)) + ".JED";
    run.Write(base + ".SVF", cpld::WriteSvf(complex.Device, run.Fit->Result.Fuses, {title, false}));
}

// The file's name is the design's, or with option "n" what the header's Name gives.
void WriteJed(Run& run) {
    if (!run.Fit) return run.Said.Add(Code::OutputMissing, {0, 0, 0}, ".JED, a virtual device has no fuses");
    std::string path = run.Output(".JED");
    std::string name = run.Result().Head.Name();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !IsWordChar(c) && c != '-'; }, '_');
    if (run.Options.Name) path = Beside(run.Base, name + ".JED");
    const std::string text = JedecText(run.Result(), run.Options, *run.Fit);
    run.Said.Status("Proving");
    if (!ProveMap(run.Result(), *run.Fit, text, run.Said)) return;
    run.JedecPath = path;
    run.Write(path, text);
    if (run.Fit->Complex) WriteComplex(run, path.substr(0, path.size() - 4));
}

std::optional<Fitted> FitComplex(Run& run) {
    const std::string path = ComplexLibrary(run.Library);
    if (const auto library = run.Disk.Read(path, kComplexLibraryBytes))
        return FitIntoComplex(run.Result(), *library, run.Options.Secure, run.Said);
    run.Said.Add(Code::LibraryUnreadable, {0, 1, 0}, path);
    return std::nullopt;
}

bool Fit(Run& run) {
    if (run.Result().Device == "virtual") return true;
    run.Said.Status("Fitting");
    run.Said.Info(run.Result().Device);
    if (SplitComplex(run.Result().Device)) {
        run.Fit = FitComplex(run);
        return run.Ok();
    }
    const auto library = run.Disk.Read(run.Library, kLibraryBytes);
    if (library)
        run.Fit = FitInto(run.Result(), *library, run.Options, run.Said);
    else
        run.Said.Add(Code::LibraryUnreadable, {0, 1, 0}, run.Library);
    return run.Ok();
}

// What needs no device: a design that does not fit is looked into with these.
void WriteReadable(Run& run) {
    if (run.Options.Equations || run.Options.Fuse)
        Write(run, ".DOC", DocumentText(run.Result(), run.Options, FitOf(run)));
    if (run.Options.Pla) WritePla(run);
}

void WriteForDevice(Run& run) {
    if (run.Options.Jedec) WriteJed(run);
    if (run.Options.Absolute || run.Options.Simulate) WriteAbs(run);
    if (run.Options.Palasm) WritePds(run);
    if (run.Options.Edif) Write(run, ".EDF", EdifText(run.Result()));
    if (run.Options.Xnf) WriteXnf(run);
    for (const Missing& missing : kMissing)
        if (run.Options.*missing.Asked) run.Said.Add(Code::OutputMissing, {0, 0, 0}, missing.Text);
}

}  // namespace

bool WriteStage(Run& run) {
    const bool fits = Fit(run);
    run.Said.Status("Writing");
    WriteReadable(run);
    if (fits) WriteForDevice(run);
    if (!run.Ok()) return false;
    std::string names;
    if (run.Options.List) run.Written.emplace_back(FileName(run.Output(".LST")));
    for (const std::string& name : run.Written) names += (names.empty() ? "" : ", ") + name;
    run.Said.Add(Code::Written, {}, (names.empty() ? "nothing" : names) + " for " + run.Result().Device);
    return true;
}

}  // namespace front
