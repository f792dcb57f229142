#include <array>

#include "front/Outputs.h"
#include "front/Run.h"

namespace front {

namespace {

struct Missing {
    bool Options::*Asked;
    std::string_view Extension;
};
constexpr std::array kMissing{
    Missing{&Options::Jedec, ".JED"}, Missing{&Options::Ascii, ".HEX"},  Missing{&Options::Hl, ".HL"},
    Missing{&Options::Pdif, ".PDF"},  Missing{&Options::Palasm, ".PDS"}, Missing{&Options::Edif, ".EDF"},
    Missing{&Options::Xnf, ".XNF"},   Missing{&Options::Qdif, ".QDF"},
};

void Write(Run& run, std::string_view extension, const std::string& text) {
    run.Said.Info(FileName(run.Output(extension)));
    if (!run.Disk.Write(run.Output(extension), text))
        run.Said.Add(Code::CannotWrite, {}, run.Output(extension));
}

void WriteAbs(Run& run) {
    const sim::AbsDesign design = ToAbs(run.Result());
    const bool large = design.Nets.size() > sim::AbsLimits::Nets ||
                       design.Fields.size() > sim::AbsLimits::Fields ||
                       design.Functions.size() > sim::AbsLimits::Functions;
    if (large)
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

}  // namespace

bool WriteStage(Run& run) {
    run.Said.Status("Writing");
    const Design& design = run.Result();
    if (design.Device != "virtual") run.Said.Add(Code::DeviceUnchecked, {0, 0, 0}, design.Device);
    const bool document = run.Options.Equations || run.Options.Fuse;
    if (document) Write(run, ".DOC", DocumentText(design, run.Options.Equations));
    if (run.Options.Absolute || run.Options.Simulate) WriteAbs(run);
    if (run.Options.Pla) WritePla(run);
    for (const Missing& missing : kMissing)
        if (run.Options.*missing.Asked) run.Said.Add(Code::OutputMissing, {0, 0, 0}, missing.Extension);
    return run.Ok();
}

}  // namespace front
