#pragma once

#include <chrono>
#include <string>

namespace launcher {

enum class Answer {
    Nobody,   // no program listens
    Refused,  // or did not answer in time
    Taken
};

// Asks the program that listens in the run-time folder to open a file, given by its full host path.
Answer HandOver(const std::string& runTimeFolder, const std::string& path,
                std::chrono::milliseconds patience);

}  // namespace launcher
