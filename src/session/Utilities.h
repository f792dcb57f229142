#pragma once

#include <string>

namespace session {

class Document;

// The tools beside the program, as other rooms see them.
class Utilities {
  public:
    virtual ~Utilities() = default;

    virtual void SetTBMenu(Document& document) = 0;  // the tools into its menu and into the toolbar
    virtual void LaunchTool(const std::string& tool, const std::string& file) = 0;
};

}  // namespace session
