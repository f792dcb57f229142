#include "base/CommandLine.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>

#include "base/PosixFile.h"

namespace base {

int RunProgram(const CommandLine& program, int count, char** values,
               const std::function<int(const std::vector<std::string>&)>& run) {
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i) words.emplace_back(values[i]);
    for (const std::string& word : words) {
        if (word != "--help" && word != "--version") continue;
        return WriteStandardOutput(word == "--help" ? program.Help : program.Version) ? exitDone : exitErrors;
    }
    try {
        return run(words);
    } catch (const WrongCall& wrong) {
        std::fprintf(stderr, "%s: %s\n%s", program.Name, wrong.Why, program.Usage);
        return exitUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: internal error: %s\n", program.Name, error.what());
        return exitFault;
    }
}

std::string JoinWords(const std::vector<std::string>& words, std::size_t begin, std::size_t end) {
    std::string text;
    for (std::size_t i = begin; i < end; ++i) text += (i > begin ? " " : "") + words[i];
    return text;
}

std::string ReadStandardInput(std::uint64_t limit) {
    const std::string name = "standard input";
    const Descriptor input(::dup(STDIN_FILENO));
    if (input.Get() < 0) RaiseErrno(errno, name);
    std::string bytes;
    ReadBlocks(input, name, [&](std::string_view block) {
        if (bytes.size() + block.size() > limit) RaiseErrno(ENOMEM, name);
        bytes += block;
    });
    return bytes;
}

bool WriteStandardOutput(std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

}  // namespace base
