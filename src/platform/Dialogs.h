#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Icon { None, Stop, Question, Warning, Information };
enum class Answer { Ok, Cancel, Yes, No };

struct MessageBoxRequest {
    std::string Text;
    std::string Title = {};  // empty: the default title, the application's
    Buttons Choice = Buttons::Ok;
    Icon Picture = Icon::None;
};

// Flags of the common file dialogs.
enum FileDialogFlags : int {
    OverwritePrompt = 2,
    ExtensionDifferent = 1024,
    PathMustExist = 2048,
    FileMustExist = 4096,
};

struct FileDialogRequest {
    std::string Title = {};
    std::string Filter = {};  // "Caption|pattern|Caption|pattern": an odd last entry matches every file
    std::string FileName = {};
    std::string InitialFolder = {};
    std::string DefaultExtension = {};  // with or without its point
    int Flags = 0;
};

struct FontChoice {
    std::string Name;
    double Size = 8;  // points
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    std::int32_t Color = 0;  // 0x00BBGGRR
};

// Everything modal that is not a window of this system. Paths go in and come out in logic form.
// An empty result is the user's Cancel.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    virtual Answer MessageBox(const MessageBoxRequest& request) = 0;
    virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                                const std::string& preset) = 0;
    virtual std::optional<std::string> OpenFile(const FileDialogRequest& request) = 0;
    virtual std::optional<std::string> SaveFile(const FileDialogRequest& request) = 0;
    virtual std::optional<FontChoice> ChooseFont(const FontChoice& preset) = 0;
    virtual std::optional<std::int32_t> ChooseColor(std::int32_t preset) = 0;

    // The common case: one OK button, the default title.
    void Say(const std::string& text) { MessageBox({.Text = text}); }
};

}  // namespace platform
