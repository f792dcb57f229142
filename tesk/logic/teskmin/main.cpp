#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "base/RunTimeError.h"
#include "logic/Pla.h"

namespace {

enum Exit : int { exitDone = 0, exitBadFile = 1, exitUsage = 2, exitLesserLevel = 3, exitFault = 4 };

struct Arguments {
    logic::Level Level = logic::Level::m4;
    logic::Options Options;
    std::string File;
    const char* Answer = nullptr;  // what --help or --version print
};

constexpr const char* usage =
    "usage: teskmin [-m0|-m1|-m2|-m3|-m4] [--single] FILE.pla (- reads standard input)";
constexpr const char* version = "teskmin " TESKMIN_VERSION "\n";
constexpr const char* help =
    R"(usage: teskmin [OPTION...] FILE.pla

Minimizes the cover in a Berkeley PLA file (type f, fd, fr or fdr; - reads
standard input), writes it as type f to standard output and the numbers of
terms, literals and seconds to standard error.

  -m0        nothing but empty rows goes
  -m1        absorption and adjacency
  -m2        the least number of terms, proved
  -m3        one quick round of expansion
  -m4        the best heuristic (unless another level is given)
  --single   each output alone: no term has two outputs
  --help     print this
  --version  print the version

Exit codes: 0 done, 1 a file that can't be read, is wrong or can't be written,
2 a wrong call, 3 done, but the level gave up and answered with a lesser one,
4 a fault of the program.
)";

bool Parse(int count, char** values, Arguments& arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string value = values[i];
        if (value.size() == 3 && value.starts_with("-m") && value[2] >= '0' && value[2] <= '4')
            arguments.Level = static_cast<logic::Level>(value[2] - '0');
        else if (value == "--single")
            arguments.Options.Shared = false;
        else if (value == "--help" || value == "--version")
            arguments.Answer = value == "--help" ? help : version;
        else if ((value.starts_with("-") && value != "-") || !arguments.File.empty())
            return false;
        else
            arguments.File = value;
    }
    return arguments.Answer != nullptr || !arguments.File.empty();
}

std::string ReadAll(const std::string& file) {
    if (file == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf()))
        throw base::RunTimeError(base::errFileNotFound, "cannot be read");
    return text.str();
}

void Write(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw base::RunTimeError(base::errDiskFull, "cannot be written");
}

int Run(const Arguments& arguments) {
    if (arguments.Answer != nullptr) {
        Write(arguments.Answer);
        return exitDone;
    }
    const logic::Pla pla = logic::ReadPla(ReadAll(arguments.File));
    const logic::MinimizeResult result = logic::Minimize(pla, arguments.Level, arguments.Options);
    Write(logic::WritePla(result.Terms, pla.InputNames, pla.OutputNames));
    std::fprintf(stderr, "terms %zu literals %zu seconds %.4f\n", result.Terms.Size(),
                 result.Terms.Literals(), static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
    return result.Used == arguments.Level ? exitDone : exitLesserLevel;
}

const char* Name(const std::string& file) { return file == "-" ? "standard input" : file.c_str(); }

}  // namespace

int main(int count, char** values) {
    Arguments arguments;
    if (!Parse(count, values, arguments)) {
        std::fprintf(stderr, "%s\n", usage);
        return exitUsage;
    }
    try {
        return Run(arguments);
    } catch (const base::RunTimeError& error) {
        const bool output = error.Number() == base::errDiskFull;
        std::fprintf(stderr, "teskmin: %s: %s\n", output ? "standard output" : Name(arguments.File),
                     error.what());
        return exitBadFile;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "teskmin: internal error: %s\n", error.what());
        return exitFault;
    }
}
