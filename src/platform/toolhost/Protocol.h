#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

// What the program and its tool host say to each other: frames over a local stream socket. A frame is its
// kind and the size of its payload, 32 bits each in the machine's order, then the payload. The program asks,
// the host answers; between the two it may send messages, each of which waits for its acknowledgement.
namespace platform::toolhost {

inline constexpr int SocketDescriptor = 3;           // of the host's end of the line
inline constexpr int NotesDescriptor = 4;            // of a pipe: a byte there says that memory was refused
inline constexpr std::size_t MaxPayload = 1u << 20;  // bytes; a longer frame is a broken line
inline constexpr std::size_t MaxRecordSize = 512 << 10;  // bytes of a record that Call takes

enum class FrameKind : std::uint32_t {
    Load = 1,      // module number, full host path           → Loaded
    Free,          // module number                           → Freed
    Call,          // module number, size of entry, entry, record → Returned or NoEntry
    Acknowledge,   // the message has been handled
    Loaded = 101,  // 1, or 0 if the library can't be loaded
    Freed,
    Returned,  // result, 1 if nothing was written outside the record, record
    NoEntry,
    Message,  // window, number, sizes of both texts, both texts
};

struct Frame {
    FrameKind Kind{};
    std::string Payload;
};

// 32-bit numbers as bytes of a payload.
std::string Pack(std::initializer_list<std::uint32_t> numbers);

// Takes a payload apart. What is not there reads as 0 or empty.
class Unpacker {
  public:
    explicit Unpacker(std::string_view payload) : rest_(payload) {}
    std::uint32_t Number();
    std::string_view Text(std::size_t size);
    std::string_view Rest() const { return rest_; }

  private:
    std::string_view rest_;
};

// One end of the line. Does not own the descriptor.
class Channel {
  public:
    enum class State { Ready, Nothing, Closed };

    explicit Channel(int descriptor) : descriptor_(descriptor) {}

    // False if the line is broken, or, without `wait`, if the other end takes nothing.
    bool Send(FrameKind kind, std::initializer_list<std::string_view> parts, bool wait = true);
    // The next frame. Closed: the other end is gone, or speaks nonsense.
    State Receive(Frame& frame, bool wait);
    // Without waiting, but looks again for some microseconds: the answer to a message comes sooner than a
    // sleeping process is woken on another core, five times as fast over a flood of messages.
    State ReceiveSoon(Frame& frame);

  private:
    bool Take(Frame& frame, bool& broken);

    int descriptor_;
    std::string in_;  // bytes received and not yet taken, from taken_ on
    std::size_t taken_ = 0;
    std::string out_;
};

}  // namespace platform::toolhost
