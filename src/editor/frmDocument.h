#pragma once

#include <QMdiSubWindow>
#include <memory>
#include <string>

#include "platform/qt/MdiChild.h"
#include "platform/qt/MenuSet.h"
#include "session/App.h"

namespace platform::qt {
class TextBox;
}

namespace editor {

// The child window that edits one text. Its menus replace the main window's while it is active; what their
// entries do stands in the tables of the hall.
class frmDocument : public QMdiSubWindow, public session::Document, public platform::qt::MdiChild {
    Q_OBJECT

  public:
    explicit frmDocument(session::App& app);
    ~frmDocument() override;

    // Set once the window is a member of Documents.
    void SetRegistered() { isRegistered_ = true; }
    // Runs the command of a menu entry by its name, as a click does. Error 5 for an entry without one.
    void RunCommand(const std::string& name, int index = -1);
    bool HasCommand(const std::string& name) const;  // that can be called now
    // As the search of txtText, with its options; what it finds is selected, or not there.
    void FindText(const std::string& text, std::int32_t start, std::int32_t end, std::int32_t options);

    // session::Document
    platform::RichTextBox& txtText() override;
    void UpdateMenus() override;
    void BringToFront() override;
    bool Unload() override;

    // platform::qt::MdiChild
    QMdiSubWindow& Frame() override { return *this; }
    std::string Title() const override { return Caption(); }
    std::optional<QRect> PlaceIn(const platform::qt::ChildPlaces& places) const override;
    const platform::qt::MenuSet* Menus() const override { return menus_.get(); }
    std::int32_t SelLength() const override;
    bool IsInserting() const override;
    bool CanClose() const override { return true; }
    bool QueryUnload() override;
    void UnloadUnasked() override;

  signals:
    void SelectionToggled();  // something is selected now, or nothing any more
    void Unloaded();          // out of the shared state; the window goes at the next turn of the event loop

  protected:
    void closeEvent(QCloseEvent* event) override;
    void ShowCaption() override;

  private:
    void BuildMenus();
    void EnableEntries();
    void ConnectText();
    void ShowRecentFiles();
    void ShowTools();
    void BuildHelpList();

    session::App& app_;
    platform::qt::TextBox* text_ = nullptr;
    std::unique_ptr<platform::qt::MenuSet> menus_;
    std::unique_ptr<platform::Timer> StatusBarTimer;
    std::string positionCache_;
    bool isRegistered_ = false;
    bool isAsked_ = false;  // the question before the close has been answered
    bool isUnloaded_ = false;
};

}  // namespace editor
