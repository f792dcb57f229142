#include "shell/windows/RecoveryKeeper.h"

#include "editor/DocumentFile.h"
#include "editor/frmDocument.h"
#include "platform/qt/Guard.h"
#include "shell/frmMain.h"

namespace shell {
namespace {

// With the writing, a copy is less than five seconds old.
constexpr std::chrono::milliseconds interval{2000};
const std::string notKept = "No recovery copies: ";

}  // namespace

RecoveryKeeper::RecoveryKeeper(session::App& app, frmMain& main, std::string folder)
    : app_(app), main_(main), recovery_(app.Host.Files, std::move(folder)) {}

void RecoveryKeeper::Start() {
    RecoveryTimer = app_.Host.Time.Every(interval, [this] { Tick(); });
}

void RecoveryKeeper::Tick() {
    recovery_.Retry();
    KeepDirtyTexts();
    TellFailure();
}

void RecoveryKeeper::KeepDirtyTexts() {
    for (QMdiSubWindow* window : main_.Area().subWindowList()) {
        auto* document = qobject_cast<editor::frmDocument*>(window);
        if (document == nullptr) continue;
        const auto kept = kept_.find(document);
        if (!document->Dirty) {
            if (kept != kept_.end()) {
                recovery_.Forget(document);
                kept_.erase(kept);
            }
        } else if (kept == kept_.end() || kept->second != document->Revision) {
            if (kept == kept_.end()) Watch(*document);
            kept_[document] = document->Revision;
            recovery_.Keep(document, {document->Caption(), document->FileName, document->txtText().Text(),
                                      document->Unread});
        }
    }
}

// Once in the status bar, and not again before it went well meanwhile.
void RecoveryKeeper::TellFailure() {
    const std::string failure = recovery_.Failure();
    const std::string text = failure.empty() ? "" : notKept + failure;
    if (text == told_ || (!text.empty() && !told_.empty())) return;
    if (!text.empty() || app_.Hall.Panel(1) == told_) app_.Hall.SetPanel(1, text);
    told_ = text;
}

void RecoveryKeeper::Watch(editor::frmDocument& document) {
    platform::qt::On(&document, &editor::frmDocument::Unloaded, &alive_, [this, gone = &document] {
        recovery_.Forget(gone);
        kept_.erase(gone);
    });
}

void RecoveryKeeper::OfferCopies() {
    const auto copies = recovery_.Find();
    if (copies.empty()) return;
    std::string text = "Korvane ended unexpectedly. These texts were not saved:\n\n";
    for (const auto& copy : copies) text += copy.Copy.Caption + "\n";
    text += "\nDo you want to open them as they were?";
    const auto answer = app_.Host.Boxes.MessageBox({.Text = text,
                                                    .Title = "Recover Texts",
                                                    .Choice = platform::Buttons::YesNo,
                                                    .Picture = platform::Icon::Question});
    if (answer == platform::Answer::Yes) {
        for (const auto& copy : copies) Restore(copy);
    } else {
        for (const auto& copy : copies) recovery_.Refuse(copy.Path);
    }
}

void RecoveryKeeper::Restore(const editor::FoundCopy& found) {
    const editor::RecoveryCopy& copy = found.Copy;
    const std::size_t before = app_.State.Documents.Count();
    app_.Hall.OpenDocument();
    auto* document = main_.ActiveDocument();
    // Without a window of its own the copy stays on disk, for the next start.
    if (document == nullptr || app_.State.Documents.Count() == before) return;
    document->SetCaption(copy.Caption);
    document->FileName = copy.FileName;
    document->txtText().SetText(copy.Text);
    document->Dirty = true;
    document->Unread = copy.Unread;
    recovery_.Adopt(document, found.Path);
    Watch(*document);
    kept_[document] = document->Revision;
    const auto kind = editor::KindOf(copy.Caption);
    if (kind == editor::DocumentKind::Design) app_.Hall.HighlightSyntax(*document);
    if (kind != editor::DocumentKind::Plain && app_.State.sProject.empty()) {
        app_.State.sProject = copy.Caption.substr(0, copy.Caption.rfind('.'));
    }
}

}  // namespace shell
