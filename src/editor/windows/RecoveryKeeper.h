#pragma once

#include <QObject>
#include <map>

#include "editor/Recovery.h"
#include "session/App.h"

namespace editor {

class DocumentWindows;
class frmDocument;

// Keeps a copy of each unsaved text, a few seconds behind the typing, and offers the copies of a run that
// ended abnormally.
class RecoveryKeeper {
  public:
    RecoveryKeeper(session::App& app, DocumentWindows& windows, std::string folder);

    // To be called when the main window stands.
    void OfferCopies();
    void Start();
    // One look at all documents; the timer's work.
    void Tick();

  private:
    void KeepDirtyTexts();
    void TellFailure();
    void Restore(const FoundCopy& found);

    session::App& app_;
    DocumentWindows& windows_;
    Recovery recovery_;
    std::map<const session::Document*, std::uint64_t> kept_;  // revision of the copy
    std::string told_;                                        // in the status bar; empty: all is well
    std::unique_ptr<platform::Timer> RecoveryTimer;
    QObject alive_;  // hears of the documents while this stands
};

}  // namespace editor
