#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "base/CommandLine.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "front/Complex.h"
#include "front/Proving.h"
#include "front/Run.h"
#include "kernel/LastCompile.h"
#include "kernel/Paths.h"
#include "model/Jedec.h"
#include "proof/JedecFile.h"

// teskprove: whether a fuse map is the design.
namespace {

constexpr base::CommandLine kProgram{"teskprove", "teskprove " TESKPROVE_VERSION "\n",
                                     "usage: teskprove [-d DEVICE] DESIGN.PLD FILE.JED\n",
                                     R"(usage: teskprove [OPTION...] DESIGN.PLD FILE.JED

Proves that a fuse map is the design: reads the function of every pin out of
the fuses and compares it with the equations, for all values of their inputs.
What differs is told with values at which it does. Any writer's JEDEC file
will do.

  -d DEVICE  mnemonic; "&", the default, is the one that the design names
  --help     print this
  --version  print the version

Exit codes: 0 proved, 1 not proved: differences, equations that are too large
to compare, errors in the design or with the files, 2 a wrong call, 4 a fault
of the program.
)"};

struct Arguments {
    std::string Device = "&";
    std::string Design;
    std::string Jedec;
};

Arguments Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "-d" && i + 1 < words.size())
            arguments.Device = words[++i];
        else if (word.empty() || word[0] == '-' || !arguments.Jedec.empty())
            throw base::WrongCall();
        else
            (arguments.Design.empty() ? arguments.Design : arguments.Jedec) = word;
    }
    if (arguments.Jedec.empty()) throw base::WrongCall();
    return arguments;
}

void Say(const model::Message& message, const std::string& file) {
    std::printf("%s\n", model::ListLine(message, file).c_str());
}

class Proof {
  public:
    explicit Proof(const Arguments& arguments) : arguments_(arguments), run_(files_, silent_) {
        run_.Base = arguments.Design;
        if (run_.Base.size() > 4 && base::EqualNoCase(run_.Base.substr(run_.Base.size() - 4), ".PLD"))
            run_.Base.resize(run_.Base.size() - 4);
        run_.Device = arguments.Device;
        run_.Library = kernel::InstalledLibrary();
        run_.Options =
            front::Options::Parse(kernel::KeptLetters(files_.Identity(run_.Output(".PLD"))).value_or("jm4"));
        run_.Options.Expanded = false;
    }

    bool Run() {
        if (!Read()) return false;
        if (const auto name = front::SplitComplex(run_.Result().Device)) return ProveComplex(*name);
        libraryText_ = files_.Read(run_.Library, fit::LibraryLimits::FileBytes).value_or("");
        const fit::Library library = fit::ReadLibrary(libraryText_);
        const fit::Device* device = library.Find(run_.Result().Device);
        if (device == nullptr || device->IsVirtual()) {
            std::printf("%s: no device whose fuses are known\n", run_.Result().Device.c_str());
            return false;
        }
        const proof::ChipResult chip = proof::ReadBack(*device, jedec_.FuseMap(device->Fuses));
        for (const model::Message& message : chip.Messages) Say(message, arguments_.Jedec);
        const auto fit = [&] { return FitInto(run_.Result(), libraryText_, run_.Options, run_.Said); };
        if (!chip.Found || !Place(fit)) return false;
        if (!areNoted_) proof::SettleNodes(equations_, *chip.Found);
        return Tell(proof::Prove(equations_, *chip.Found), *chip.Found);
    }

  private:
    bool Tell(const proof::Verdict& verdict, const proof::Chip& chip) {
        for (const model::Message& message : proof::Tell(verdict, chip, !run_.Result().Fuses.empty()))
            Say(message, "");
        return verdict.Proved();
    }

    bool ProveComplex(const front::ComplexName& name) {
        const auto text = files_.Read(front::ComplexLibrary(run_.Library), front::kComplexLibraryBytes);
        const auto devices = cpld::ReadDevices(text.value_or(""));
        const cpld::Device* device = cpld::FindDevice(devices, name.Device);
        if (device == nullptr || device->FindPackage(name.Package) == nullptr) {
            std::printf("%s: no device whose fuses are known\n", run_.Result().Device.c_str());
            return false;
        }
        try {
            const auto parts = front::ReadComplex(*device, name.Package, jedec_.FuseMap(device->Fuses));
            const auto fit = [&] { return front::FitIntoComplex(run_.Result(), *text, false, run_.Said); };
            if (!Place(fit)) return false;
            auto view = cpld::ViewForProof(equations_, parts);
            if (!areNoted_) proof::SettleNodes(view.Design, view.Chip);
            return Tell(view.Prove(), view.Chip);
        } catch (const base::RunTimeError& error) {
            std::printf("%s: %s\n", arguments_.Jedec.c_str(), error.what());
            return false;
        }
    }

    bool Read() {
        const bool built = ExpandStage(run_) && AnalyseStage(run_) && BuildStage(run_);
        if (!built || !run_.Ok()) return SayErrors();
        const auto text = files_.Read(arguments_.Jedec, proof::JedecLimits::FileBytes);
        if (!text) {
            std::printf("%s: cannot be read\n", arguments_.Jedec.c_str());
            return false;
        }
        jedec_ = proof::ReadJedec(*text);
        for (const model::Message& message : jedec_.Messages) Say(message, arguments_.Jedec);
        return jedec_.Ok();
    }

    bool SayErrors() const {
        for (const model::Message& message : run_.Said.Messages())
            if (message.Level == model::Severity::Error)
                std::printf("%s\n", run_.Said.ListLine(message).c_str());
        return false;
    }

    // Names that the design does not place are where the notes of the fuse map tell, else where the fitter
    // puts them with the letters of the last compile.
    template <typename Fit>
    bool Place(const Fit& fit) {
        std::vector<model::PlaceNote> notes;
        for (const std::string& text : jedec_.Notes)
            if (auto note = model::ReadPlaceNote(text)) notes.push_back(std::move(*note));
        front::Design& design = run_.Result();
        for (const model::PlaceNote& note : notes)
            for (front::Variable& variable : design.Variables)
                if (variable.Name == note.Name && variable.Number == 0) variable.Number = note.Place;
        const bool isOpen =
            std::any_of(design.Variables.begin(), design.Variables.end(), [](const auto& variable) {
                return variable.Kind != front::VariableKind::Intermediate && variable.Number == 0;
            });
        if (isOpen && notes.empty() && !(MinimiseStage(run_) && fit())) return SayErrors();
        equations_ = front::ToEquations(design);
        SetLevels(notes);
        return true;
    }

    void SetLevels(const std::vector<model::PlaceNote>& notes) {
        for (const model::PlaceNote& note : notes)
            for (proof::Name& name : equations_.Names) {
                if (!note.Node || !name.Node || name.Text != note.Name) continue;
                name.ActiveLow = note.Low;
                areNoted_ = true;
            }
    }

    const Arguments& arguments_;
    kernel::DiskFiles files_;
    front::Listener silent_;
    front::Run run_;
    std::string libraryText_;
    proof::JedecFile jedec_;
    proof::Equations equations_;
    bool areNoted_ = false;  // the levels of nodes
};

}  // namespace

int main(int count, char** values) {
    return base::RunProgram(kProgram, count, values, [](const auto& words) {
        const Arguments arguments = Parse(words);
        const bool isProved = Proof(arguments).Run();
        return std::fflush(stdout) == 0 && isProved ? base::exitDone : base::exitErrors;
    });
}
