#include "shell/ToolbarModel.h"

#include <algorithm>

#include "base/Text.h"

namespace shell {
namespace {

using session::CustomUtility;
using enum ClickKind;

constexpr ToolbarRow separator = {""};

constexpr ToolbarRow table[ButtonCount] = {
    {"New", "New", 1, NewText},
    {"Open", "Open", 2, MainCommand, "mnuFileOpen"},
    {"Save", "Save", 3, ChildCommand, "mnuFileSave"},
    separator,
    {"Print", "Print", 4, ChildCommand, "mnuFilePrint"},
    separator,
    {"Cut", "Cut", 5, ChildCommand, "mnuEditCut"},
    {"Copy", "Copy", 6, ChildCommand, "mnuEditCopy"},
    {"Paste", "Paste", 7, ChildCommand, "mnuEditPaste"},
    separator,
    {"DepComp", "Device Dependent Compile", 8, ChildCommand, "mnuRunDepCompile"},
    {"IndepComp", "Device Independent Compile", 9, ChildCommand, "mnuRunIndepCompile"},
    {"DepSim", "Device Dependent Simulate", 10, ChildCommand, "mnuRunDepSimulate"},
    {"IndepSim", "Device Independent Simulate", 11, ChildCommand, "mnuRunIndepSimulate"},
    separator,
    {"Util1", "", 0, Tool},
    {"Util2", "", 0, Tool},
    {"Util3", "", 0, Tool},
    {"Util4", "", 0, Tool},
    {"Util5", "", 0, Tool},
    {"Util6", "", 0, Tool},
    {"Util7", "", 0, Tool},
    {"Util8", "", 0, Tool},
    {"Util9", "", 0, Tool},
    {"Util10", "", 0, Tool},
    {"Util11", "", 0, Tool},
    {"Util12", "", 0, Tool},
    {"Util13", "", 0, Nothing},  // kept: the thirteenth tool has no action
    separator,
    {"AllTESK", "Tile all Tesk tools", 21, TileTools},
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

bool IsMacro(const CustomUtility& tool) { return base::StartsWith(tool.Program, "MACRO"); }

void Show(ToolbarState& toolbar, int first, int last, bool visible) {
    for (int i = first; i <= last; ++i) toolbar.Button(i).Visible = visible;
}

void Enable(ToolbarState& toolbar, int first, int last, bool enabled) {
    for (int i = first; i <= last; ++i) toolbar.Button(i).Enabled = enabled;
}

void TickOnDocument(ToolbarState& toolbar, const ActiveChild& child, bool clipboardHasText,
                    TickEffects& effects) {
    effects.mnuFilePrint = true;
    Enable(toolbar, 5, 5, true);
    const bool isSelected = child.SelLength != 0;
    effects.mnuEditCut = effects.mnuEditCopy = isSelected;
    Enable(toolbar, 7, 8, isSelected);
    effects.mnuEditPaste = clipboardHasText;
    Enable(toolbar, 9, 9, clipboardHasText);
    Show(toolbar, 10, 15, true);
    Enable(toolbar, 10, 10, true);
    Enable(toolbar, 15, 15, true);
    // Anywhere in the path, in this case: captions are upper case, and an untitled text has no ".PLD".
    Enable(toolbar, 11, 14, base::Contains(child.Caption, ".PLD"));
    Show(toolbar, FirstToolButton, toolbar.tbLastButton, true);
    Enable(toolbar, 3, 4, true);
    Enable(toolbar, FirstToolButton, toolbar.tbLastButton, true);
}

void TickOnOther(ToolbarState& toolbar, bool hasDocuments, TickEffects& effects) {
    effects.mnuFilePrint = false;
    if (toolbar.tbLastButton == 0) toolbar.tbLastButton = 9;
    Enable(toolbar, 3, toolbar.tbLastButton, false);
    if (hasDocuments)
        Enable(toolbar, 11, toolbar.tbLastButton, false);
    else
        Show(toolbar, 11, LastToolButton, false);
    for (const int line : {10, 15}) {
        Show(toolbar, line, line, true);
        Enable(toolbar, line, line, true);
    }
}

// The Utilities menu of one document while its rows are filled.
class ToolMenu {
  public:
    explicit ToolMenu(session::Document& document) : document_(document) {}

    void Clear() {
        // Two fewer than there are: kept, a row once shown as the 12th or 13th stays.
        for (int i = 1; i <= 11; ++i) document_.SetMenuVisible(Entry(i), false);
        document_.SetMenuVisible("mnuUtilClearMacro", false);
    }
    void Add(const CustomUtility& tool) {
        const std::string entry = Entry(++count_);
        document_.SetMenuCaption(entry, tool.Name);
        ShowEntry(entry);
    }
    void ShowEntry(const std::string& entry) {
        document_.SetMenuVisible(entry, true);
        document_.SetMenuEnabled(entry, true);
    }
    void Finish() { document_.SetMenuVisible("mnuUtilBarBottom", count_ >= 1); }

  private:
    static std::string Entry(int index) { return "mnuUtilTool(" + std::to_string(index) + ")"; }

    session::Document& document_;
    int count_ = 0;
};

void FillToolMenu(session::Document& document, const session::Session& state) {
    ToolMenu menu(document);
    menu.Clear();
    for (const CustomUtility& tool : state.StdUtils) {
        if (tool.Menu) menu.Add(tool);
    }
    for (const CustomUtility& tool : state.CustUtils) {
        if (tool.Program.empty() || !tool.Menu) continue;
        menu.Add(tool);
        if (IsMacro(tool)) menu.ShowEntry("mnuUtilClearMacro");
    }
    menu.Finish();
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
    Show(toolbar, n + 1, LastToolButton, false);
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
    if (child.Name.empty()) {
        Show(toolbar, FirstToolButton, LastToolButton, false);
        Enable(toolbar, 3, 14, false);
        effects.mnuClose = false;
        effects.ClearPanel1 = true;
        return effects;
    }
    const bool isDocument = child.Name == "frmDocument";
    effects.mnuClose = isDocument || child.Name == "frmProject";
    if (isDocument)
        TickOnDocument(toolbar, child, clipboardHasText, effects);
    else
        TickOnOther(toolbar, hasDocuments, effects);
    return effects;
}

void SetTBMenu(ToolbarState& toolbar, session::Document& document, const session::Session& state) {
    FillToolMenu(document, state);
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
