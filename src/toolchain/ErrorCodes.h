#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Dialogs.h"
#include "platform/FileSystem.h"

namespace toolchain {

// What the compiler's message data says about one code: four digits and the two letters of the stage.
struct ErrorEntry {
    std::string Code;
    std::string Level;
    std::string Message;
    std::string Description;
    std::string Information;
};

// The message data of TeskErr.txt, loaded once at start-up.
class ErrorCodes {
  public:
    static constexpr std::uint64_t MaxFileSize = 16u << 20;  // bytes; a larger file is refused as unreadable

    std::vector<ErrorEntry> ErrorTable;
    std::int16_t ErrorCount = 0;  // lines of the file by three, rounded; the length of ErrorTable

    // `programDir` with or without final backslash. A file that is missing or damaged shows a box; what was
    // read before the damage stays.
    void LoadErrorCodes(const platform::FileSystem& files, platform::Dialogs& boxes,
                        const std::string& programDir);

    // The entry of `code`, else the first of its family (same first two and last two characters), else the
    // texts of an unknown error.
    void LookupError(const std::string& code, std::string& level, std::string& message,
                     std::string& description, std::string& information) const;

  private:
    void Read(std::string_view text);
    const ErrorEntry* Find(std::string_view code) const;
};

// The code of a line "[0123ab] text" of the message list: "[" first, then four digits, "]" in place 8.
std::optional<std::string> ParseListLine(std::string_view line);

}  // namespace toolchain
