#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What the fitter has to say, to the list as "[ccccss] text".
namespace fit {

enum class Severity { Warning, Error };

struct Message {
    std::string Code;  // "ccccss": four digits and the stage, `tc` (fit and write)
    Severity Level = Severity::Error;
    int Line = 0;  // of the device library, from 1; 0 if the message belongs to no line
    std::string
        Subject;       // the name that the message is about, empty if none: its place is known to the caller
    std::string Text;  // one line, no line end
};

struct MessageEntry {
    std::string_view Code;
    Severity Level;
    std::string_view Message;      // line 1 of its record in TeskErr.txt, behind the code and a separator
    std::string_view Description;  // line 2, behind the level, "." and a blank
    std::string_view Information;  // line 3
};

// Families: 71 the device library, 72 fitting.
const std::vector<MessageEntry>& MessageTable();

// The three lines of every entry, each ended by CR LF, as TeskErr.txt holds them.
std::string MessageData();

// The level is that of the code's entry; the text is the entry's message, ": " and the detail.
Message MakeMessage(std::string_view code, std::string_view subject, std::string_view detail, int line = 0);

bool HasErrors(const std::vector<Message>& messages);

}  // namespace fit
