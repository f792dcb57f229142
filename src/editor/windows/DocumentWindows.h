#pragma once

#include <QObject>
#include <vector>

#include "editor/OpenDocument.h"
#include "platform/qt/MdiChild.h"

namespace editor {

class frmDocument;

// The document windows in the main window.
class DocumentWindows : public QObject, public DocumentFactory {
    Q_OBJECT

  public:
    DocumentWindows(session::App& app, platform::qt::MdiFrame& frame) : app_(app), frame_(frame) {}

    session::Document& Create() override;
    void Registered(session::Document& document) override;

    // All that are open, those too that are no members of Documents.
    const std::vector<frmDocument*>& All() const { return all_; }

  signals:
    void Unloaded(editor::frmDocument* document);

  private:
    session::App& app_;
    platform::qt::MdiFrame& frame_;
    std::vector<frmDocument*> all_;
};

}  // namespace editor
