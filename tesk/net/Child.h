#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Programs of others, run within bounds.
namespace net {

// The full path of a program on PATH; empty without one.
std::string FindProgram(const std::string& name);

struct ChildEnd {
    enum class How { Exited, Killed, TookTooLong, Stopped, NotStarted };
    How Kind = How::Exited;
    int Code = 0;        // of its exit, or the signal
    std::string Output;  // what it wrote to standard output and standard error, at most 1 MB of each
    std::string Errors;
};

// Runs a program in a folder, without input, in the plain locale, and waits for it. What it leaves running
// in its group ends with it, as does it itself after the time, or when a signal asks this program to end. It
// may take 4 GB of memory and write 256 MB to a file. `output`: a file of the folder for its standard output,
// which is then not read.
ChildEnd RunChild(const std::vector<std::string>& command, const std::string& folder, int seconds,
                  const std::string& output = {});

}  // namespace net
