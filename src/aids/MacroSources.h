#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "aids/MacroLibrary.h"
#include "platform/Dialogs.h"

namespace aids {

// The reader of the macros that a design defines or includes. Others of its ways than LoadMacroFile are kept:
// text ahead of a file's first `$MACRO` counts as a body, and a nested `$INCLUDE` loses the name's last
// letter.
class MacroSources {
  public:
    // `folder`: the design's, with final backslash.
    MacroSources(const platform::FileSystem& files, platform::Dialogs& boxes, std::string folder,
                 MacroTable& table)
        : files_(files), boxes_(boxes), folder_(std::move(folder)), table_(table) {}

    // The included files first, then what stands in the text itself. The table keeps what was read before an
    // error: 9 for more definitions than it holds, 28 for a file that includes itself.
    void ReadDesign(std::string_view text);

  private:
    void ReadMacroFile(const std::string& path);
    void ReadLines(std::string_view text);
    void ReadNested(std::string_view line);

    const platform::FileSystem& files_;
    platform::Dialogs& boxes_;
    std::string folder_;
    MacroTable& table_;
    std::vector<std::string> open_;  // files being read, each included by the one before
};

}  // namespace aids
