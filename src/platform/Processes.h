#pragma once

#include <cstdint>
#include <string>

namespace platform {

// A file as one argument of a command line, which is split at blanks.
inline std::string Argument(const std::string& file) {
    return file.find_first_of(" \t") == std::string::npos ? file : '"' + file + '"';
}

// Programs on the host, started from command lines of the logic: the program first (a logic path may hold
// blanks: the shortest head that names a file is the program), then the arguments. Whole drive paths among
// the tokens are mapped; a token may be quoted.
class Processes {
  public:
    using Id = std::uint32_t;

    virtual ~Processes() = default;

    // Starts in a normal window and does not wait. Errors: 53 no such program, 75 not allowed, 5 empty line.
    virtual Id Start(const std::string& commandLine) = 0;
    virtual Id StartBehind(const std::string& commandLine) = 0;  // the keys stay where they are
    // ShellExecuteA, show mode 5: the desktop opens the file with what it holds for right. Error 75 if it
    // can't.
    virtual void ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                              const std::string& directory) = 0;
    // Waits for the end; the windows paint meanwhile, what the user does is thrown away. An unknown id
    // returns at once. Throws base::RunTimeError 51 if the program went on and on and the user has stopped
    // it.
    virtual void Wait(Id process) = 0;
    virtual bool IsRunning(Id process) const = 0;
};

}  // namespace platform
