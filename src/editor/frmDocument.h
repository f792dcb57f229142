#pragma once

#include <QMdiSubWindow>
#include <functional>
#include <map>
#include <string>

#include "platform/qt/MenuSet.h"
#include "session/App.h"

namespace platform::qt {
class TextBox;
}

namespace editor {

// The child window that edits one text. Its menus replace the main window's while it is active.
class frmDocument : public QMdiSubWindow, public session::Document {
    Q_OBJECT

  public:
    explicit frmDocument(session::App& app);
    ~frmDocument() override;

    // Set once the window is a member of Documents.
    void SetRegistered() { isRegistered_ = true; }
    const platform::qt::MenuSet& Menus() const { return *menus_; }
    // Runs the command of a menu entry by its name, as a click does. Error 5 for an entry without one.
    void RunCommand(const std::string& name, int index = -1);
    bool HasCommand(const std::string& name) const { return commands_.contains(name); }

    platform::RichTextBox& txtText() override;
    std::string Caption() const override { return caption_; }
    void SetCaption(const std::string& caption) override;
    void SaveFile() override;
    void SaveFileAs() override;
    void UpdateFont(const std::string& name, std::int16_t size, std::int32_t color, bool bold,
                    bool italic) override;
    void RefreshProjectList() override;
    void SetMenuEnabled(const std::string& name, bool enabled) override;
    void SetMenuVisible(const std::string& name, bool visible) override;
    void SetMenuChecked(const std::string& name, bool checked) override;
    void SetMenuCaption(const std::string& name, const std::string& caption) override;
    bool IsMenuChecked(const std::string& name) const override;
    bool IsInserting() const;  // false: typing overwrites
    bool IsMinimized() const override { return isMinimized(); }
    bool IsMaximized() const override { return isMaximized(); }
    void Move(float left, float top, float width, float height) override;
    void BringToFront() override;
    bool Unload() override;
    bool QueryUnload();    // the question alone: false if the user refused
    void UnloadUnasked();  // whatever there is to save

    // Commands that other rooms call by name.
    void mnuFileSave_Click();
    void mnuEditCut_Click();
    void mnuEditCopy_Click();
    void mnuEditPaste_Click();
    void mnuRunDepCompile_Click();
    void mnuRunIndepCompile_Click();
    void mnuRunDepSimulate_Click();
    void mnuRunIndepSimulate_Click();

  signals:
    void SelectionToggled();  // something is selected now, or nothing any more
    void Unloaded();          // out of the shared state; the window goes at the next turn of the event loop

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    using Command = std::function<void(int index)>;

    void BuildMenus();
    void FillCommands();
    void FillFileCommands();
    void FillEditCommands();
    void FillRunCommands();
    void DisableEntriesWithoutCommand();
    void ConnectText();
    void FlipCheck(const std::string& entry);

    session::App& app_;
    platform::qt::TextBox* text_ = nullptr;
    std::unique_ptr<platform::qt::MenuSet> menus_;
    std::map<std::string, Command> commands_;
    std::unique_ptr<platform::Timer> StatusBarTimer;
    std::string caption_;
    std::string positionCache_;
    bool isRegistered_ = false;
    bool isAsked_ = false;  // the question before the close has been answered
    bool isUnloaded_ = false;
};

}  // namespace editor
