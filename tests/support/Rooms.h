#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/RichTextBox.h"
#include "session/App.h"
#include "support/Doubles.h"

// Stand-ins for the rooms of the program that the tested one calls: the hall and a document.
namespace doubles {

// The hall with stand-ins for all rooms; notes each call as "Name argument argument".
class Hall : public session::Hall,
             public session::MainWindow,
             public session::Utilities,
             public session::Editor,
             public session::ToolChain,
             public session::Project {
  public:
    Hall() {
        session::Hall::Main = this;
        session::Hall::Utilities = this;
        session::Hall::Editor = this;
        session::Hall::ToolChain = this;
        session::Hall::Project = this;
    }

    std::vector<std::string> Calls;
    std::map<int, std::string> Panels;
    session::Document* Active = nullptr;

    void SetPanel(int panel, const std::string& text) override { Panels[panel] = text; }
    std::string Panel(int panel) const override { return Panels.contains(panel) ? Panels.at(panel) : ""; }
    session::Document* ActiveDocument() override { return Active; }
    void UpdateMruMenus() override { Note("UpdateMruMenus"); }
    void SetTBMenu(session::Document&) override { Note("SetTBMenu"); }
    void LaunchTool(const std::string& tool, const std::string& file) override {
        Note("LaunchTool " + tool + " " + file);
    }
    session::Document* OpenDocument() override {
        Note("OpenDocument");
        return nullptr;
    }
    session::Document* OpenDocument(const std::string& path) override {
        Note("OpenDocument " + path);
        return nullptr;
    }
    void UpdateMru(const std::string& path) override { Note("UpdateMru " + path); }
    void HighlightSyntax(session::Document&) override { Note("HighlightSyntax"); }
    void HighlightRange(session::Document&, std::int32_t start, std::int32_t end) override {
        Note("HighlightRange " + std::to_string(start) + " " + std::to_string(end));
    }
    std::int16_t RunAndWait(const std::string& commandLine) override {
        Note("RunAndWait " + commandLine);
        return 0;
    }
    void BringMessagesToFront() override { Note("BringMessagesToFront"); }
    std::vector<session::OutputFrame> OutputFrames() const override { return {}; }
    void IndepCompile() override { Note("IndepCompile"); }
    void ShowProject() override { Note("ShowProject"); }
    bool CloseProject() override {
        Note("CloseProject");
        return true;
    }
    void UpdateTreeView() override { Note("UpdateTreeView"); }
    void ResetMessageFont() override { Note("ResetMessageFont"); }
    void ResetProjectFont() override { Note("ResetProjectFont"); }

  private:
    void Note(std::string call) { Calls.push_back(std::move(call)); }
};

// A session on stand-ins for the desktop and the rooms, for a fixture to derive from.
template <class FileSystem, class RoomsOfIt = Hall>
struct Bench {
    FileSystem Files;
    Desktop Desk{Files};
    session::Session State;
    RoomsOfIt Hall;
    session::App App{State, Desk.Host, Hall};
};

// A text without formatting, selection or history.
class PlainTextBox : public platform::RichTextBox {
  public:
    std::string Content;

    std::string Text() const override { return Content; }
    void SetText(std::string_view text) override { Content = text; }
    std::int32_t TextLength() const override { return static_cast<std::int32_t>(Content.size()); }
    std::string TextRange(std::int32_t start, std::int32_t length) const override {
        return Content.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
    }
    std::string_view TextView() const override { return Content; }
    std::int32_t SelStart() const override { return 0; }
    void SetSelStart(std::int32_t) override {}
    std::int32_t SelLength() const override { return 0; }
    void SetSelLength(std::int32_t) override {}
    std::string SelText() const override { return {}; }
    void SetSelText(std::string_view text) override { Content.insert(0, text); }
    platform::CharFormat SelFormat() const override { return {}; }
    void SetSelColor(std::int32_t) override {}
    void SetSelBold(bool) override {}
    void SetSelItalic(bool) override {}
    void SetSelUnderline(bool) override {}
    std::string SelFontName() const override { return {}; }
    void SetSelFontName(const std::string&) override {}
    double SelFontSize() const override { return 8; }
    void SetSelFontSize(double) override {}
    void SetDefaultFont(const std::string&, double) override {}
    void ApplyFormats(std::span<const platform::FormatRun>) override {}
    std::int32_t Find(std::string_view, std::int32_t, std::int32_t, int) override { return -1; }
    void UpTo(std::string_view, bool) override {}
    void SetVisible(bool) override {}
    void HideCaret() override {}
    void ShowCaret() override {}
    std::intptr_t SendMessage(platform::EditMessage, std::intptr_t, std::intptr_t) override { return 0; }
};

class Document : public session::Document {
  public:
    PlainTextBox Box;

    platform::RichTextBox& txtText() override { return Box; }
    void UpdateMenus() override {}
    void BringToFront() override {}
    bool Unload() override { return true; }

  protected:
    void ShowCaption() override {}
};

}  // namespace doubles
