#pragma once

#include <functional>

#include "platform/Dialogs.h"
#include "platform/FileSystem.h"

class QWidget;

namespace platform::qt {

// The dialogs as windows named "MessageBox", "InputBox", "FileDialog", "FontDialog" and "ColorDialog".
// Texts are shown as plain text.
class HostDialogs : public Dialogs {
  public:
    // `parent` gives the window that a dialog belongs to, or null; an open modal window comes before it.
    // Without it that is the active window, or any that is shown.
    explicit HostDialogs(const FileSystem& files, std::function<QWidget*()> parent = {});

    Answer MessageBox(const MessageBoxRequest& request) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& preset) override;
    std::optional<std::string> OpenFile(const FileDialogRequest& request) override;
    std::optional<std::string> SaveFile(const FileDialogRequest& request) override;
    std::optional<FontChoice> ChooseFont(const FontChoice& preset) override;
    std::optional<std::int32_t> ChooseColor(std::int32_t preset) override;

    // The window that a dialog belongs to, or null.
    QWidget* Parent() const;

  private:
    std::optional<std::string> RunFileDialog(bool save, const FileDialogRequest& request);

    const FileSystem& files_;
    std::function<QWidget*()> parent_;
};

}  // namespace platform::qt
