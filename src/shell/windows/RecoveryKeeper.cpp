#include "shell/windows/RecoveryKeeper.h"

#include "editor/DocumentFile.h"
#include "editor/frmDocument.h"
#include "platform/qt/Guard.h"
#include "shell/frmMain.h"

namespace shell {
namespace {

// With the writing, a copy is less than five seconds old.
constexpr std::chrono::milliseconds interval{2000};

}  // namespace

RecoveryKeeper::RecoveryKeeper(session::App& app, frmMain& main, std::string folder)
    : app_(app), main_(main), recovery_(app.Host.Files, std::move(folder)) {}

void RecoveryKeeper::Start() {
    RecoveryTimer = app_.Host.Time.Every(interval, [this] { Tick(); });
}

void RecoveryKeeper::Tick() {
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
            recovery_.Keep(document, {document->Caption(), document->FileName, document->txtText().Text()});
        }
    }
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
    for (const auto& copy : copies) text += copy.Caption + "\n";
    text += "\nDo you want to open them as they were?";
    const auto answer = app_.Host.Boxes.MessageBox({.Text = text,
                                                    .Title = "Recover Texts",
                                                    .Choice = platform::Buttons::YesNo,
                                                    .Picture = platform::Icon::Question});
    if (answer == platform::Answer::Yes) {
        for (const auto& copy : copies) Restore(copy);
        // The old copies go only when the new ones are on disk.
        Tick();
        recovery_.Flush();
    }
    recovery_.RemoveFound();
}

void RecoveryKeeper::Restore(const editor::RecoveryCopy& copy) {
    app_.Hall.OpenDocument();
    session::Document* document = app_.Hall.ActiveDocument();
    if (document == nullptr) return;
    document->SetCaption(copy.Caption);
    document->FileName = copy.FileName;
    document->txtText().SetText(copy.Text);
    document->Dirty = true;
    const auto kind = editor::KindOf(copy.Caption);
    if (kind == editor::DocumentKind::Design) app_.Hall.HighlightSyntax(*document);
    if (kind != editor::DocumentKind::Plain && app_.State.sProject.empty()) {
        app_.State.sProject = copy.Caption.substr(0, copy.Caption.rfind('.'));
    }
}

}  // namespace shell
