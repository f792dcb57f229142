#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sim/MessageTable.h"

// What the simulator's stages have to say. The kernel sends a message to the list as `model::ListLine` gives
// it and counts it by its severity.
namespace sim {

// The file that a message's line belongs to: ".ABS", ".SI" or ".JED", by the family of its number.
std::string_view FileExtension(const Message& message);

// Messages in the order in which they came up, at most `MaxMessages` of them: the one after that says that
// the rest is left out, and further ones are only counted.
class MessageLog {
  public:
    static constexpr std::size_t MaxMessages = 200;

    // The level is that of the code's entry. `detail` follows the entry's message, with ": " between them.
    void Add(MessageCode code, int line, std::string_view detail = {});

    const std::vector<Message>& Items() const { return items_; }
    std::size_t Errors() const { return errors_; }      // left-out ones counted too
    std::size_t Warnings() const { return warnings_; }  // left-out ones counted too

  private:
    std::vector<Message> items_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

}  // namespace sim
