#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "session/Document.h"
#include "session/Session.h"

// The toolbar of frmMain as data, and everything that decides about it. The window shows what stands here.
namespace shell {

inline constexpr int ButtonCount = 30;
inline constexpr int ImageCount = 21;
inline constexpr int FirstToolButton = 16;
inline constexpr int LastToolButton = 28;

// What a click calls.
enum class ClickKind {
    Nothing,
    NewText,       // OpenDocument without a path
    MainCommand,   // a command of frmMain
    ChildCommand,  // a command of the active child, by name
    TileTools,     // TileAllTeskTools
    Tool,          // the tool whose name is the button's tip
};

// What the timer enables and shows together.
enum class ButtonGroup { Fixed, Save, Print, Selection, Clipboard, Line, Run, Tool };

// A button at its fixed place.
struct ToolbarRow {
    const char* Key;  // empty: a separator
    ButtonGroup Group;
    const char* Tip = "";
    int Image = 0;  // 1 to 21; 0 for tools, which SetTBMenu gives theirs
    ClickKind Click = ClickKind::Nothing;
    const char* Command = "";  // control name of the menu entry
};

// The rows 1 to 30; element 0 is button 1.
std::span<const ToolbarRow, ButtonCount> ToolbarTable();

// Resource name of an image, 1 to 21.
std::string ImageName(int image);

struct ButtonState {
    bool Visible = true;
    bool Enabled = true;
    std::string Tip;
    int Image = 0;
    bool operator==(const ButtonState&) const = default;
};

struct ToolbarState {
    ToolbarState();  // as the table has it
    ButtonState& Button(int index) { return Buttons.at(static_cast<std::size_t>(index - 1)); }
    const ButtonState& Button(int index) const { return Buttons.at(static_cast<std::size_t>(index - 1)); }

    std::array<ButtonState, ButtonCount> Buttons;
    std::int16_t tbLastButton = 0;  // the highest button in use by SetTBMenu; 0 before the first document
};

// What the timer looks at.
enum class ChildKind { None, Other, Closable, Document };

struct ActiveChild {
    ChildKind Kind = ChildKind::None;
    std::string Caption;
    std::int32_t SelLength = 0;  // of a document's txtText
};

// What the timer wants of menu entries; those without a value stay as they are.
struct TickEffects {
    std::optional<bool> mnuClose;      // of frmMain
    std::optional<bool> mnuFilePrint;  // of frmMain
    std::optional<bool> mnuEditCut;    // these of the active document
    std::optional<bool> mnuEditCopy;
    std::optional<bool> mnuEditPaste;
    bool ClearPanel1 = false;
};

TickEffects TBMenuTimer(ToolbarState& toolbar, const ActiveChild& child, bool clipboardHasText,
                        bool hasDocuments);

// Fills the tools into the document's Utilities menu and onto the buttons 16 to 28.
void SetTBMenu(ToolbarState& toolbar, session::Document& document, const session::Session& state);

// What a click on the button of that key does. `childCaption` is the active child's.
ClickKind ClickOf(std::string_view key, std::string_view childCaption);

// The tools that a click on a button of that tip starts: a standard and a custom one may bear the same name,
// and then both do.
enum class CustomAction { None, UndefinedMacro, RunMacro, StartProgram };
struct ToolChoice {
    std::optional<int> Standard;  // index into StdUtils, for ActivateTool
    std::optional<int> Custom;    // index into CustUtils
    CustomAction Action = CustomAction::None;
};
ToolChoice ChooseTool(const session::Session& state, std::string_view tip, bool documentActive);

inline constexpr const char* UndefinedMacroText =
    "The macro has not been defined.  You must define a macro before it can be used.";
std::string CannotBeFoundText(std::string_view program);

// The macro slot that a right click on a button of that tip defines anew: the first of that name that is one.
std::optional<int> MacroOfTip(const session::Session& state, std::string_view tip);

}  // namespace shell
