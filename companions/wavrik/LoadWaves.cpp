#include "wavrik/LoadWaves.h"

#include <sys/stat.h>

#include <utility>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/modLib.h"
#include "wavrik/WaveReaders.h"

namespace wavrik {
namespace {

constexpr std::uint64_t mostBytes = std::uint64_t{256} << 20;  // of a file

// Seconds and nanoseconds; a file that is not there is the oldest.
std::pair<std::int64_t, std::int64_t> ModifiedAt(const std::string& hostPath) {
    struct stat status {};
    if (::stat(hostPath.c_str(), &status) != 0) return {-1, 0};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

Fields FieldsOf(const std::string& design, const platform::PathMap& paths) {
    try {
        return ReadFields(base::ReadWhole(paths.ToHost(design), mostBytes));
    } catch (const base::RunTimeError&) {
        return {};  // vectors may do without
    }
}

template <typename Read>
Loaded ReadFile(const std::string& path, const platform::PathMap& paths, const Read& read) {
    const std::string hostPath = paths.ToHost(path);
    struct stat status {};
    if (::stat(hostPath.c_str(), &status) == 0 && static_cast<std::uint64_t>(status.st_size) > mostBytes)
        throw base::RunTimeError(base::errInvalidCall, path + " is larger than 256 megabytes");
    std::string bytes;
    try {
        bytes = base::ReadWhole(hostPath, mostBytes);
    } catch (const base::RunTimeError& error) {
        throw base::RunTimeError(error.Number(), path + ": " + error.Description());
    }
    try {
        return {path, read(bytes)};
    } catch (const base::RunTimeError& error) {
        throw base::RunTimeError(error.Number(), path + ", " + error.Description());
    }
}

}  // namespace

Loaded LoadWaves(const std::string& path, const platform::PathMap& paths) {
    const std::string extension = base::FileExtension(path);
    const std::string name = base::StripExtension(path);
    const std::string results = name + ".SO";
    if (extension == "SI") {
        const auto simulated = ModifiedAt(paths.ToHost(results));
        if (simulated.first < 0 || simulated < ModifiedAt(paths.ToHost(path))) {
            const Fields fields = FieldsOf(name + ".PLD", paths);
            return ReadFile(path, paths, [&](const std::string& text) { return ReadTests(text, fields); });
        }
    }
    if (extension == "SI" || extension == "SO")
        return ReadFile(extension == "SO" ? path : results, paths, ReadResults);
    if (extension == "VCD") return ReadFile(path, paths, ReadDump);
    throw base::RunTimeError(base::errInvalidCall, path + " is no .SI, .SO or .VCD file");
}

}  // namespace wavrik
