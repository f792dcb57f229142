#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/Place.h"

// What the parts of the chain have to say. Each part has a table of its messages; together they are the
// records of TeskErr.txt.
namespace model {

enum class Severity { Information, Warning, Error };
std::string_view LevelName(Severity level);  // "Information", "Warning", "Error"

struct MessageEntry {
    std::string_view Number;  // "ccccss": four digits, the first two the family, and the stage
    Severity Level = Severity::Error;
    std::string_view Message;      // line 1 of its record in TeskErr.txt, behind the number and a blank
    std::string_view Description;  // line 2, behind the level, "." and a blank
    std::string_view Information;  // line 3
};

// The three lines of every entry, each ended by CR LF, as TeskErr.txt holds them.
std::string MessageData(std::span<const MessageEntry> table);

// The number of an entry of a table. One that is not in the table does not compile.
template <const auto& table>
class MessageCode {
  public:
    consteval MessageCode(const char* number) : entry_(&Find(number)) {}
    constexpr const MessageEntry& Entry() const { return *entry_; }

  private:
    static consteval const MessageEntry& Find(std::string_view number) {
        for (const MessageEntry& entry : table)
            if (entry.Number == number) return entry;
        throw "no message of this number";
    }

    const MessageEntry* entry_;
};

struct Message {
    std::string Number;  // of its entry
    Severity Level = Severity::Error;
    Place At;
    std::string Text;     // the entry's message and the detail, one line, no line end
    std::string Subject;  // the name that it is about; empty if none, or if the place tells enough
};

// `detail` follows the entry's message, with ": " between them.
Message MakeMessage(const MessageEntry& entry, Place at, std::string_view detail = {},
                    std::string_view subject = {});

bool HasErrors(std::span<const Message> messages);

// "[ccccss] text", for warnings and errors "[ccccss] Error: text": a line of the list, without the place.
std::string Headline(const Message& message);

// The same with the place, if it is known: " (FILE line n)" or " (FILE line n column m)".
std::string ListLine(const Message& message, std::string_view file);

}  // namespace model
