#include "shell/ToolbarModel.h"

#include <algorithm>

#include "base/Text.h"

namespace shell {
namespace {

using session::CustomUtility;
using enum ClickKind;
using G = ButtonGroup;

constexpr ToolbarRow table[ButtonCount] = {
    {"New", G::Fixed, "New", 1, NewText},
    {"Open", G::Fixed, "Open", 2, MainCommand, "mnuFileOpen"},
    {"Save", G::Save, "Save", 3, ChildCommand, "mnuFileSave"},
    {"", G::Save},
    {"Print", G::Print, "Print", 4, ChildCommand, "mnuFilePrint"},
    {"", G::Print},
    {"Cut", G::Selection, "Cut", 5, ChildCommand, "mnuEditCut"},
    {"Copy", G::Selection, "Copy", 6, ChildCommand, "mnuEditCopy"},
    {"Paste", G::Clipboard, "Paste", 7, ChildCommand, "mnuEditPaste"},
    {"", G::Line},
    {"DepComp", G::Run, "Device Dependent Compile", 8, ChildCommand, "mnuRunDepCompile"},
    {"IndepComp", G::Run, "Device Independent Compile", 9, ChildCommand, "mnuRunIndepCompile"},
    {"DepSim", G::Run, "Device Dependent Simulate", 10, ChildCommand, "mnuRunDepSimulate"},
    {"IndepSim", G::Run, "Device Independent Simulate", 11, ChildCommand, "mnuRunIndepSimulate"},
    {"", G::Line},
    {"Util1", G::Tool, "", 0, Tool},
    {"Util2", G::Tool, "", 0, Tool},
    {"Util3", G::Tool, "", 0, Tool},
    {"Util4", G::Tool, "", 0, Tool},
    {"Util5", G::Tool, "", 0, Tool},
    {"Util6", G::Tool, "", 0, Tool},
    {"Util7", G::Tool, "", 0, Tool},
    {"Util8", G::Tool, "", 0, Tool},
    {"Util9", G::Tool, "", 0, Tool},
    {"Util10", G::Tool, "", 0, Tool},
    {"Util11", G::Tool, "", 0, Tool},
    {"Util12", G::Tool, "", 0, Tool},
    {"Util13", G::Tool, "", 0, Nothing},  // kept: the thirteenth tool has no action
    {"", G::Fixed},
    {"AllTESK", G::Fixed, "Tile all Tesk tools", 21, TileTools},
};

// In the order of the images. "11-indep-sim" and so on: number and motif.
constexpr const char* imageNames[ImageCount] = {
    "new",      "open",       "save",    "print",      "cut",         "copy",     "paste",
    "dep-comp", "indep-comp", "dep-sim", "indep-sim",  "calculator",  "explorer", "dos",
    "stavrik",  "schematic",  "wavrik",  "programmer", "custom-tool", "macro",    "tile-tools",
};

struct ToolImage {
    std::string_view Name;
    int Image;
};
constexpr ToolImage toolImages[] = {{"Calculator", 12}, {"Explorer", 13}, {"DOS", 14},       {"Stavrik", 15},
                                    {"Schematic", 16},  {"Wavrik", 17},   {"Programmer", 18}};
constexpr int customImage = 19;
constexpr int macroImage = 20;

// The tools that SetTBMenu has put to use; of the others all.
template <typename Change>
void ForGroup(ToolbarState& toolbar, ButtonGroup group, const Change& change) {
    for (int i = 1; i <= ButtonCount; ++i) {
        const bool isUnused = group == G::Tool && i > toolbar.tbLastButton;
        if (table[i - 1].Group == group && !isUnused) change(toolbar.Button(i));
    }
}

void Show(ToolbarState& toolbar, ButtonGroup group, bool visible) {
    ForGroup(toolbar, group, [&](ButtonState& button) { button.Visible = visible; });
}

void Enable(ToolbarState& toolbar, ButtonGroup group, bool enabled) {
    ForGroup(toolbar, group, [&](ButtonState& button) { button.Enabled = enabled; });
}

void HideTools(ToolbarState& toolbar, int from) {
    for (int i = from; i <= LastToolButton; ++i) toolbar.Button(i).Visible = false;
}

void TickOnDocument(ToolbarState& toolbar, const ActiveChild& child, bool clipboardHasText,
                    TickEffects& effects) {
    effects.mnuFilePrint = true;
    Enable(toolbar, G::Print, true);
    const bool isSelected = child.SelLength != 0;
    effects.mnuEditCut = effects.mnuEditCopy = isSelected;
    Enable(toolbar, G::Selection, isSelected);
    effects.mnuEditPaste = clipboardHasText;
    Enable(toolbar, G::Clipboard, clipboardHasText);
    Show(toolbar, G::Line, true);
    Show(toolbar, G::Run, true);
    // Anywhere in the path, in this case: captions are upper case, and an untitled text has no ".PLD".
    Enable(toolbar, G::Run, base::Contains(child.Caption, ".PLD"));
    Show(toolbar, G::Tool, true);
    Enable(toolbar, G::Save, true);
    Enable(toolbar, G::Tool, true);
}

void TickOnOther(ToolbarState& toolbar, bool hasDocuments, TickEffects& effects) {
    constexpr std::int16_t lastBeforeTools = 9;  // as long as no document was ever open
    effects.mnuFilePrint = false;
    if (toolbar.tbLastButton == 0) toolbar.tbLastButton = lastBeforeTools;
    for (const ButtonGroup group : {G::Save, G::Print, G::Selection, G::Clipboard})
        Enable(toolbar, group, false);
    if (toolbar.tbLastButton > lastBeforeTools) {
        Enable(toolbar, G::Run, false);
        Enable(toolbar, G::Tool, false);
    }
    if (!hasDocuments) {
        Show(toolbar, G::Run, false);
        HideTools(toolbar, FirstToolButton);
    }
    Show(toolbar, G::Line, true);
}

void FillToolMenu(session::ToolMenu& menu, const session::Session& state) {
    // Two fewer than there are: kept, a place once shown as the 12th or 13th stays.
    for (std::size_t i = 1; i <= 11; ++i) menu.Places[i].IsVisible = false;
    menu.HasMacro = false;
    std::size_t count = 0;
    const auto add = [&](const CustomUtility& tool) { menu.Places[++count] = {tool.Name, true}; };
    for (const CustomUtility& tool : state.StdUtils) {
        if (tool.Menu) add(tool);
    }
    for (const CustomUtility& tool : state.CustUtils) {
        if (tool.Program.empty() || !tool.Menu) continue;
        add(tool);
        if (IsMacro(tool)) menu.HasMacro = true;
    }
    menu.HasTools = count >= 1;
}

void FillToolButtons(ToolbarState& toolbar, const session::Session& state) {
    int n = FirstToolButton - 1;
    const auto add = [&](const CustomUtility& tool) -> ButtonState& {
        ButtonState& button = toolbar.Button(++n);
        button.Tip = tool.Name;
        button.Visible = button.Enabled = true;
        return button;
    };
    for (const CustomUtility& tool : state.StdUtils) {
        if (!tool.Toolbar) continue;
        ButtonState& button = add(tool);
        for (const ToolImage& row : toolImages) {
            if (row.Name == tool.Name) button.Image = row.Image;
        }
    }
    for (const CustomUtility& tool : state.CustUtils) {
        if (tool.Program.empty() || !tool.Toolbar) continue;
        add(tool).Image = IsMacro(tool) ? macroImage : customImage;
    }
    toolbar.tbLastButton = static_cast<std::int16_t>(n);
    HideTools(toolbar, n + 1);
}

template <typename Tools, typename Test>
std::optional<int> FirstTool(const Tools& tools, Test test) {
    const auto tool = std::find_if(tools.begin(), tools.end(), test);
    if (tool == tools.end()) return std::nullopt;
    return static_cast<int>(tool - tools.begin());
}

CustomAction ActionOf(const CustomUtility& tool, bool documentActive) {
    if (tool.Program == "MACRO*") return CustomAction::UndefinedMacro;
    if (!IsMacro(tool)) return CustomAction::StartProgram;
    return documentActive ? CustomAction::RunMacro : CustomAction::None;
}

}  // namespace

std::span<const ToolbarRow, ButtonCount> ToolbarTable() { return table; }

std::string ImageName(int image) {
    const std::string number = std::to_string(image);
    return ":/icons/" + (image < 10 ? "0" + number : number) + "-" +
           std::span(imageNames)[static_cast<std::size_t>(image - 1)] + ".svg";
}

ToolbarState::ToolbarState() {
    for (std::size_t i = 0; i < Buttons.size(); ++i) {
        Buttons[i].Tip = table[i].Tip;
        Buttons[i].Image = table[i].Image;
    }
}

TickEffects TBMenuTimer(ToolbarState& toolbar, const ActiveChild& child, bool clipboardHasText,
                        bool hasDocuments) {
    TickEffects effects;
    if (child.Kind == ChildKind::None) {
        HideTools(toolbar, FirstToolButton);
        for (const ButtonGroup group : {G::Save, G::Print, G::Selection, G::Clipboard, G::Run})
            Enable(toolbar, group, false);
        effects.mnuClose = false;
        effects.ClearPanel1 = true;
        return effects;
    }
    effects.mnuClose = child.Kind != ChildKind::Other;
    if (child.Kind == ChildKind::Document)
        TickOnDocument(toolbar, child, clipboardHasText, effects);
    else
        TickOnOther(toolbar, hasDocuments, effects);
    return effects;
}

void SetTBMenu(ToolbarState& toolbar, session::Document& document, const session::Session& state) {
    FillToolMenu(document.Tools, state);
    document.UpdateMenus();
    FillToolButtons(toolbar, state);
}

ClickKind ClickOf(std::string_view key, std::string_view childCaption) {
    const auto row =
        std::find_if(std::begin(table), std::end(table), [&](const ToolbarRow& r) { return r.Key == key; });
    if (row == std::end(table)) return Nothing;
    if (key == "Save" && base::EqualNoCase(childCaption, "Messages")) return Nothing;
    return row->Click;
}

ToolChoice ChooseTool(const session::Session& state, std::string_view tip, bool documentActive) {
    const auto hasName = [&](const CustomUtility& tool) { return tool.Name == tip; };
    ToolChoice choice;
    choice.Standard = FirstTool(state.StdUtils, hasName);
    choice.Custom = FirstTool(state.CustUtils, hasName);
    if (choice.Custom) {
        choice.Action = ActionOf(state.CustUtils[static_cast<std::size_t>(*choice.Custom)], documentActive);
    }
    return choice;
}

std::string CannotBeFoundText(std::string_view program) {
    return "File " + std::string(program) + " cannot be found";
}

std::optional<int> MacroOfTip(const session::Session& state, std::string_view tip) {
    return FirstTool(state.CustUtils,
                     [&](const CustomUtility& tool) { return tool.Name == tip && IsMacro(tool); });
}

}  // namespace shell
