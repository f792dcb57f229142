#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/CommandLine.h"
#include "convert/Failure.h"

// What the converter programs have in common.
namespace convert {

struct Job {
    std::string Input;   // a name as kernel::HostPath takes it
    std::string Output;  // the same; beside the input, ".PLD", unless the command names it
};

// Puts the pieces of a command line together: names may hold blanks. The second name of two begins at the
// root of a drive or of the host. Empty names if the command is not understood.
Job ReadJob(const std::vector<std::string>& arguments, bool namesOutput);

// The host path of a file that the desktop names, blanks and backslashes as they come.
std::string FileOf(const std::string& name);

using Converter = std::function<Conversion(std::string_view text, const std::string& name)>;

// Reads, converts and writes, and gives the exit code; tells on standard error what went wrong, with the
// line. No file is touched unless the whole design was converted.
int RunConverter(const std::string& program, const Job& job, const Converter& convert);

// The whole of main: `what` is one of PLA2TESK, PTOT, ONTESK, TDF2TESK, NTR.
int ConverterMain(const std::string& what, const std::vector<std::string>& arguments);

}  // namespace convert
