#include "toolchain/ToolChainRoom.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include "toolchain/BackPin.h"
#include "toolchain/Compiler.h"
#include "toolchain/frmCompiler.h"
#include "toolchain/frmMessage.h"
#include "toolchain/frmSimulator.h"
#include "toolchain/frmVhdl.h"
#include "toolchain/windows/StatusWindows.h"

namespace toolchain {

using session::Document;

ToolChainRoom::ToolChainRoom(session::App& app, std::string outputsFile)
    : app_(app), outputsFile_(std::move(outputsFile)) {
    app.Hall.ToolChain = this;
    AddCommands();
}

ToolChainRoom::~ToolChainRoom() = default;

void ToolChainRoom::AddCommands() {
    using platform::qt::Modal;
    app_.Hall.MainCommands.Add({
        {"mnuCompiler",
         [this](int) { Modal(new frmCompiler(app_, compilerOptions_, &frame_->Window())).Run(); }},
        {"mnuSimulator", [this](int) { Modal(new frmSimulator(app_, &frame_->Window())).Run(); }},
        {"mnuVhdl", [this](int) { Modal(new frmVhdl(app_, vhdlOptions_, &frame_->Window())).Run(); },
         [this] { return !app_.State.UtilityDir.empty(); }},
    });
    app_.Hall.DocumentCommands.Add({
        {"mnuRunDepCompile", [this](Document& document, int) { compiler_->RunDepCompile(document); }},
        {"mnuRunIndepCompile", [this](Document& document, int) { compiler_->RunIndepCompile(document); }},
        {"mnuRunDepSimulate", [this](Document& document, int) { compiler_->RunDepSimulate(document); }},
        {"mnuRunIndepSimulate", [this](Document& document, int) { compiler_->RunIndepSimulate(document); }},
        {"mnuRunVhdlCompile", [this](Document& document, int) { compiler_->RunVhdlCompile(document); }},
        {"mnuRunVhdlAnalysis", [this](Document& document, int) { compiler_->RunVhdlAnalysis(document); }},
        {"mnuFloatAll", [this](Document& document, int) { RunBackPin(app_, document, BackPin::FloatAll); }},
        {"mnuAssignAll", [this](Document& document, int) { RunBackPin(app_, document, BackPin::AssignAll); }},
        {"mnuAssignPins",
         [this](Document& document, int) { RunBackPin(app_, document, BackPin::AssignPins); }},
    });
}

void ToolChainRoom::LoadWindows(platform::qt::MdiFrame& frame) {
    frame_ = &frame;
    messages_ = new frmMessage(app_, errors_);
    QMdiSubWindow& window = frame.AddChild(*messages_, *messages_);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    runWindows_ = std::make_unique<StatusWindows>(
        app_, [this]() -> frmMessage& { return ShownMessages(); }, &frame.Window());
    compiler_ = std::make_unique<Compiler>(app_, *runWindows_, outputsFile_);
}

void ToolChainRoom::UnloadWindows() {
    compiler_.reset();
    runWindows_.reset();
    messages_ = nullptr;
}

// The user may have closed it; a run brings it back, the active child stays so.
frmMessage& ToolChainRoom::ShownMessages() {
    QMdiSubWindow& window = messages_->Frame();
    if (!window.isVisible()) {
        platform::qt::MdiChild* active = frame_->ActiveChild();
        messages_->show();
        window.show();
        if (active != nullptr) window.mdiArea()->setActiveSubWindow(&active->Frame());
    }
    return *messages_;
}

std::int16_t ToolChainRoom::RunAndWait(const std::string& commandLine) {
    return toolchain::RunAndWait(app_.Host, commandLine);
}

std::vector<session::OutputFrame> ToolChainRoom::OutputFrames() const { return toolchain::OutputFrames(); }

void ToolChainRoom::IndepCompile() { compiler_->IndepCompile(); }

void ToolChainRoom::BringMessagesToFront() {
    QMdiSubWindow& window = messages_->Frame();
    window.show();
    messages_->show();
    window.mdiArea()->setActiveSubWindow(&window);
    window.raise();
}

void ToolChainRoom::ResetMessageFont() { messages_->ResetFont(); }

std::optional<QRect> ToolChainRoom::MessagesFrame() const {
    const QMdiSubWindow& window = messages_->Frame();
    if (window.isMinimized() || window.isMaximized()) return std::nullopt;
    return window.geometry();
}

}  // namespace toolchain
