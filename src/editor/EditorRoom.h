#pragma once

#include <memory>
#include <vector>

#include "editor/FindText.h"
#include "platform/qt/MdiChild.h"
#include "session/App.h"

namespace editor {

class DocumentWindows;
class RecoveryKeeper;

// The door of the editor: owns the document windows, the copies of unsaved texts, and the commands on texts.
class EditorRoom : public session::Editor {
  public:
    // Enters itself and its commands into the hall.
    explicit EditorRoom(session::App& app);
    ~EditorRoom() override;

    void LoadWindows(platform::qt::MdiFrame& frame);
    void UnloadWindows();
    // Offers the texts of a run that ended abnormally, and keeps those of this one. `folder`: logic path with
    // final backslash.
    void StartRecovery(const std::string& folder);

    session::Document* OpenDocument() override;
    session::Document* OpenDocument(const std::string& path) override;
    void UpdateMru(const std::string& path) override;
    void HighlightSyntax(session::Document& document) override;
    void HighlightRange(session::Document& document, std::int32_t start, std::int32_t end) override;

  private:
    void AddSearchCommands();
    void ShowSettings();

    session::App& app_;
    platform::qt::MdiFrame* frame_ = nullptr;
    SearchValues search_;
    std::unique_ptr<DocumentWindows> windows_;
    std::unique_ptr<RecoveryKeeper> recovery_;
};

}  // namespace editor
