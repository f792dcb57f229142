#include "kernel/EarlierOutputs.h"

#include <unistd.h>

#include <array>
#include <filesystem>

#include "base/PosixFile.h"
#include "front/Files.h"
#include "kernel/Paths.h"

namespace kernel {

namespace {

struct OutputOf {
    bool front::Options::*Asked;
    std::string_view Extension;
};
constexpr std::array kOutputs{
    OutputOf{&front::Options::Jedec, ".JED"},     OutputOf{&front::Options::Fuse, ".DOC"},
    OutputOf{&front::Options::Equations, ".DOC"}, OutputOf{&front::Options::Absolute, ".ABS"},
    OutputOf{&front::Options::List, ".LST"},      OutputOf{&front::Options::Expanded, ".MX"},
    OutputOf{&front::Options::Pla, ".PLA"},       OutputOf{&front::Options::Palasm, ".PDS"},
    OutputOf{&front::Options::Edif, ".EDF"},      OutputOf{&front::Options::Xnf, ".XNF"},
    OutputOf{&front::Options::Simulate, ".SO"},   OutputOf{&front::Options::Simulate, ".VCD"},
};

bool IsSame(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec && a.st_size == b.st_size;
}

}  // namespace

std::set<std::string_view> OutputsOf(const front::Options& options) {
    std::set<std::string_view> extensions;
    for (const OutputOf& output : kOutputs)
        if (options.*output.Asked) extensions.insert(output.Extension);
    return extensions;
}

EarlierOutputs::EarlierOutputs(const std::string& base, const front::Options& options) {
    std::set<std::string_view> extensions = OutputsOf(options);
    if (options.Jedec) extensions.insert({".FIT", ".SVF"});  // of complex devices
    for (const std::string_view extension : extensions) {
        std::error_code error;
        const std::string name = base + std::string(extension);
        const auto path = std::filesystem::canonical(HostPath(name), error);
        struct stat status {};
        if (!error && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode))
            files_[path.string()] = {std::string(front::FileName(name)), status};
    }
}

void EarlierOutputs::RemoveThoseLeft(std::string_view refusals) const {
    for (const auto& [path, file] : files_) {
        struct stat now {};
        const bool refused = refusals.find(": " + file.Name + ": ") != refusals.npos;
        if (!refused && ::stat(path.c_str(), &now) == 0 && IsSame(file.Before, now) &&
            !base::IsReadOnly(now, path))
            ::unlink(path.c_str());
    }
}

}  // namespace kernel
