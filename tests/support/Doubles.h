#pragma once

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "base/RunTimeError.h"
#include "platform/Host.h"
#include "support/TemporaryFolder.h"

// Stand-ins for the desktop system: they keep what was shown or asked, and answer as a test has scripted.
namespace doubles {

// The number of the run-time error that the call raises; 0 for none.
template <class Call>
int ErrorOf(const Call& call) {
    try {
        call();
    } catch (const base::RunTimeError& error) {
        return error.Number();
    }
    return 0;
}

// "one|two|"
std::string Joined(const std::vector<std::string>& texts);

class Dialogs : public platform::Dialogs {
  public:
    std::vector<platform::MessageBoxRequest> Shown;
    std::vector<platform::FileDialogRequest> FileRequests;
    std::deque<platform::Answer> Answers;           // of message boxes; then Ok, or Yes
    std::deque<std::optional<std::string>> Files;   // of file dialogs; then cancelled
    std::deque<std::optional<std::string>> Inputs;  // of input boxes; then cancelled
    std::deque<std::optional<platform::FontChoice>> Fonts;
    std::deque<std::optional<std::int32_t>> Colors;

    platform::Answer MessageBox(const platform::MessageBoxRequest& request) override;
    std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override;
    std::optional<std::string> OpenFile(const platform::FileDialogRequest& request) override;
    std::optional<std::string> SaveFile(const platform::FileDialogRequest& request) override;
    std::optional<platform::FontChoice> ChooseFont(const platform::FontChoice& preset) override;
    std::optional<std::int32_t> ChooseColor(std::int32_t preset) override;

    std::string LastText() const { return Shown.empty() ? "" : Shown.back().Text; }
    std::string TakeTexts();  // of all boxes since the last call: "one|two|"
};

class Registry : public platform::Registry {
  public:
    using Value = std::variant<std::string, std::uint32_t>;
    std::map<std::string, std::map<std::string, Value>> Keys;
    std::map<std::string, std::string> Classes;
    std::vector<std::string> Written;  // value names in the order of writing
    bool CanOpen = true;
    bool CanCreate = true;

    std::optional<Key> Open(std::string_view key, Access access) override;
    std::optional<Key> Create(std::string_view key, std::string_view className) override;
    std::optional<std::string> QueryText(Key key, std::string_view name) const override;
    std::optional<std::uint32_t> QueryNumber(Key key, std::string_view name) const override;
    bool SetText(Key key, std::string_view name, std::string_view value) override;
    bool SetNumber(Key key, std::string_view name, std::uint32_t value) override;
    bool Flush(Key) override { return true; }
    void Close(Key) override {}

  private:
    bool Set(Key key, std::string_view name, Value value);
    const Value* Find(Key key, std::string_view name) const;
    std::vector<std::string> open_;
};

class Clipboard : public platform::Clipboard {
  public:
    std::string Content;
    bool HasText() const override { return !Content.empty(); }
    std::string Text() const override { return Content; }
    void SetText(const std::string& text) override {
        Content = text;
        if (OnChange) OnChange();
    }
};

class Processes : public platform::Processes {
  public:
    std::vector<std::string> Started;
    int FailWith = 0;  // error number that Start raises, 0 for none
    std::function<void()> OnWait;

    Id Start(const std::string& commandLine) override;
    Id StartBehind(const std::string& commandLine) override { return Start("behind: " + commandLine); }
    void ShellExecute(const std::string& verb, const std::string& file, const std::string& parameters,
                      const std::string& directory) override {
        Start(verb + "|" + file + "|" + parameters + "|" + directory);
    }
    void Wait(Id) override {
        if (OnWait) OnWait();
    }
    bool IsRunning(Id) const override { return false; }
};

// Keeps a log of "load path", "free name", "call name entry"; OnCall plays the library.
class ToolLibraries : public platform::ToolLibraries {
  public:
    std::vector<std::string> Log;
    std::string Missing;  // a library whose load fails, by the end of its path
    std::vector<std::uint8_t> Record;
    std::function<std::int32_t(const std::string& entry, std::span<std::uint8_t> record)> OnCall;

    platform::WindowHandle Register(platform::MessageHandler handler) override;
    void Unregister(platform::WindowHandle handle) override { handlers_.erase(handle); }
    Module Load(const std::string& path) override;
    void Free(Module module) override;
    std::int32_t Call(Module module, const std::string& entry, std::span<std::uint8_t> record) override;

