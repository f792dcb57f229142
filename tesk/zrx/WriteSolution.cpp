#include <algorithm>

#include "base/Text.h"
#include "zrx/Input.h"
#include "zrx/PldFile.h"

namespace zrx {

namespace {

constexpr std::size_t chosenBytes = 1u << 16;

// The devices of the chosen entry: the first line of the file, one blank between two.
std::string Chosen(const Call& call) {
    const auto text = call.Disk.Read(call.DeviceFile, chosenBytes);
    std::string devices;
    if (text && !text->empty())
        for (const std::string_view word : base::Words(base::LineViews(*text).front()))
            devices += (devices.empty() ? "" : " ") + std::string(word);
    return devices;
}

// Whether the file is the partitioner's own, or is not there.
bool MayWrite(const Call& call, const std::string& path) {
    const auto there = call.Disk.Read(path, DocumentLimits::FileBytes);
    if (!there || base::Contains(*there, writtenHere)) return true;
    call.Say(path + " was not written by the partitioner and stays as it is. Rename it.");
    return false;
}

void Write(const Call& call, const std::string& path, const std::string& text) {
    const std::string failure = call.Disk.Write(path, text);
    call.Say(failure.empty() ? "Written: " + std::string(front::FileName(path))
                             : path + " was not written: " + failure);
}

void WriteDesigns(const Call& call, const Partition& partition) {
    const auto path = [&](std::size_t chip) { return call.Design + "_" + std::to_string(chip + 1) + ".PLD"; };
    for (std::size_t chip = 0; chip < partition.Chips(); ++chip)
        if (!MayWrite(call, path(chip))) return;
    for (std::size_t chip = 0; chip < partition.Chips(); ++chip)
        Write(call, path(chip), partition.PldText(chip));
}

void WriteFiles(const Call& call, const Problem& problem, const Solution& solution,
                const Document& document) {
    const Partition partition(problem, solution, document);
    if (call.Options.Pld) WriteDesigns(call, partition);
    if (call.Options.Report) Write(call, call.Design + ".ZRP", partition.Report());
    if (call.Options.List) Write(call, call.Design + ".SOL", ListLine(Keep(problem, solution)) + "\r\n");
}

}  // namespace

void WriteSolution(const Call& call) {
    const auto document = LoadDocument(call);
    const auto database = document ? LoadDatabase(call) : std::nullopt;
    if (!database) return;
    const std::string devices = Chosen(call);
    const SolutionFile file = LoadSolutions(call);
    const auto kept = std::find_if(file.Solutions.begin(), file.Solutions.end(),
                                   [&](const KeptSolution& one) { return one.Devices == devices; });
    if (kept == file.Solutions.end())
        return call.Say("\"" + base::DisplayUtf8(devices) +
                        "\" is no solution of the last search. Find solutions again.");
    const auto problem =
        MakeProblem(call, *document, *database, CandidatesOf(call, *database, devices), file.SplitAt);
    const auto solution = problem == nullptr ? std::nullopt : Restore(*problem, *kept);
    if (!solution) return call.Say("The design was changed since the last search. Find solutions again.");
    WriteFiles(call, *problem, *solution, *document);
}

}  // namespace zrx
