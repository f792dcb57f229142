#include "kernel/Host.h"

#include <string>

#include "base/ToolInterface.h"

namespace kernel {

namespace {

void SendText(std::uint32_t handle, std::uint32_t message, std::string_view text) {
    const std::string copy(text);
    SendMessageA(handle, message, reinterpret_cast<std::uintptr_t>(copy.c_str()), 0);
}

}  // namespace

void HostListener::Status(std::string_view text) { SendText(status_, base::msgStatus, text); }
void HostListener::Info(std::string_view text) { SendText(status_, base::msgInfo, text); }
void HostListener::Error() { SendMessageA(status_, base::msgError, 0, 0); }
void HostListener::Warning() { SendMessageA(status_, base::msgWarning, 0, 0); }

void HostListener::Line(std::string_view text) {
    const std::string copy(text);
    SendMessageA(messages_, base::msgAddString, 0, reinterpret_cast<std::intptr_t>(copy.c_str()));
}

}  // namespace kernel
