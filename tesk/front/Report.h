#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "front/Limits.h"
#include "front/Messages.h"
#include "front/Place.h"

namespace front {

// Who is told while a run goes on. The default says nothing.
class Listener {
  public:
    virtual ~Listener() = default;
    virtual void Status(std::string_view) {}  // the phase
    virtual void Info(std::string_view) {}    // a detail of the phase
    virtual void Line(std::string_view) {}    // one line of the message list
    virtual void Error() {}                   // one more
    virtual void Warning() {}                 // one more
};

// Keeps the messages of a run in the order in which they came up and passes them on. After `Limits::Errors`
// errors one more says so and the rest is dropped.
class Report {
  public:
    explicit Report(Listener& listener) : listener_(listener) {}

    // `detail` follows the entry's message, with ": " between them. Repeats of the last message are dropped.
    void Add(Code code, Place at, std::string_view detail = {});
    // A message of a part with a table of its own.
    void AddForeign(const Message& message);
    // The same as a finished line that is not kept.
    void AddForeign(Severity level, std::string_view line);

    void Status(std::string_view text) { listener_.Status(text); }
    void Info(std::string_view text) { listener_.Info(text); }

    // The names of the files that places refer to, as the lines show them.
    std::vector<std::string> FileNames;

    const std::vector<Message>& Messages() const { return messages_; }
    std::size_t Errors() const { return errors_; }
    std::size_t Warnings() const { return warnings_; }
    bool Full() const { return errors_ >= limit_; }

    // "[ccccss] text (COUNT8.PLD line 12 column 5)", without the place if there is none.
    std::string ListLine(const Message& message) const;

  private:
    void Count(Severity level);
    void Keep(const Message& message);

    Listener& listener_;
    std::vector<Message> messages_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
    std::size_t limit_ = Limits::Errors;
};

}  // namespace front
