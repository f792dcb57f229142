#include "support/InProcessLibraries.h"

#include <dlfcn.h>

#include "base/RunTimeError.h"
#include "platform/toolhost/SentTexts.h"

namespace doubles {
namespace {

InProcessLibraries* current = nullptr;  // for SendMessageA, which is a plain C function

}  // namespace

InProcessLibraries::InProcessLibraries() { current = this; }
InProcessLibraries::~InProcessLibraries() { current = nullptr; }

platform::WindowHandle InProcessLibraries::Register(platform::MessageHandler handler) {
    handlers_[++last_] = std::move(handler);
    return last_;
}

platform::ToolLibraries::Module InProcessLibraries::Load(const std::string& path) {
    void* handle = ::dlopen(paths_.ToHost(path).c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (handle == nullptr) return 0;
    modules_[++last_] = handle;
    return last_;
}

void InProcessLibraries::Free(Module module) {
    const auto found = modules_.find(module);
    if (found == modules_.end()) return;
    ::dlclose(found->second);
    modules_.erase(found);
}

std::int32_t InProcessLibraries::Call(Module module, const std::string& entry,
                                      std::span<std::uint8_t> record) {
    const auto found = modules_.find(module);
    void* address = found == modules_.end() ? nullptr : ::dlsym(found->second, entry.c_str());
    if (address == nullptr) throw base::RunTimeError(platform::errNoEntryPoint, "No entry point " + entry);
    return reinterpret_cast<std::int32_t (*)(void*)>(address)(record.data());
}

void InProcessLibraries::Send(platform::WindowHandle to, const platform::ToolMessage& message) {
    const auto found = handlers_.find(to);
    if (found != handlers_.end()) found->second(message);
}

}  // namespace doubles

extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t wparam,
                                     std::intptr_t lparam) {
    const auto [first, second] = platform::toolhost::SentTexts(message, wparam, lparam);
    if (doubles::current != nullptr) {
        doubles::current->Send(handle, {message, std::string(first), std::string(second)});
    }
    return 0;
}
