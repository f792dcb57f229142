#include <QMdiSubWindow>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "platform/qt/Guard.h"
#include "shell/windows/Shell.h"
#include "shell/windows/ToolbarView.h"

namespace shell {
namespace {

constexpr std::chrono::milliseconds toolbarInterval{500};

}  // namespace

void Shell::LoadToolbar() {
    toolbarView_ = new ToolbarView(main_->ToolBar());
    toolbarView_->OnClick = [this](const std::string& key) { ClickToolbar(key); };
    platform::qt::On(main_.get(), &frmMain::ActiveChildChanged, main_.get(), [this] { TickToolbar(); });
    // Nobody waits for the next tick: what can be cut or pasted can be so at once.
    app_.Host.Clip.OnChange = [this] { TickToolbar(); };
    TBMenuTimer = app_.Host.Time.Every(toolbarInterval, [this] { TickToolbar(); });
    TickToolbar();
}

void Shell::TickToolbar() {
    ActiveChild child;
    auto* document = main_->ActiveDocument();
    if (document != nullptr) {
        child = {"frmDocument", document->Caption(), document->txtText().SelLength()};
    } else if (const QMdiSubWindow* window = main_->ActiveChild()) {
        child = {"frmMessage", window->windowTitle().toStdString(), 0};
    }
    const TickEffects effects =
        shell::TBMenuTimer(toolbar_, child, app_.Host.Clip.HasText(), app_.State.Documents.Count() > 0);
    toolbarView_->Show(WithoutMissingCommands());
    const auto set = [](QAction& entry, const std::optional<bool>& enabled) {
        if (enabled) entry.setEnabled(*enabled);
    };
    set(main_->Menus().Entry("mnuClose"), effects.mnuClose);
    set(main_->Menus().Entry("mnuFilePrint"), effects.mnuFilePrint);
    if (document != nullptr) {
        set(document->Menus().Entry("mnuEditCut"), effects.mnuEditCut);
        set(document->Menus().Entry("mnuEditCopy"), effects.mnuEditCopy);
        set(document->Menus().Entry("mnuEditPaste"), effects.mnuEditPaste);
    }
    main_->ShowKeyState(document == nullptr || document->IsInserting());
    if (effects.ClearPanel1) main_->SetPanel(1, "");
}

// A button whose command does not exist is disabled, as its menu entry is.
ToolbarState Shell::WithoutMissingCommands() const {
    ToolbarState shown = toolbar_;
    const auto* document = main_->ActiveDocument();
    for (int i = 1; i <= ButtonCount; ++i) {
        const ToolbarRow& row = ToolbarTable()[static_cast<std::size_t>(i - 1)];
        if (row.Click == ClickKind::ChildCommand && document != nullptr &&
            !document->HasCommand(row.Command)) {
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
    const QMdiSubWindow* window = main_->ActiveChild();
    const std::string caption = window != nullptr ? window->windowTitle().toStdString() : "";
    for (int i = 1; i <= ButtonCount; ++i) {
        const ToolbarRow& row = ToolbarTable()[static_cast<std::size_t>(i - 1)];
        if (row.Key != key) continue;
        switch (ClickOf(key, caption)) {
            case ClickKind::NewText:
                OpenDocument();
                break;
            case ClickKind::MainCommand:
                MainCommand(row.Command);
                break;
            case ClickKind::ChildCommand:
                ClickChildCommand(row.Command);
                break;
            case ClickKind::Tool:
                RunTool(toolbar_.Button(i).Tip);
                break;
            case ClickKind::TileTools:
            case ClickKind::Nothing:
                break;
        }
    }
}

void Shell::ClickChildCommand(const std::string& command) {
    auto* document = main_->ActiveDocument();
    if (document != nullptr && document->Menus().Entry(command).isEnabled()) document->RunCommand(command);
}

void Shell::RunTool(const std::string& tip) {
    const ToolChoice choice = ChooseTool(app_.State, tip, main_->ActiveDocument() != nullptr);
    if (choice.Standard) ActivateTool(app_, *choice.Standard);
    if (!choice.Custom) return;
    const std::string& program = app_.State.CustUtils[static_cast<std::size_t>(*choice.Custom)].Program;
    switch (choice.Action) {
        case CustomAction::UndefinedMacro:
            app_.Host.Boxes.Say(UndefinedMacroText);
            break;
        case CustomAction::StartProgram:
            try {
                app_.Host.Programs.Start(program);
            } catch (const base::RunTimeError&) {
                app_.Host.Boxes.Say(CannotBeFoundText(program));
            }
            break;
        case CustomAction::RunMacro:
        case CustomAction::None:
            break;
    }
}

}  // namespace shell
