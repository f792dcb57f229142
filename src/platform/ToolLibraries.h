#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "base/ToolInterface.h"

namespace platform {

using WindowHandle = std::uint32_t;  // never 0 when handed out

// A window message of a closed library. The texts are copies, made while the library waits; a text
// argument that was null is empty.
struct ToolMessage {
    std::uint32_t Number = 0;
    std::string First;   // text of the first parameter, where the number carries one
    std::string Second;  // text of the second parameter
    bool operator==(const ToolMessage&) const = default;
};

using MessageHandler = std::function<void(const ToolMessage&)>;

// Numbers that closed libraries send.
using enum base::ToolMessageNumber;

// Errors of Call.
enum ToolErrorNumber : int {
    errToolEnded = 51,     // the library ended unexpectedly; the description says how
    errNoEntryPoint = 453  // the library has no such entry
};

// The closed libraries, run so that they can't harm the program.
class ToolLibraries {
  public:
    using Module = std::uint32_t;
    static constexpr std::size_t MaxTextLength = 65536;  // bytes of a message text; the rest is cut

    virtual ~ToolLibraries() = default;

    // Hands out the handle that libraries send to. The handler runs on the user-interface thread, in the
    // order of sending, while the library waits.
    virtual WindowHandle Register(MessageHandler handler) = 0;
    virtual void Unregister(WindowHandle handle) = 0;

    // Loads by full name (a logic path); 0 if that fails.
    virtual Module Load(const std::string& path) = 0;
    virtual void Free(Module module) = 0;  // errors, and 0, are ignored

    // Calls `entry` of a loaded library with the address of the record and returns its result. The library
    // may write into the record. While it runs the windows paint and take no input. Throws
    // base::RunTimeError: 453 if the library has no such entry; 51 if it ended unexpectedly, with a
    // description that says how (such as "signal 11", "exit code 3", or that the user has stopped it).
    virtual std::int32_t Call(Module module, const std::string& entry, std::span<std::uint8_t> record) = 0;
};

}  // namespace platform
