#pragma once

#include <QObject>
#include <map>

#include "editor/Recovery.h"
#include "session/App.h"

namespace editor {
class frmDocument;
}

namespace shell {

class frmMain;

// Keeps a copy of each unsaved text, a few seconds behind the typing, and offers the copies of a run that
// ended abnormally.
class RecoveryKeeper {
  public:
    RecoveryKeeper(session::App& app, frmMain& main, std::string folder);

    // To be called when the main window stands.
    void OfferCopies();
    void Start();
    // One look at all documents; the timer's work.
    void Tick();

  private:
    void KeepDirtyTexts();
    void TellFailure();
    void Restore(const editor::FoundCopy& found);
    void Watch(editor::frmDocument& document);

    session::App& app_;
    frmMain& main_;
    editor::Recovery recovery_;
    std::map<const editor::frmDocument*, std::uint64_t> kept_;  // revision of the copy
    std::string told_;                                          // in the status bar; empty: all is well
    std::unique_ptr<platform::Timer> RecoveryTimer;
    QObject alive_;  // hears of the documents while this stands
};

}  // namespace shell
