#pragma once

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "platform/Clock.h"
#include "platform/PathMap.h"
#include "platform/ToolLibraries.h"
#include "platform/qt/ToolHostChild.h"

namespace platform::qt {

class ToolWatch;

// The closed libraries in a process of their own, the program `toolhost`. It lives from the first load to
// the last free; after a crash the next load starts a new one. While a library works the windows paint, what
// the user does is thrown away, and one that stays silent is asked about (ToolWatch). What a message handler
// throws reaches the caller when the library has returned.
class ToolHost : public ToolLibraries {
  public:
    // `program`: host path of the tool host; `memory`: bytes that it may take.
    explicit ToolHost(const Clock& clock, PathMap paths = PathMap(), std::string program = ProgramBeside(),
                      std::uint64_t memory = HalfOfTheMachine());
    ~ToolHost() override;

    static std::string ProgramBeside();       // `toolhost` in the folder of the running program
    static std::uint64_t HalfOfTheMachine();  // bytes of memory

    WindowHandle Register(MessageHandler handler) override;
    void Unregister(WindowHandle handle) override;
    // A name without extension gets ".dll". A library that the user stops while it loads counts as one that
    // can't be loaded.
    Module Load(const std::string& path) override;
    void Free(Module module) override;
    std::int32_t Call(Module module, const std::string& entry, std::span<std::uint8_t> record) override;

    bool IsRunning() const { return child_ != nullptr; }

  private:
    using Milliseconds = Clock::Milliseconds;

    toolhost::Frame Await(ToolWatch& watch, Milliseconds limit);
    toolhost::Frame Ask(toolhost::FrameKind kind, std::initializer_list<std::string_view> parts,
                        Milliseconds limit);
    void Deliver(const toolhost::Frame& frame);
    [[noreturn]] void Fail(const std::string& how);
    void EndChild();

    const Clock& clock_;
    PathMap paths_;
    std::string program_;
    std::uint64_t memory_;
    std::unique_ptr<ToolHostChild> child_;
    std::map<WindowHandle, MessageHandler> handlers_;
    std::set<Module> loaded_;
    WindowHandle nextHandle_ = 0x10000;
    Module nextModule_ = 0;  // numbers are not used twice: one that was freed means nothing
    bool busy_ = false;
    std::exception_ptr handlerError_;
};

}  // namespace platform::qt
