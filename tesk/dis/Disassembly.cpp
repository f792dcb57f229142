#include "dis/Disassembly.h"

#include <algorithm>

#include "base/Text.h"
#include "cpld/ProofView.h"
#include "dis/Choose.h"
#include "dis/Complex.h"
#include "dis/DesignText.h"
#include "dis/Trial.h"
#include "dis/VectorText.h"
#include "front/Proving.h"
#include "model/Header.h"

namespace dis {
namespace {

// What the header of a design says of itself in the notes of its fuse file.
convert::PldFile HeaderOf(const proof::JedecFile& file, const Request& request) {
    convert::PldFile design;
    design.Name = request.Name;
    design.Partno = design.Date = design.Designer = design.Company = "None";
    design.Revision = "01";
    design.Origin = "Source out of a fuse map: each sum as its rows, each pin with the level of its fuses.";
    if (request.Minimize) design.Origin = "Source out of a fuse map, sums reduced.";
    const std::pair<std::string_view, std::string*> fields[] = {
        {"NAME", &design.Name},         {"PARTNO", &design.Partno},     {"DATE", &design.Date},
        {"REVISION", &design.Revision}, {"DESIGNER", &design.Designer}, {"COMPANY", &design.Company}};
    for (const auto line : base::LineViews(file.Specification)) {
        const auto trimmed = base::TrimView(line);
        const auto word = trimmed.substr(0, trimmed.find_first_of(" \t"));
        const auto value = base::TrimView(trimmed.substr(word.size()));
        for (const auto& [keyword, field] : fields)
            if (base::EqualNoCase(keyword, word) && !value.empty())
                *field = base::TrimView(value.substr(0, value.find(';')));
    }
    return design;
}

bool HasExclusive(const fit::Mode& mode) {
    return mode.AnyUse([](const fit::CellUse& use) { return use.XorTerms > 0; });
}

// The compiler has more ways than one to put equations into the rows.
bool LeavesChoice(const Programmed& chip) {
    const auto isBuried = [](const proof::Macrocell& cell) { return cell.Pin == 0; };
    return HasExclusive(*chip.Mode) || std::any_of(chip.Chip.Cells.begin(), chip.Chip.Cells.end(), isBuried);
}

// Whether the chip does what the equations say, whose nodes are true where the sums of the rows are.
proof::Verdict VerdictOf(proof::Equations equations, const proof::Chip& chip) {
    for (auto& name : equations.Names)
        for (const auto& cell : chip.Cells)
            if (name.Node && cell.Node == name.Place) name.ActiveLow = cell.Inverted != cell.PinInverted;
    return proof::Prove(equations, chip);
}

class Work {
  public:
    Work(const proof::JedecFile& file, std::string_view libraryText, const Request& request)
        : file_(file), libraryText_(libraryText), request_(request) {}

    Disassembly Run() {
        const auto library = fit::ReadLibrary(libraryText_);
        result_.Messages = file_.Messages;
        Take(library.Messages);
        if (!result_.Ok()) return std::move(result_);
        const auto complex = ReadComplexMap(file_, request_, result_.Messages);
        if (complex) WriteComplex(*complex);
        if (complex) return std::move(result_);
        const auto* device =
            result_.Ok() ? ChooseDevice(file_, library, request_.Device, result_.Messages) : nullptr;
        if (device == nullptr) return std::move(result_);
        auto fuses = file_.FuseMap(device->Fuses);
        if (fuses.empty()) fuses = file_.Fuses;  // of a map without signature
        const auto chip = ReadProgrammed(*device, fuses, result_.Messages);
        if (!chip) return std::move(result_);
        Write(library, *chip);
        TellOf(*chip);
        return std::move(result_);
    }

  private:
    void Take(const std::vector<Message>& messages) {
        result_.Messages.insert(result_.Messages.end(), messages.begin(), messages.end());
    }
    void Tell(MessageCode code, const std::string& detail = {}) {
        result_.Messages.push_back(model::MakeMessage(code.Entry(), {}, detail));
    }

    void Write(const fit::Library& library, const Programmed& chip) {
        const Naming naming(chip, request_.Names);
        auto design = HeaderOf(file_, request_);
        design.Device = chip.Device->Mnemonic;
        if (HasExclusive(*chip.Mode)) design.Origin += " Compile with kx, which keeps exclusive ors.";
        result_.Pld = InMode(design, library, chip, naming);
        result_.Device = design.Device;
        const auto head = std::string_view(result_.Pld).substr(0, result_.Pld.find("\r\n\r\n") + 4);
        result_.Si = VectorText(head, file_, chip, naming, result_.Messages);
    }

