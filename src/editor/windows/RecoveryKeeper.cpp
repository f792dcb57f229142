#include "editor/windows/RecoveryKeeper.h"

#include "editor/DocumentFile.h"
#include "editor/Highlighter.h"
#include "editor/frmDocument.h"
#include "editor/windows/DocumentWindows.h"
#include "platform/qt/Guard.h"

namespace editor {
namespace {

// With the writing, a copy is less than five seconds old.
constexpr std::chrono::milliseconds interval{2000};
const std::string notKept = "No recovery copies: ";

}  // namespace

RecoveryKeeper::RecoveryKeeper(session::App& app, DocumentWindows& windows, std::string folder)
    : app_(app), windows_(windows), recovery_(app.Host.Files, std::move(folder)) {
    platform::qt::On(&windows, &DocumentWindows::Unloaded, &alive_, [this](const session::Document* gone) {
        recovery_.Forget(gone);
        kept_.erase(gone);
    });
}

void RecoveryKeeper::Start() {
    RecoveryTimer = app_.Host.Time.Every(interval, [this] { Tick(); });
}

void RecoveryKeeper::Tick() {
    recovery_.Retry();
    KeepDirtyTexts();
    TellFailure();
}

void RecoveryKeeper::KeepDirtyTexts() {
    for (frmDocument* window : windows_.All()) {
        session::Document* document = window;
        const auto kept = kept_.find(document);
        if (!document->Dirty()) {
            if (kept != kept_.end()) {
                recovery_.Forget(document);
                kept_.erase(kept);
            }
        } else if (kept == kept_.end() || kept->second != document->Revision()) {
            kept_[document] = document->Revision();
            recovery_.Keep(document, {document->Caption(), document->FileName(), document->txtText().Text(),
                                      document->Unread()});
        }
    }
}

// Once in the status bar, and not again before it went well meanwhile.
void RecoveryKeeper::TellFailure() {
    const std::string failure = recovery_.Failure();
    const std::string text = failure.empty() ? "" : notKept + failure;
    if (text == told_ || (!text.empty() && !told_.empty())) return;
    if (!text.empty() || app_.Hall.Main->Panel(1) == told_) app_.Hall.Main->SetPanel(1, text);
    told_ = text;
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

void RecoveryKeeper::Restore(const FoundCopy& found) {
    const RecoveryCopy& copy = found.Copy;
    session::Document* document = app_.Hall.Editor->OpenDocument();
    // Without a window of its own the copy stays on disk, for the next start.
    if (document == nullptr) return;
    document->SetFile(copy.Caption, copy.FileName);
    document->txtText().SetText(copy.Text);
    document->TextChanged();
    if (copy.Unread) document->MarkUnread();
    recovery_.Adopt(document, found.Path);
    kept_[document] = document->Revision();
    try {
        EnterByKind(app_, *document, copy.Caption);
    } catch (const base::RunTimeError& error) {
        app_.Host.Boxes.Say(std::string(error.Description()));  // the other copies still wait
    }
}

}  // namespace editor
