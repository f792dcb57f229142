#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

// The option string PartitionFlags, single letters of which some have digits behind them, and the list of
// candidate devices in TEMP.DEV. Tables drive parser, writer and window.
namespace partitioner {

// What the window shows. The numbers are texts: what is typed is not restrained.
struct PartitionOptions {
    int Fit = 0;  // row of FitTable
    bool Split = false;
    std::string Chips = "5";
    std::string Solutions = "25";
    std::string Utilization = "100";
    std::string Time = "55";
    bool Report = false;
    bool SolutionList = false;
    bool Pld = false;
    std::string Cost = "2";
    std::string Power = "3";
    std::string Devices = "1";
};

enum class PartitionTab { Fitting, Files, Priority, Devices };

struct FitOption {
    std::string_view Token;
    const char* Control;
    const char* Caption;
};
inline constexpr FitOption FitTable[] = {
    {"a1", "optBest", "Best Fit. Optimize pin usage"},
    {"a2", "optFirst", "First Fit. Optimize product term usage"},
    {"h", "optHistory", "Design based on history file"},
};

struct PartitionBox {
    bool PartitionOptions::*Field;
    const char* Control;
    const char* Caption;
    PartitionTab Tab;
    char Letter;
};
inline constexpr PartitionBox BoxTable[] = {
    {&PartitionOptions::Split, "chkSplit", "Split product terms", PartitionTab::Fitting, 's'},
    {&PartitionOptions::Report, "chkReport", "Generate a report file", PartitionTab::Files, 'r'},
    {&PartitionOptions::SolutionList, "chkSolution", "Generate a text solution list", PartitionTab::Files,
     'd'},
    {&PartitionOptions::Pld, "chkPld", "Generate PLD files", PartitionTab::Files, 'o'},
};

// A text box of a number with its label and its arrows, in the order of window and string.
struct PartitionNumber {
    std::string PartitionOptions::*Field;
    const char* Label;
    const char* Control;
    const char* UpDown;
    const char* Caption;
    const char* Tip;
    std::int16_t DownAbove;  // the arrow down acts above this value,
    std::int16_t UpAbove;    // the arrow up above this one
    std::int16_t UpBelow;    // and below this one
    char Letter;
};
std::span<const PartitionNumber> NumberTable();    // of the tab Fitting
std::span<const PartitionNumber> PriorityTable();  // of the tab Priority; without limits

// Error 13, with all that stands before it in the tables read, if what stands for a number of the tab Fitting
// is none: the string of an Apply on one tab alone lacks them. A priority that lacks stays as it is.
void ParsePartitionFlags(std::string_view flags, PartitionOptions& options);

// The text of a number after a step of its arrows, `step` 1 or -1. A text that is no number is error 13.
std::string StepPartitionNumber(const PartitionNumber& number, const std::string& text, int step);
// A step of the arrows of a row of PriorityTable: the priorities stay a permutation of 1, 2 and 3.
void StepPriority(PartitionOptions& options, std::size_t row, int step);

// The parts of the string that one opening of the window has made.
class PartitionParts {
  public:
    void Make(PartitionTab tab, const PartitionOptions& options);
    std::string Flags() const { return fitting_ + files_ + priority_; }

  private:
    std::string fitting_, files_, priority_;
};

std::span<const char* const> DeviceCaptions();  // in the order of the control array Device
// A value for each of DeviceCaptions; none is ticked without the file.
std::vector<bool> ReadDevices(const platform::FileSystem& files, const std::string& zrxDir);
void WriteDevices(platform::FileSystem& files, const std::string& zrxDir, const std::vector<bool>& ticked);

}  // namespace partitioner
