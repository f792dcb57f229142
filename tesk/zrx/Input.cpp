#include "zrx/Input.h"

#include <algorithm>
#include <set>

#include "base/Text.h"

namespace zrx {

namespace {

constexpr std::size_t listBytes = 1u << 20;  // of candidate devices
constexpr std::size_t solutionsBytes = 64u << 20;

// What the header of a design gives as its name; empty if that is not seen at once.
std::string NameOf(std::string_view design) {
    for (const std::string_view line : base::LineViews(design)) {
        const auto words = base::Words(line);
        if (words.size() < 2 || !base::EqualNoCase(words[0], "Name")) continue;
        const std::string_view rest = base::TrimView(line).substr(words[0].size());
        return rest.find(';') == rest.npos ? "" : base::Trim(rest.substr(0, rest.find(';')));
    }
    return {};
}

}  // namespace

std::optional<Document> LoadDocument(const Call& call) {
    const std::string path = call.Design + ".DOC";
    const auto text = call.Disk.Read(path, DocumentLimits::FileBytes);
    if (!text) {
        call.Say(path + " cannot be read, or is too large.");
        return std::nullopt;
    }
    Document document = ReadDocument(*text);
    if (!document.Error.empty()) {
        call.Say(path + ": " + document.Error + ". Recompile the design with expanded product terms.");
        return std::nullopt;
    }
    const auto design = call.Disk.Read(call.Design + ".PLD", DocumentLimits::FileBytes);
    const std::string name = design ? NameOf(*design) : "";
    if (name.empty() || name == document.Name()) return document;
    call.Say(path + " is of the design " + document.Name() + ", not of " + name + ". Recompile the design.");
    return std::nullopt;
}

std::optional<Database> LoadDatabase(const Call& call) {
    const std::string path = call.Directory + "zrxlib.db";
    const auto bytes = call.Disk.Read(path, DatabaseLimits::FileBytes);
    if (!bytes) {
        call.Say("The device library " + path + " cannot be read.");
        return std::nullopt;
    }
    Database database = ReadDatabase(*bytes);
    if (database.Error.empty()) return database;
    call.Say("The device library " + path + " is damaged: " + database.Error + ".");
    return std::nullopt;
}

std::vector<Candidate> CandidatesOf(const Call& call, const Database& database, std::string_view names) {
    std::vector<Candidate> candidates;
    std::set<std::string> seen;
    for (const std::string_view line : base::LineViews(names.substr(0, listBytes)))
        for (std::string_view word : base::Words(line)) {
            const std::string name(word.substr(0, word.find('*')));
            if (!seen.insert(base::Upper(name)).second) continue;
            const DeviceRecord* record = database.Find(name);
            auto limits = record == nullptr ? std::nullopt : LimitsOf(*record);
            if (limits) {
                Utilize(*limits, call.Options.Utilization);
                candidates.push_back(
                    {std::move(*limits), std::max<int>(record->Cost, 0), std::max<int>(record->Power, 0)});
            } else {
                call.Say(base::DisplayUtf8(name) + " is left out: " +
                         (record == nullptr ? "it is not in zrxlib.db."
                                            : "its limits are not known, the compiler has no such device."));
            }
        }
    return candidates;
}

std::unique_ptr<Problem> MakeProblem(const Call& call, const Document& document, const Database& database,
                                     std::vector<Candidate> candidates, std::size_t splitAt) {
    fit::Design design = document.Design;
    const DeviceRecord* record = database.Find(document.Device);
    const auto device = record == nullptr ? std::nullopt : LimitsOf(*record);
    const std::string unclocked = AddImplied(design, device ? &*device : nullptr);
    if (!unclocked.empty()) {
        call.Say("The register " + unclocked + " has no clock. Give it an equation with .CK.");
        return nullptr;
    }
    CompleteSums(design);
    if (Split(design, splitAt) > 0) CompleteSums(design);
    return std::make_unique<Problem>(std::move(design), std::move(candidates));
}

SolutionFile LoadSolutions(const Call& call) {
    const auto text = call.Disk.Read(call.Design + solutionsExtension, solutionsBytes);
    return text ? ReadSolutions(*text) : SolutionFile();
}

}  // namespace zrx
