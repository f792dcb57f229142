#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace launcher {

// What was brought to a tree for one file of the installation.
struct Brought {
    bool IsLink = false;
    std::uint64_t Size = 0;    // of the installation's file
    std::int64_t Time = 0;     // its modification, nanoseconds
    std::uint64_t Digest = 0;  // of the bytes of a copy

    bool operator==(const Brought&) const = default;
};

// The record that a tree keeps of what is not its user's: a file `.installed` of lines.
struct TreeRecord {
    std::string Version;  // of the program that wrote it; empty: there is no record
    std::string Installation;
    std::map<std::string, Brought> Files;  // by path below the installation

    bool operator==(const TreeRecord&) const = default;
};

std::uint64_t DigestOf(std::string_view bytes);

std::string WriteRecord(const TreeRecord& record);
// A record that can't be read is none: then every file counts as the user's that differs from the
// installation's.
TreeRecord ReadRecord(std::string_view text);

// True if a version such as "5.10.0" comes after another.
bool IsNewer(std::string_view version, std::string_view than);

}  // namespace launcher
