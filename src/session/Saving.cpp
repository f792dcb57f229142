#include "session/Saving.h"

namespace session {
namespace {

bool MayReplace(App& app, const Document& document, const std::string& path) {
    if (!document.Unread() || !app.Host.Files.FileExists(path)) return true;
    const auto answer = app.Host.Boxes.MessageBox(
        {.Text = path + " exists and could not be read. Do you want to replace it with this text?",
         .Title = "Save File",
         .Choice = platform::Buttons::YesNo,
         .Picture = platform::Icon::Warning});
    return answer == platform::Answer::Yes;
}

}  // namespace

bool WriteText(App& app, Document& document, const std::string& path) {
    if (!MayReplace(app, document, path)) return false;
    app.Host.Files.WriteFile(path, document.txtText().TextView());
    document.MarkSaved();
    return true;
}

}  // namespace session
