#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <string>
#include <vector>

#include "editor/Highlighter.h"
#include "platform/qt/TextBox.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

// The control, with an eye on what is done to it.
class WatchedBox : public platform::qt::TextBox {
  public:
    int Hidden = 0, HiddenCarets = 0;  // how often just now
    int WasHidden = 0, WasCaretHidden = 0;
    int FailAfter = -1;  // so many changes of formatting, the next raises error 7; negative: never

    void SetVisible(bool visible) override {
        visible ? --Hidden : (++Hidden, ++WasHidden);
        TextBox::SetVisible(visible);
    }
    void HideCaret() override {
        ++HiddenCarets;
        ++WasCaretHidden;
        TextBox::HideCaret();
    }
    void ShowCaret() override {
        --HiddenCarets;
        TextBox::ShowCaret();
    }
    void SetSelColor(std::int32_t color) override {
        Try([&] { TextBox::SetSelColor(color); });
    }
    void SetSelBold(bool on) override {
        Try([&] { TextBox::SetSelBold(on); });
    }
    void SetSelItalic(bool on) override {
        Try([&] { TextBox::SetSelItalic(on); });
    }
    void SetSelUnderline(bool on) override {
        Try([&] { TextBox::SetSelUnderline(on); });
    }
    void ApplyFormats(std::span<const platform::FormatRun> runs) override {
        std::int32_t last = 0;
        for (const platform::FormatRun& run : runs) {
            EXPECT_TRUE(run.Start >= last && run.Length > 0);
            last = run.Start + run.Length;
        }
        Try([&] { TextBox::ApplyFormats(runs); });
    }

    void Format(std::int32_t start, std::int32_t length, const platform::CharFormat& format) {
        const platform::FormatRun run{start, length, format};
        TextBox::ApplyFormats({&run, 1});
    }
    // Of each byte.
    std::vector<platform::CharFormat> Formats() {
        const std::int32_t start = SelStart(), length = SelLength();
        std::vector<platform::CharFormat> formats;
        const platform::HiddenScope hidden(*this);
        for (std::int32_t at = 0; at < TextLength(); ++at) {
            SetSelStart(at);
            SetSelLength(1);
            formats.push_back(SelFormat());
        }
        SetSelStart(start);
        SetSelLength(length);
        return formats;
    }
    // A letter for each byte: '.' for plain text, otherwise its colour.
    std::string Picture() {
        std::string picture;
        for (const platform::CharFormat& format : Formats()) {
            picture += format == platform::CharFormat{} ? '.' : static_cast<char>(format.Color);
        }
        return picture;
    }
    long FirstVisible() const { return SendScintilla(SCI_GETFIRSTVISIBLELINE); }
    void ScrollTo(unsigned long line, unsigned long pixels = 0) {
        SendScintilla(SCI_SETFIRSTVISIBLELINE, line);
        SendScintilla(SCI_SETXOFFSET, pixels);
    }

  private:
    template <typename Change>
    void Try(const Change& change) {
        if (FailAfter-- == 0) throw base::RunTimeError(7);
        change();
    }
};

class WatchedDocument : public doubles::Document {
  public:
    WatchedBox Rich;
    WatchedDocument() { SetCaption("C:\\WORK\\COUNT8.PLD"); }
    platform::RichTextBox& txtText() override { return Rich; }
};

// A design in the real control.
struct HighlightFixture : testing::Test, doubles::Bench<doubles::MemoryFiles> {
    WatchedDocument Doc;
    WatchedBox& Box = Doc.Rich;

    HighlightFixture() {
        State.HighlightEnabled = true;
        Box.resize(400, 100);
        Box.show();
    }
};
