#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "session/Records.h"

namespace editor {

// The private copy of the custom tools that frmKorvane edits. A line of its list is a tool with a Program;
// lines count from 0.
class CustomTools {
  public:
    using Table = std::array<session::CustomUtility, 6>;

    explicit CustomTools(const Table& tools) : tools_(tools) {}

    const Table& Tools() const { return tools_; }
    std::vector<session::CustomUtility*> Lines();

    // The line of the new tool; nothing if all are taken.
    std::optional<int> Add(const std::string& program, const std::string& name);
    std::optional<int> AddMacro();
    bool IsFull() const;
    void Remove(int line);  // the others move up, and the macros are numbered anew

  private:
    Table tools_;
};

}  // namespace editor
