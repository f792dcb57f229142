#include "aids/KeyMacros.h"

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace aids {
namespace {

constexpr const char* undefined = "MACRO*";
constexpr std::string_view textHead = "MACRO:";
constexpr const char* keysHead = "MACROKS:";
constexpr int maxText = 255;

}  // namespace

KeyMacros::KeyMacros(session::App& app) : app_(app) { app.Hall.Macros = this; }

KeyMacros::~KeyMacros() { app_.Host.Journal.Stop(); }

session::CustomUtility& KeyMacros::Slot(std::int16_t row) {
    auto& slots = app_.State.CustUtils;
    const auto index = static_cast<std::size_t>(row);
    if (row < 0 || index >= slots.size()) throw base::RunTimeError(base::errSubscript);
    return slots[index];
}

session::cKSMacros& KeyMacros::Recording() {
    return app_.State.KsMacroSets.at(static_cast<std::size_t>(CurrentMacro));
}

void KeyMacros::SetMacro(session::Document& document, std::int16_t row) {
    const std::string recording = "Recording keystroke macro, press CTRL+BREAK to end recording.";
    session::CustomUtility& slot = Slot(row);
    const std::string name = app_.Host.Boxes.InputBox("Macro name", "Macro", slot.Name).value_or("");
    if (name.empty()) return;
    slot.Name = name;
    if (document.txtText().SelLength() > 0) return TakeSelection(document, slot);
    app_.Host.Boxes.Say(recording);
    app_.Hall.Main->SetPanel(1, recording);
    app_.Host.Journal.CentrePointer();
    document.BringToFront();
    slot.Program = keysHead + std::to_string(row);
    StartRecording(row);
}

void KeyMacros::TakeSelection(session::Document& document, session::CustomUtility& slot) {
    platform::RichTextBox& box = document.txtText();
    const std::int32_t length = box.SelLength();
    if (length <= maxText) {
        slot.Program = std::string(textHead) + box.SelText();
        box.SetSelLength(0);
        return;
    }
    app_.Host.Boxes.MessageBox({.Text = "Selected text is too long.\r\nMaximum length is 255 characters, you "
                                        "have selected " +
                                        std::to_string(length) + ".",
                                .Title = "Operation Cancelled"});
}

void KeyMacros::StartRecording(std::int16_t row) {
    CurrentMacro = row;
    while (Recording().Count() > 0) Recording().Remove(1);
    RecordingUnderWay = true;
    const bool isHeard = app_.Host.Journal.Record(
        [this](const platform::InputEvent& event) {
            Recording().Add(event.Message, event.ParamL, event.ParamH, event.Time, event.hWnd);
        },
        [this] {
            app_.Hall.Main->SetPanel(1, "Macro recording stopped.");
            RecordingUnderWay = false;
        });
    if (!isHeard) app_.Host.Boxes.Say("Unable to record keystroke macro.");
}

void KeyMacros::RunMacro(session::Document& document, std::int16_t row) {
    const std::string& program = Slot(row).Program;
    if (base::StartsWith(program, textHead)) {
        document.txtText().SetSelText(program.substr(textHead.size()));
    } else if (RecordingUnderWay) {
        app_.Host.Boxes.Say("A Macro is currently being recorded, press CTRL+BREAK to end recording.");
    } else {
        app_.Host.Journal.CentrePointer();
        document.BringToFront();
        StartPlayback(row);
    }
    app_.Hall.Editor->HighlightSyntax(document);
}

void KeyMacros::StartPlayback(std::int16_t row) {
    if (app_.State.KsMacroSets.at(static_cast<std::size_t>(row)).Count() == 0) return;
    // A macro that runs itself, or another one, would never end.
    if (!app_.Host.Journal.Play([this] { return NextEvent(); }))
        return app_.Host.Boxes.Say("Unable to playback keystroke macro.");
    CurrentMacro = row;
    PlaybackPosition = 1;
}

std::optional<session::cKSMacro> KeyMacros::NextEvent() {
    if (PlaybackPosition > Recording().Count()) return std::nullopt;
    return Recording().Item(PlaybackPosition++);
}

void KeyMacros::ChooseMacro(session::Document& document, std::int16_t row) {
    session::CustomUtility& slot = Slot(row);
    if (document.ClearMacroPending) {
        slot.Program = undefined;
        document.ClearMacroPending = false;
        app_.Host.Boxes.Say("Macro cleared.");
    } else if (slot.Program == undefined) {
        SetMacro(document, row);
        app_.Hall.Utilities->SetTBMenu(document);
    } else {
        RunMacro(document, row);
    }
}

}  // namespace aids
