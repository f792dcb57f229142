#include "platform/qt/Guard.h"
#include "shell/CompanionTools.h"
#include "shell/windows/Shell.h"
#include "shell/windows/ToolbarView.h"
#include "shell/windows/Welcome.h"

namespace shell {
namespace {

constexpr std::chrono::milliseconds toolbarInterval{500};

}  // namespace

void Shell::LoadToolbar() {
    toolbarView_ = new ToolbarView(main_->ToolBar());
    toolbarView_->OnClick = [this](const std::string& key) { ClickToolbar(key); };
    toolbarView_->OnRightClick = [this](const std::string& tip) { RedefineMacro(tip); };
    platform::qt::On(main_.get(), &frmMain::ActiveChildChanged, main_.get(), [this] { TickToolbar(); });
    // Nobody waits for the next tick: what can be cut or pasted can be so at once.
    app_.Host.Clip.OnChange = [this] { TickToolbar(); };
    TBMenuTimer = app_.Host.Time.Every(toolbarInterval, [this] { TickToolbar(); });
    TickToolbar();
}

void Shell::TickToolbar() {
    const platform::qt::MdiChild* active = main_->ActiveChild();
    ActiveChild child;
    if (active != nullptr) {
        child.Kind = active->CanClose() ? ChildKind::Closable : ChildKind::Other;
        if (active->Menus() != nullptr) child.Kind = ChildKind::Document;
        child.Caption = active->Title();
        child.SelLength = active->SelLength();
    }
    const TickEffects effects =
        shell::TBMenuTimer(toolbar_, child, app_.Host.Clip.HasText(), app_.State.Documents.Count() > 0);
    toolbarView_->Show(WithoutMissingCommands());
    ApplyTick(effects, active != nullptr ? active->Menus() : nullptr);
    main_->EnableEntries();
    welcome_->Offer(app_.State.Documents.Count() == 0);
    main_->ShowKeyState(active == nullptr || active->IsInserting());
}

void Shell::ApplyTick(const TickEffects& effects, const platform::qt::MenuSet* ofChild) {
    const auto set = [](const platform::qt::MenuSet& menus, const char* entry,
                        const std::optional<bool>& enabled) {
        if (enabled) menus.Entry(entry).setEnabled(*enabled);
    };
    set(main_->Menus(), "mnuClose", effects.mnuClose);
    set(main_->Menus(), "mnuFilePrint", effects.mnuFilePrint);
    if (ofChild != nullptr) {
        set(*ofChild, "mnuEditCut", effects.mnuEditCut);
        set(*ofChild, "mnuEditCopy", effects.mnuEditCopy);
        set(*ofChild, "mnuEditPaste", effects.mnuEditPaste);
    }
    if (effects.ClearPanel1) main_->SetPanel(1, "");
}

// A button whose command does not exist is disabled, as its menu entry is.
ToolbarState Shell::WithoutMissingCommands() const {
    ToolbarState shown = toolbar_;
    const platform::qt::MdiChild* active = main_->ActiveChild();
    if (active == nullptr || active->Menus() == nullptr) return shown;
    for (int i = 1; i <= ButtonCount; ++i) {
        const ToolbarRow& row = ToolbarTable()[static_cast<std::size_t>(i - 1)];
        if (row.Click == ClickKind::ChildCommand && hall_.DocumentCommands.Find(row.Command) == nullptr) {
            shown.Button(i).Enabled = false;
        }
    }
    return shown;
}

void Shell::SetTBMenu(session::Document& document) {
    shell::SetTBMenu(toolbar_, document, app_.State);
    if (toolbarView_ != nullptr) toolbarView_->Show(WithoutMissingCommands());
}

void Shell::ClickToolbar(const std::string& key) {
    const platform::qt::MdiChild* child = main_->ActiveChild();
    const std::string caption = child != nullptr ? child->Title() : "";
    for (int i = 1; i <= ButtonCount; ++i) {
        const ToolbarRow& row = ToolbarTable()[static_cast<std::size_t>(i - 1)];
        if (row.Key != key) continue;
        switch (ClickOf(key, caption)) {
            case ClickKind::NewText:
                hall_.Editor->OpenDocument();
                break;
            case ClickKind::MainCommand:
                hall_.MainCommands.Run(row.Command, -1);
                break;
            case ClickKind::ChildCommand:
                ClickChildCommand(row.Command);
                break;
            case ClickKind::Tool:
                RunTool(toolbar_.Button(i).Tip);
                break;
            case ClickKind::TileTools:
                TileAllTeskTools();
                break;
            case ClickKind::Nothing:
                break;
        }
    }
}

void Shell::ClickChildCommand(const std::string& command) {
    const platform::qt::MdiChild* child = main_->ActiveChild();
    session::Document* document = ActiveDocument();
    if (document == nullptr || !child->Menus()->Entry(command).isEnabled()) return;
    hall_.DocumentCommands.Run(command, *document, -1);
}

void Shell::RunTool(const std::string& tip) {
    const ToolChoice choice = ChooseTool(app_.State, tip, ActiveDocument() != nullptr);
    if (choice.Standard) ActivateTool(app_, *choice.Standard);
    if (!choice.Custom) return;
    const std::string& program = app_.State.CustUtils[static_cast<std::size_t>(*choice.Custom)].Program;
    switch (choice.Action) {
        case CustomAction::UndefinedMacro:
            app_.Host.Boxes.Say(UndefinedMacroText);
            break;
        case CustomAction::StartProgram:
            StartUtility(app_, program);
            break;
        case CustomAction::RunMacro:
            hall_.Macros->RunMacro(*ActiveDocument(), static_cast<std::int16_t>(*choice.Custom));
            break;
        case CustomAction::None:
            break;
    }
}

void Shell::RedefineMacro(const std::string& tip) {
    const std::optional<int> row = MacroOfTip(app_.State, tip);
    session::Document* document = ActiveDocument();
    if (!row || document == nullptr) return;
    hall_.Macros->SetMacro(*document, static_cast<std::int16_t>(*row));
    SetTBMenu(*document);
}

}  // namespace shell
