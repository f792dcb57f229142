#include "platform/qt/HostDatabase.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "platform/qt/JetTables.h"

namespace platform::qt {
namespace {

enum class Format { Sqlite, Jet, Unknown };

std::string ReadHead(const std::string& hostPath) {
    base::Descriptor file;
    struct stat status {};
    base::OpenRegular(hostPath, file, status);
    std::array<char, 32> bytes{};
    const ssize_t count = ::read(file.Get(), bytes.data(), bytes.size());
    if (count < 0) base::RaiseErrno(errno, hostPath);
    return {bytes.data(), static_cast<std::size_t>(count)};
}

Format FormatOf(std::string_view head) {
    using namespace std::string_view_literals;
    if (head.starts_with("SQLite format 3\0"sv)) return Format::Sqlite;
    const std::string_view name = head.size() > 4 ? head.substr(4) : head.substr(0, 0);
    if (name.starts_with("Standard Jet DB\0"sv) || name.starts_with("Standard ACE DB\0"sv))
        return Format::Jet;
    return Format::Unknown;
}

// The file that can't be opened, in words that name it.
std::string HeadOf(const std::string& hostPath, const std::string& path) {
    try {
        return ReadHead(hostPath);
    } catch (const base::RunTimeError& error) {
        if (error.Number() != base::errFileNotFound && error.Number() != base::errPathNotFound) throw;
        throw base::RunTimeError(errNoDatabaseFile, "Could not find file '" + path + "'.");
    }
}

}  // namespace

HostDatabaseEngine::HostDatabaseEngine(const FileSystem& files, std::string reader)
    : files_(files),
      reader_(reader.empty() ? QCoreApplication::applicationDirPath().toStdString() + "/jetreader"
                             : std::move(reader)) {}

std::unique_ptr<Database> HostDatabaseEngine::OpenDatabase(const std::string& path) {
    const std::string hostPath = files_.ToHostPath(path);
    switch (FormatOf(HeadOf(hostPath, path))) {
        case Format::Sqlite:
            return std::make_unique<SqlDatabase>(hostPath);
        case Format::Jet:
            return ReadJetFile(reader_, hostPath);
        case Format::Unknown:
            break;
    }
    throw base::RunTimeError(errDatabaseFormat, "Unrecognized database format '" + path + "'.");
}

}  // namespace platform::qt
