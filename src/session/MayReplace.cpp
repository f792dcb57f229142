#include "session/MayReplace.h"

namespace session {

bool MayReplace(App& app, const Document& document, const std::string& path) {
    if (!document.Unread || !app.Host.Files.FileExists(path)) return true;
    const auto answer = app.Host.Boxes.MessageBox(
        {.Text = path + " exists and could not be read. Do you want to replace it with this text?",
         .Title = "Save File",
         .Choice = platform::Buttons::YesNo,
         .Picture = platform::Icon::Warning});
    return answer == platform::Answer::Yes;
}

}  // namespace session
