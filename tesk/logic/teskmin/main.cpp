#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "base/CommandLine.h"
#include "base/RunTimeError.h"
#include "logic/Pla.h"

namespace {

constexpr int exitLesserLevel = 3;

struct Arguments {
    logic::Level Level = logic::Level::m4;
    logic::Options Options;
    std::string File;
};

constexpr base::CommandLine program{
    "teskmin", "teskmin " TESKMIN_VERSION "\n",
    "usage: teskmin [-m0|-m1|-m2|-m3|-m4] [--single] FILE.pla (- reads standard input)\n",
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
)"};

Arguments Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (const std::string& word : words) {
        if (word.size() == 3 && word.starts_with("-m") && word[2] >= '0' && word[2] <= '4')
            arguments.Level = static_cast<logic::Level>(word[2] - '0');
        else if (word == "--single")
            arguments.Options.Shared = false;
        else if ((word.starts_with("-") && word != "-") || !arguments.File.empty())
            throw base::WrongCall();
        else
            arguments.File = word;
    }
    if (arguments.File.empty()) throw base::WrongCall();
    return arguments;
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
    if (!base::WriteStandardOutput(text)) throw base::RunTimeError(base::errDiskFull, "cannot be written");
}

int Minimize(const Arguments& arguments) {
    const logic::Pla pla = logic::ReadPla(ReadAll(arguments.File));
    const logic::MinimizeResult result = logic::Minimize(pla, arguments.Level, arguments.Options);
    Write(logic::WritePla(result.Terms, pla.InputNames, pla.OutputNames));
    std::fprintf(stderr, "terms %zu literals %zu seconds %.4f\n", result.Terms.Size(),
                 result.Terms.Literals(), static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
    return result.Used == arguments.Level ? base::exitDone : exitLesserLevel;
}

const char* Name(const std::string& file) { return file == "-" ? "standard input" : file.c_str(); }

int Run(const Arguments& arguments) {
    try {
        return Minimize(arguments);
    } catch (const base::RunTimeError& error) {
        const bool output = error.Number() == base::errDiskFull;
        std::fprintf(stderr, "teskmin: %s: %s\n", output ? "standard output" : Name(arguments.File),
                     error.what());
        return base::exitErrors;
    }
}

}  // namespace

int main(int count, char** values) {
    return base::RunProgram(program, count, values, [](const auto& words) { return Run(Parse(words)); });
}