    // Nodes at their macrocells, if the fitter takes that.
    void WriteComplex(const ComplexMap& map) {
        auto design = HeaderOf(file_, request_);
        design.Origin = "Source out of a fuse map of a complex device.";
        result_.Device = map.Device.Name + map.Package;
        if (!file_.Vectors.empty()) Tell("7607tc", std::to_string(file_.Vectors.size()) + " vectors");
        for (const bool places : {true, false}) {
            result_.Pld = ComplexText(design, map, request_.Names, places);
            Trial trial(result_.Pld, libraryText_, request_.ComplexLibrary);
            if (trial.Compile() == nullptr) {
                if (!places) Tell("7604tc", trial.FirstError());
                continue;
            }
            if (places) ProveComplex(map, trial);
            return;
        }
    }

    void ProveComplex(const ComplexMap& map, Trial& trial) {
        const auto parts = cpld::ReadBack(map.Device, *map.Device.FindPackage(map.Package), map.From);
        const auto verdict = cpld::ViewForProof(front::ToEquations(trial.Of()), parts).Prove();
        if (!verdict.Differences.empty()) Tell("7604tc", verdict.Differences.front().Text);
    }

    // The text for the device, or for the one that forces the mode where the text would come out in another.
    std::string InMode(convert::PldFile& design, const fit::Library& library, const Programmed& chip,
                       const Naming& naming) {
        std::string obstacle;
        const auto* forced = ForcedMode(library, *chip.Device, *chip.Mode);
        for (const auto* device : {chip.Device, forced}) {
            if (device == nullptr) continue;
            design.Device = device->Mnemonic;
            TextOptions options{request_.Minimize, {}};
            auto text = DesignText(design, chip, naming, options);
            Trial trial(text, libraryText_, {}, HasExclusive(*chip.Mode));
            const auto* fit = trial.Compile();
            if (fit == nullptr) obstacle = trial.FirstError();
            if (fit == nullptr || fit->Mode != chip.Mode->Name) continue;
            const auto equations = front::ToEquations(trial.Of());
            options.Fuses = FusesBeside(equations, fit->Fuses, chip);
            TellOfRows(chip, options.Fuses);
            const auto verdict = VerdictOf(equations, chip.Chip);
            if (!verdict.Differences.empty()) Tell("7604tc", verdict.Differences.front().Text);
            if (!options.Fuses.empty()) text = DesignText(design, chip, naming, options);
            return text;
        }
        Tell("7604tc", obstacle.empty() ? "it comes out in another mode than " + chip.Mode->Name : obstacle);
        return DesignText(design, chip, naming, {request_.Minimize, {}});
    }

    // What the text must say of fuses. Where the compiler fills rows otherwise, all of them: a mixture does
    // something else.
    FuseList FusesBeside(const proof::Equations& equations, const std::vector<bool>& compiled,
                         const Programmed& chip) const {
        auto fuses = Differences(chip, compiled, false);
        if (request_.Minimize)
            std::erase_if(fuses, [&](const auto& fuse) { return chip.IsInArray(fuse.first); });
        if (request_.Minimize || !LeavesChoice(chip)) return fuses;
        auto mixed = compiled;
        for (const auto& [fuse, value] : fuses) mixed[fuse] = value;
        const auto found = proof::ReadBack(*chip.Device, mixed).Found;
        const bool isSame = found && VerdictOf(equations, *found).Differences.empty();
        return isSame ? fuses : Differences(chip, compiled, true);
    }

    void TellOfRows(const Programmed& chip, const FuseList& fuses) {
        const auto count = std::count_if(fuses.begin(), fuses.end(),
                                         [&](const auto& fuse) { return chip.IsInArray(fuse.first); });
        if (count > 0) Tell("7612tc", std::to_string(count) + " fuses");
    }

    void TellOf(const Programmed& chip) {
        if (file_.Secure.value_or(false)) Tell("7605tc");
        if (const auto rows = RowsWithoutEffect(chip); rows > 0) Tell("7606tc", std::to_string(rows));
        std::string pins;
        for (const auto& cell : chip.Chip.Cells)
            if (!cell.Known) pins += (pins.empty() ? "pin " : ", ") + std::to_string(cell.Node);
        if (!pins.empty()) Tell("7608tc", pins);
    }

    const proof::JedecFile& file_;
    std::string_view libraryText_;
    const Request& request_;
    Disassembly result_;
};

}  // namespace

Disassembly Disassemble(const proof::JedecFile& file, std::string_view library, const Request& request) {
    return Work(file, library, request).Run();
}

}  // namespace dis