    void Send(platform::WindowHandle to, const platform::ToolMessage& message);
    std::size_t HandlerCount() const { return handlers_.size(); }

  private:
    std::map<platform::WindowHandle, platform::MessageHandler> handlers_;
    platform::WindowHandle nextHandle_ = 100;
    std::vector<std::string> modules_;
};

class System : public platform::System {
  public:
    std::string Program = "C:\\Korvane\\Korvane\\Korvane";
    std::string Windows = "C:\\Windows";
    std::vector<std::string> Fonts = {"Arial", "Courier New"};
    bool Earlier = false;
    int Platform = 2;
    bool Hourglass = false;
    std::vector<std::string> Activated;

    std::string ProgramPath() const override { return Program; }
    std::string WindowsDirectory() const override { return Windows; }
    int PlatformId() const override { return Platform; }
    bool HasEarlierInstance() override { return Earlier; }
    bool AppActivate(const std::string& title) override;
    std::vector<std::string> ScreenFonts() const override { return Fonts; }
    void SetHourglass(bool on) override { Hourglass = on; }
};

// Stands still until a test moves it.
class Clock : public platform::Clock {
  public:
    Milliseconds Now() const override { return now_; }
    std::unique_ptr<platform::Timer> Every(Milliseconds interval, std::function<void()> action) override;

    // What falls due meanwhile runs, each at its time.
    void Advance(Milliseconds time);

  private:
    struct Alarm;
    Milliseconds now_{1000};
    std::vector<std::weak_ptr<Alarm>> alarms_;
};

class Windows : public platform::Windows {
  public:
    std::vector<platform::TopLevelWindow> Open;  // from front to back
    std::vector<std::uint32_t> Closed;
    std::vector<std::uint32_t> Activated;
    platform::ScreenSize Screen{.Width = 15360, .Height = 11520};

    std::vector<platform::TopLevelWindow> TopLevel() const override { return Open; }
    void Close(std::uint32_t handle) override { Closed.push_back(handle); }
    void Activate(std::uint32_t handle) override { Activated.push_back(handle); }
    platform::ScreenSize Size() const override { return Screen; }
};

class ToolLink : public platform::ToolLink {
  public:
    std::vector<std::string> Log;                              // "service|topic", and "service|topic command"
    std::set<std::string> Servers;                             // the topics on which somebody listens
    std::function<int(const std::string& command)> OnCommand;  // what a server does: an error number, or 0

    void SetLinkTopic(const std::string& topic) override { topic_ = topic; }
    void SetLinkMode(platform::LinkMode mode) override;
    void LinkExecute(const std::string& command) override;
    bool IsOpen() const { return isOpen_; }

  private:
    std::string topic_;
    bool isOpen_ = false;
};

// Notes what each dialog was asked and what was printed.
class Printers : public platform::Printers {
  public:
    int There = 1;
    std::deque<std::optional<int>> Choices;  // of the dialog; then cancelled
    std::vector<int> Asked;
    std::function<void(platform::RichTextBox&)> OnPrint;

    int Count() const override { return There; }
    std::optional<int> Choose(int flags) override;
    void Print(platform::RichTextBox& text) override { OnPrint(text); }
};

class InputJournal : public platform::InputJournal {
    bool Record(std::function<void(const platform::InputEvent&)>, std::function<void()>) override {
        return true;
    }
    bool Play(std::function<std::optional<platform::InputEvent>()>) override { return true; }
    void Stop() override {}
    void CentrePointer() override {}
};

// All of them with a real file system that the test gives.
struct Desktop {
    explicit Desktop(platform::FileSystem& files) : Desktop(files, Clip) {}
    Desktop(platform::FileSystem& files, platform::Clipboard& clip) : Desktop(files, clip, Journal) {}
    Desktop(platform::FileSystem& files, platform::Clipboard& clip, platform::InputJournal& journal)
        : Host{files, Settings, Boxes, clip, Programs, Libraries, Desk, Time, Screen, Paper, Link, journal} {}
    Registry Settings;
    Dialogs Boxes;
    Clipboard Clip;
    Processes Programs;
    ToolLibraries Libraries;
    System Desk;
    Clock Time;
    Windows Screen;
    Printers Paper;
    ToolLink Link;
    InputJournal Journal;
    platform::Host Host;
};

}  // namespace doubles
