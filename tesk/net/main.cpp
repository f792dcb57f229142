// VHDLTesk: the front end under its two names; ANALYZES tells the one that tests the text alone.
#include <cstdio>
#include <filesystem>

#include "base/CommandLine.h"
#include "base/ToolInterface.h"
#include "kernel/Paths.h"
#include "net/FrontEnd.h"

extern "C" std::int32_t TeskkVB(base::RunRecord* record);

// The entry below has no context.
static std::vector<std::string>* list = nullptr;

extern "C" std::int32_t SendMessageA(std::uint32_t, std::uint32_t message, std::uintptr_t,
                                     std::intptr_t lparam) {
    if (message == base::msgAddString) list->emplace_back(reinterpret_cast<const char*>(lparam));
    return 0;
}

namespace {

constexpr base::CommandLine program{
    "VHDLTesk", "VHDLTesk " VHDLTESK_VERSION "\n",
    "usage: VHDLTesk [OPTION...] [WORKDIR LIBRARY DEVICE] SOURCE.VHD[-FLAGS]\n",
    R"(usage: VHDLTesk [OPTION...] [WORKDIR LIBRARY DEVICE] SOURCE.VHD[-FLAGS]

Makes a .PLD of a VHDL source, or of a Verilog source (.V), and compiles it.
The one in the folder Utility tests the source and writes nothing but its list.
Messages go to standard output and into the .VLS beside the source.

  --top NAME     the entity or module to start from
  --seconds N    for each call of ghdl or yosys; 60 if left out
  --help         print this
  --version      print the version

Exit codes: 0 no errors, 1 errors in the source or with its files, 2 a wrong
call, 4 a fault of the program.
)"};

// The device library that the call names, or the one of the installation around this program.
std::string LibraryOf(const std::string& named) {
    std::error_code error;
    return std::filesystem::exists(named, error) ? named : kernel::InstalledLibrary();
}

bool Compile(const std::string& base, const std::string& device, const std::string& letters,
             const std::string& library, std::vector<std::string>& lines) {
    base::RunRecord record = base::EmptyRecord();
    const std::string found = LibraryOf(library);
    constexpr std::size_t most = base::RunRecord::TextSize;
    if (base.size() >= most || device.size() >= most || found.size() >= most) {
        lines.push_back(
            model::Headline(net::Say("0101vh", "the path is too long for the compiler: " + base)));
        return false;
    }
    base::SetText(record.szLibrary, found);
    base::SetText(record.szOptions, letters);
    base::SetText(record.szDevice, device);
    base::SetText(record.szDesign, base);
    list = &lines;
    return TeskkVB(&record) == 0;
}

int Run(const std::vector<std::string>& words) {
    const auto call = net::ParseCall(words);
    if (!call) throw base::WrongCall();
    std::vector<std::string> lines;
    const bool isClean = net::RunFrontEnd(*call, ANALYZES, Compile, lines);
    for (const std::string& line : lines) std::printf("%s\n", line.c_str());
    return isClean ? base::exitDone : base::exitErrors;
}

}  // namespace

int main(int count, char** values) { return base::RunProgram(program, count, values, Run); }
