#include "partitioner/PartitionOptions.h"

#include <array>
#include <limits>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"

namespace partitioner {
namespace {

using O = PartitionOptions;

constexpr std::int16_t least = std::numeric_limits<std::int16_t>::min();
constexpr std::int16_t most = std::numeric_limits<std::int16_t>::max();

// Kept: up to 10 the chips can only be lowered by their arrows, from there on nothing stops them.
constexpr PartitionNumber numbers[] = {
    {&O::Chips, "Label1", "txtChips", "UpDownChips", "Maximum number of chips",
     "Partition using no more chips than this number", 1, 10, most, 'm'},
    {&O::Solutions, "Label2", "txtSolutions", "UpDownSolutions", "Maximum number of solutions",
     "Stop searching after maximum number is reached", 1, least, 50, 'l'},
    {&O::Utilization, "Label3", "txtUtilization", "UpDownProduct", "% product term utilization",
     "Maximum product term usage for any given signal", 30, least, 100, 'u'},
    {&O::Time, "Label4", "txtTime", "UpDownTime", "Maximum running time", "Maximum running time in minutes",
     1, least, 60, 't'},
};

constexpr PartitionNumber priorities[] = {
    {&O::Cost, "Label5", "txtCost", "UpDownCost", "Sort based on cost", "", 0, 0, 0, 'c'},
    {&O::Power, "Label6", "txtPower", "UpDownPower", "Sort based power", "", 0, 0, 0, 'p'},
    {&O::Devices, "Label7", "txtDevices", "UpDownDevices", "Sort based on number of devices", "", 0, 0, 0,
     'N'},
};

// Kept: the time is neither read nor written, stored strings all bear this one.
constexpr char timeLetter = 't';
constexpr const char* timeText = "t00:00:55";

constexpr const char* captions[] = {
    "EP300",   "EP320",    "EP600",  "EP900",   "F100",    "F103",   "F153",   "F161",   "F162",    "F163",
    "F173",    "F16V8",    "F18V8Z", "F20V8",   "F473",    "G16V8A", "G16Z8",  "G18V10", "G20V8",   "G20V8A",
    "G22V10",  "G26CV12",  "G6001",  "P10L8",   "P12H6",   "P12L10", "P12L6",  "P14H4",  "P14L4",   "P16L8",
    "P16C1",   "P16H2",    "P16L2",  "P16L6",   "P16L8",   "P16N8",  "P16P8",  "P16R4",  "P16R6",   "P16R8",
    "P8L14",   "P18CV8",   "P18L4",  "P18P8",   "P18U8",   "P18V8",  "P19R4R", "P19R6",  "P20CG10", "P20L8",
    "P22CV10", "P22CV10Z", "P22V10", "P22VP10", "P32XV10", "P6L16"};
static_assert(std::size(captions) == 56);

// Kept: a letter counts wherever it stands first, also inside of another token; without it the string's first
// characters are taken.
std::string Behind(std::string_view flags, char letter, std::size_t count) {
    const auto at = flags.find(letter);
    return std::string(flags.substr(at == flags.npos ? 0 : at + 1, count));
}

std::string NumberBehind(std::string_view flags, char letter) {
    try {
        return std::to_string(base::TextToInt16(Behind(flags, letter, 3)));
    } catch (const base::RunTimeError& error) {
        throw base::RunTimeError(error.Number(), std::string(error.Description()) +
                                                     ": the fitting parameters have no number for \"" +
                                                     letter + "\". Look through all tabs.");
    }
}

std::string Letters(PartitionTab tab, const PartitionOptions& options) {
    std::string letters;
    for (const PartitionBox& box : BoxTable) {
        if (box.Tab == tab && options.*box.Field) letters += box.Letter;
    }
    return letters;
}

// Kept: with one backslash more than it takes.
std::string DeviceFile(const std::string& zrxDir) { return zrxDir + "\\TEMP.DEV"; }

}  // namespace

std::span<const PartitionNumber> NumberTable() { return numbers; }
std::span<const PartitionNumber> PriorityTable() { return priorities; }
std::span<const char* const> DeviceCaptions() { return captions; }

void ParsePartitionFlags(std::string_view flags, PartitionOptions& options) {
    options.Fit = 0;
    while (options.Fit < 2 && !base::Contains(flags, FitTable[options.Fit].Token)) ++options.Fit;
    for (const PartitionBox& box : BoxTable) options.*box.Field = flags.find(box.Letter) != flags.npos;
    for (const PartitionNumber& row : priorities) {
        if (flags.find(row.Letter) != flags.npos) options.*row.Field = Behind(flags, row.Letter, 1);
    }
    for (const PartitionNumber& row : numbers) {
        if (row.Letter != timeLetter) options.*row.Field = NumberBehind(flags, row.Letter);
    }
}

std::string StepPartitionNumber(const PartitionNumber& number, const std::string& text, int step) {
    const std::int16_t value = base::TextToInt16(text);
    const bool acts = step < 0 ? value > number.DownAbove : value > number.UpAbove && value < number.UpBelow;
    return acts ? std::to_string(value + step) : text;
}

void StepPriority(PartitionOptions& options, std::size_t row, int step) {
    constexpr std::array<std::array<std::size_t, 2>, 3> partners = {{{1, 2}, {0, 2}, {1, 0}}};
    std::string& field = options.*priorities[row].Field;
    const std::int16_t value = base::TextToInt16(field);
    if (step < 0 ? value <= 1 : value >= 3) return;
    const std::string next = std::to_string(value + step);
    // The power at 3 looks at its partners in the other order.
    const bool isTurned = row == 1 && step < 0 && value == 3;
    std::string& first = options.*priorities[partners.at(row).at(isTurned ? 1 : 0)].Field;
    std::string& second = options.*priorities[partners.at(row).at(isTurned ? 0 : 1)].Field;
    (first == next ? first : second) = std::to_string(value);
    field = next;
}

void PartitionParts::Make(PartitionTab tab, const PartitionOptions& options) {
    if (tab == PartitionTab::Fitting) {
        fitting_ = std::string(FitTable[options.Fit].Token) + Letters(tab, options);
        for (const PartitionNumber& row : numbers) {
            if (row.Letter != timeLetter) fitting_ += row.Letter + base::PadLeft(options.*row.Field, 3, '0');
        }
        fitting_ += timeText;
    } else if (tab == PartitionTab::Files) {
        files_ += Letters(tab, options);  // kept: repeated at each Apply, they are only searched for
    } else if (tab == PartitionTab::Priority) {
        priority_.clear();
        for (const PartitionNumber& row : priorities) priority_ += row.Letter + options.*row.Field;
    }
}

std::vector<bool> ReadDevices(const platform::FileSystem& files, const std::string& zrxDir) {
    std::vector<bool> ticked(std::size(captions));
    if (!files.FileExists(DeviceFile(zrxDir))) return ticked;
    for (const std::string& line : base::Lines(files.ReadFile(DeviceFile(zrxDir)))) {
        for (std::size_t i = 0; i < ticked.size(); ++i) ticked[i] = ticked[i] || line == captions[i];
    }
    return ticked;
}

void WriteDevices(platform::FileSystem& files, const std::string& zrxDir, const std::vector<bool>& ticked) {
    if (!files.DirectoryExists(zrxDir)) files.MakeDirectory(zrxDir);
    std::string text;
    for (std::size_t i = 0; i < std::size(captions); ++i) {
        if (ticked[i]) text += std::string(captions[i]) + "\r\n";
    }
    files.WriteFile(DeviceFile(zrxDir), text);
}

}  // namespace partitioner
