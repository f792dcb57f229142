#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace session {

// An output file that the compiler can be asked for, as windows offer it.
struct OutputOption {
    std::string Token;  // in CompilerFlags
    std::string Control;
    std::string Caption;
    std::string Tip;
};

struct OutputFrame {
    std::string Name;
    std::string Caption;
    std::vector<OutputOption> Options;
};

// The tool chain, as other rooms see it.
class ToolChain {
  public:
    virtual ~ToolChain() = default;

    virtual std::int16_t RunAndWait(const std::string& commandLine) = 0;  // 0, or the error number
    virtual void BringMessagesToFront() = 0;
    virtual std::vector<OutputFrame> OutputFrames() const = 0;  // tokens in the order of writing
    virtual void IndepCompile() = 0;                            // of sProject as it stands on disk
    virtual void ResetMessageFont() = 0;                        // ResetFont of frmMessage
};

}  // namespace session
