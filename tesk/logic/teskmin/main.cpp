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

enum Exit : int { exitDone = 0, exitBadFile = 1, exitUsage = 2, exitLesserLevel = 3 };

struct Arguments {
    logic::Level Level = logic::Level::m4;
    logic::Options Options;
    std::string File;
};

constexpr const char* usage = "usage: teskmin [-m0|-m1|-m2|-m3|-m4] [--single] FILE.pla (- reads standard input)";

bool Parse(int count, char** values, Arguments& arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string value = values[i];
        if (value.size() == 3 && value.starts_with("-m") && value[2] >= '0' && value[2] <= '4')
            arguments.Level = static_cast<logic::Level>(value[2] - '0');
        else if (value == "--single")
            arguments.Options.Shared = false;
        else if ((value.starts_with("-") && value != "-") || !arguments.File.empty())
            return false;
        else
            arguments.File = value;
    }
    return !arguments.File.empty();
}

std::string ReadAll(const std::string& file) {
    if (file == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf())) throw base::RunTimeError(base::errFileNotFound, "cannot be read");
    return text.str();
}

int Run(const Arguments& arguments) {
    const logic::Pla pla = logic::ReadPla(ReadAll(arguments.File));
    const logic::MinimizeResult result = logic::Minimize(pla, arguments.Level, arguments.Options);
    const std::string text = logic::WritePla(result.Terms, pla.InputNames, pla.OutputNames);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw base::RunTimeError(base::errDiskFull, "the result cannot be written");
    std::fprintf(stderr, "terms %zu literals %zu seconds %.4f\n", result.Terms.Size(), result.Terms.Literals(),
                 static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
    return result.Used == arguments.Level ? exitDone : exitLesserLevel;
}

}  // namespace

int main(int count, char** values) {
    Arguments arguments;
    if (!Parse(count, values, arguments)) {
        std::fprintf(stderr, "%s\n", usage);
        return exitUsage;
    }
    try {
        return Run(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "teskmin: %s: %s\n", arguments.File.c_str(), error.what());
        return exitBadFile;
    }
}
