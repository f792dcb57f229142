#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What the simulator's stages have to say. The kernel sends a message to the list as `ListLine` gives it and
// counts it by its severity.
namespace sim {

enum class Severity { Information, Warning, Error };

struct Message {
    std::string Code;  // "ccccss": four digits and the stage, `va` (vectors) or `vs` (simulate)
    Severity Level = Severity::Error;
    int Line = 0;      // in the file that was read, from 1; 0 if it belongs to no line
    std::string Text;  // one line, no line end
};

// One entry of the message data, for each code that the two stages know.
struct MessageEntry {
    std::string_view Code;
    Severity Level;
    std::string_view Message;      // line 1 of its record in TeskErr.txt, behind the code and a separator
    std::string_view Description;  // line 2, behind the level, "." and a blank
    std::string_view Information;  // line 3
};

const std::vector<MessageEntry>& MessageTable();

// The three lines of every entry, each ended by CR LF, as TeskErr.txt holds them.
std::string MessageData();

// "Information", "Warning" or "Error".
std::string_view LevelName(Severity level);

// "[ccccss] text", for warnings and errors "[ccccss] Error: text"; behind it " (FILE line n)" if the message
// has a line and there is a file name.
std::string ListLine(const Message& message, std::string_view fileName);

// The file that a message's line belongs to: ".ABS", ".SI" or ".JED", by the family of its code.
std::string_view FileExtension(const Message& message);

// Messages in the order in which they came up, at most `MaxMessages` of them: the one after that says that
// the rest is left out, and further ones are only counted.
class MessageLog {
  public:
    static constexpr std::size_t MaxMessages = 200;

    // The level is that of the code's entry. `detail` follows the entry's message, with ": " between them.
    void Add(std::string_view code, int line, std::string_view detail = {});

    const std::vector<Message>& Items() const { return items_; }
    std::size_t Errors() const { return errors_; }      // left-out ones counted too
    std::size_t Warnings() const { return warnings_; }  // left-out ones counted too

  private:
    std::vector<Message> items_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

}  // namespace sim
