#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/RichTextBox.h"
#include "session/Commands.h"
#include "session/Document.h"

// Stand-ins for the rooms of the program that the tested one calls: the hall and a document.
namespace doubles {

// Notes each call as "Name argument argument".
class Hall : public session::Commands {
  public:
    std::vector<std::string> Calls;
    std::map<int, std::string> Panels;
    session::Document* Active = nullptr;

    void SetTBMenu(session::Document&) override { Note("SetTBMenu"); }
    void ArrangeWindows() override { Note("ArrangeWindows"); }
    void SaveSettings() override { Note("SaveSettings"); }
    void UpdateMruMenus() override { Note("UpdateMruMenus"); }
    void SetPanel(int panel, const std::string& text) override { Panels[panel] = text; }
    std::string Panel(int panel) const override { return Panels.contains(panel) ? Panels.at(panel) : ""; }
    session::Document* ActiveDocument() override { return Active; }
    void ToggleToolbar() override { Note("ToggleToolbar"); }
    void ToggleStatusBar() override { Note("ToggleStatusBar"); }
    void MainCommand(const std::string& name) override { Note("MainCommand " + name); }
    bool HasMainCommand(const std::string&) const override { return true; }
    void ExitProgram() override { Note("ExitProgram"); }
    void ShowHelpTopic(const std::string& topic) override { Note("ShowHelpTopic " + topic); }
    void RunUtility(const std::string& caption) override { Note("RunUtility " + caption); }
    void LaunchTool(const std::string& tool, const std::string& file) override {
        Note("LaunchTool " + tool + " " + file);
    }
    void OpenDocument() override { Note("OpenDocument"); }
    void OpenDocument(const std::string& path) override { Note("OpenDocument " + path); }
    void HighlightSyntax(session::Document&) override { Note("HighlightSyntax"); }
    void HighlightWord(session::Document&) override { Note("HighlightWord"); }
    void RunDepCompile(session::Document&) override { Note("RunDepCompile"); }
    void RunIndepCompile(session::Document&) override { Note("RunIndepCompile"); }
    void RunDepSimulate(session::Document&) override { Note("RunDepSimulate"); }
    void RunIndepSimulate(session::Document&) override { Note("RunIndepSimulate"); }
    void RunVhdlCompile() override { Note("RunVhdlCompile"); }
    void RunVhdlAnalysis() override { Note("RunVhdlAnalysis"); }
    std::int16_t RunAndWait(const std::string& commandLine) override {
        Note("RunAndWait " + commandLine);
        return 0;
    }
    void BringMessagesToFront() override { Note("BringMessagesToFront"); }
    void CloseProject() override { Note("CloseProject"); }
    void UpdateTreeView() override { Note("UpdateTreeView"); }

  private:
    void Note(std::string call) { Calls.push_back(std::move(call)); }
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
    std::string Title;
    int Refreshed = 0;
    int Saved = 0;

    platform::RichTextBox& txtText() override { return Box; }
    std::string Caption() const override { return Title; }
    void SetCaption(const std::string& caption) override { Title = caption; }
    void SaveFile() override { ++Saved; }
    void SaveFileAs() override { ++Saved; }
    void UpdateFont(const std::string&, std::int16_t, std::int32_t, bool, bool) override {}
    void RefreshProjectList() override { ++Refreshed; }
    void SetMenuEnabled(const std::string&, bool) override {}
    void SetMenuVisible(const std::string&, bool) override {}
    void SetMenuChecked(const std::string& name, bool checked) override { checked_[name] = checked; }
    void SetMenuCaption(const std::string&, const std::string&) override {}
    bool IsMenuChecked(const std::string& name) const override {
        return checked_.contains(name) && checked_.at(name);
    }
    bool IsMinimized() const override { return false; }
    bool IsMaximized() const override { return false; }
    void Move(float, float, float, float) override {}
    void BringToFront() override {}
    bool Unload() override { return true; }

  private:
    std::map<std::string, bool> checked_;
};

}  // namespace doubles
