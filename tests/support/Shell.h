#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>

// Programs as a shell runs them.
namespace test {

struct Outcome {
    int Exit;  // -1: ended by a signal
    std::string Text;
};

// The command may redirect; its standard output comes back.
inline Outcome RunShell(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    Outcome outcome{-1, ""};
    char part[4096];
    for (std::size_t n; (n = fread(part, 1, sizeof part, pipe)) > 0;) outcome.Text.append(part, n);
    const int status = pclose(pipe);
    if (WIFEXITED(status)) outcome.Exit = WEXITSTATUS(status);
    return outcome;
}

inline Outcome RunShell(const std::filesystem::path& folder, const std::string& command) {
    return RunShell("cd '" + folder.string() + "' && " + command);
}

}  // namespace test
