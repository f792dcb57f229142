#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// What programs of the command line have in common.
namespace base {

enum Exit : int { exitDone = 0, exitErrors = 1, exitUsage = 2, exitFault = 4 };

// What a program says of itself, each text with its line end.
struct CommandLine {
    const char* Name;
    const char* Version;
    const char* Usage;  // one line
    const char* Help;
};

// The words can't be worked on: thrown by a program, told with its usage, exit code 2.
struct WrongCall {
    const char* Why = "the command is not understood";
};

// The whole of main: answers --help and --version wherever they stand, else runs the program on the words
// behind its name. Gives the exit code: its own, or that of a fault for an error that it does not handle.
int RunProgram(const CommandLine& program, int count, char** values,
               const std::function<int(const std::vector<std::string>& words)>& run);

// The words from `begin` to before `end`, a blank between two: a name with blanks comes in pieces.
std::string JoinWords(const std::vector<std::string>& words, std::size_t begin, std::size_t end);

// All of the standard input, at most `limit` bytes; throws as ReadWhole does.
std::string ReadStandardInput(std::uint64_t limit);

// False if not all of it could be written.
bool WriteStandardOutput(std::string_view text);

}  // namespace base
