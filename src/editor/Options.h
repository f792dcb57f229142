#pragma once

#include <array>
#include <string>
#include <vector>

#include "session/App.h"

namespace editor {

// What frmKorvane gives at OK. Of StdUtils only Menu and Toolbar count.
struct Options {
    std::string WorkDir;
    std::string SchematicTool;
    bool AutoArrange = false;
    bool AutoSymbolUpdate = false;
    session::FontRecord EditorFont;
    session::FontRecord MessageFont;
    session::FontRecord ProjectFont;
    std::vector<session::KeywordRec> Keywords;
    std::array<session::CustomUtility, 7> StdUtils;
    std::array<session::CustomUtility, 6> CustUtils;
};

// Puts them into the shared state and on the open windows. False, with a box, if a custom tool bears the name
// of a standard one: the tools stay as they were, all else is done.
bool ApplyOptions(session::App& app, const Options& options);

std::string FontDescription(const session::FontRecord& font);  // "Arial-10pt Bold Italic"

// The font dialog on a record, which stays as it is if the user cancels. True if it was changed.
bool ChooseFont(platform::Dialogs& boxes, session::FontRecord& font);

}  // namespace editor
