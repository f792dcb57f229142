#include "platform/ToolCall.h"

#include <exception>

#include "base/RunTimeError.h"

namespace platform {

std::int32_t CallTool(Host& host, ToolLibraries::Module module, const std::string& library,
                      const std::string& entry, std::span<std::uint8_t> record) {
    try {
        return host.Libraries.Call(module, entry, record);
    } catch (const std::exception& error) {
        const auto* known = dynamic_cast<const base::RunTimeError*>(&error);
        std::string text = error.what();
        if (known != nullptr && known->Number() == errToolEnded)
            text = "The tool " + library + " ended unexpectedly: " + text + ".";
        host.Boxes.Say(text);
        return 0;
    }
}

}  // namespace platform
