#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/toolhost/Protocol.h"

namespace platform::toolhost {

// The host's end of the line: does what the program asks and passes on what the libraries send.
class Server {
  public:
    explicit Server(int descriptor) : descriptor_(descriptor), channel_(descriptor) {}

    void Serve();  // until the program hangs up

    // Ends the host: alone between the program's commands, in the midst of one with all that the libraries
    // have started.
    [[noreturn]] void Leave();
    // Leaves as soon as the program hangs up or is gone, whatever the libraries are doing then.
    void LeaveWithTheProgram();

    // Relays a message and waits until the window has handled it. From any thread of the library; between
    // the program's commands there is no one to hear it, and it is dropped.
    void Relay(std::uint32_t window, std::uint32_t number, std::string_view first, std::string_view second);

  private:
    void Obey(const Frame& frame);
    void Load(std::uint32_t module, const std::string& path);
    void Free(std::uint32_t module);
    void Call(Unpacker& arguments);
    bool Hear(Frame& answer);  // false: the program is gone
    void Answer(FrameKind kind, std::initializer_list<std::string_view> parts);

    int descriptor_;
    Channel channel_;
    std::mutex line_;                 // held while speaking
    std::atomic<bool> busy_ = false;  // a command of the program is under way; changes under line_
    std::map<std::uint32_t, void*> modules_;
};

}  // namespace platform::toolhost
