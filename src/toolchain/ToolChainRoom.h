#pragma once

#include <QRect>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/MdiChild.h"
#include "session/App.h"
#include "toolchain/CompilerOptions.h"
#include "toolchain/ErrorCodes.h"
#include "toolchain/VhdlOptions.h"

class QWidget;

namespace toolchain {

class Compiler;
class StatusWindows;
class frmMessage;

// The door of the tool chain: owns the run driver, the windows of a run, and what the option dialogs and the
// message list keep.
class ToolChainRoom : public session::ToolChain {
  public:
    // Enters itself and its commands into the hall. `outputsFile`: logic path of the record of what runs
    // wrote.
    ToolChainRoom(session::App& app, std::string outputsFile);
    ~ToolChainRoom() override;

    void LoadWindows(platform::qt::MdiFrame& frame);
    void UnloadWindows();

    ErrorCodes& Errors() { return errors_; }  // filled by the start
    // The frame of frmMessage in the area; nothing while it is an icon or fills it.
    std::optional<QRect> MessagesFrame() const;

    std::int16_t RunAndWait(const std::string& commandLine) override;
    void BringMessagesToFront() override;
    std::vector<session::OutputFrame> OutputFrames() const override;
    void IndepCompile() override;
    void ResetMessageFont() override;

  private:
    frmMessage& ShownMessages();
    void AddCommands();

    session::App& app_;
    std::string outputsFile_;
    ErrorCodes errors_;
    CompilerOptions compilerOptions_;  // outlives its window
    VhdlOptions vhdlOptions_;          // likewise
    platform::qt::MdiFrame* frame_ = nullptr;
    frmMessage* messages_ = nullptr;  // owned by its window in the area
    std::unique_ptr<StatusWindows> runWindows_;
    std::unique_ptr<Compiler> compiler_;
};

}  // namespace toolchain
