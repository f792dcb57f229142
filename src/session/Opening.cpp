#include "session/Opening.h"

#include <algorithm>

namespace session {

void EnterWorkDir(App& app) {
    const std::string& folder = app.State.WorkDir;
    if (!folder.empty() && app.Host.Files.DirectoryExists(folder)) app.Host.Files.SetCurrentDirectory(folder);
}

void OpenUnlessOpen(App& app, const std::string& path) {
    const auto open = app.State.Documents.All();
    if (std::any_of(open.begin(), open.end(),
                    [&](const Document* each) { return each->Caption() == path; })) {
        app.Host.Boxes.Say("File already open in editor. ");
    } else {
        app.Hall.Editor->OpenDocument(path);
    }
}

}  // namespace session
