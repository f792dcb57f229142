#pragma once

#include <map>

#include "platform/PathMap.h"
#include "platform/ToolLibraries.h"

namespace doubles {

// Tool libraries loaded into the test itself, for a debugger and the sanitizers: a library that misbehaves
// takes the test along. One object at a time. The test program must export its symbols (ENABLE_EXPORTS).
class InProcessLibraries : public platform::ToolLibraries {
  public:
    InProcessLibraries();
    ~InProcessLibraries() override;
    InProcessLibraries(const InProcessLibraries&) = delete;
    InProcessLibraries& operator=(const InProcessLibraries&) = delete;

    platform::WindowHandle Register(platform::MessageHandler handler) override;
    void Unregister(platform::WindowHandle handle) override { handlers_.erase(handle); }
    Module Load(const std::string& path) override;
    void Free(Module module) override;
    std::int32_t Call(Module module, const std::string& entry, std::span<std::uint8_t> record) override;

    void Send(platform::WindowHandle to, const platform::ToolMessage& message);

  private:
    platform::PathMap paths_;
    std::map<platform::WindowHandle, platform::MessageHandler> handlers_;
    std::map<Module, void*> modules_;
    std::uint32_t last_ = 0;  // handle or module handed out
};

}  // namespace doubles
