#pragma once

#include <string_view>

// Texts that are too long to be held as a whole.
namespace sim {

class Source {
  public:
    virtual ~Source() = default;
    // The next piece, valid until the next call; empty at the end.
    virtual std::string_view Next() = 0;
    virtual void Restart() = 0;
};

class Sink {
  public:
    virtual ~Sink() = default;
    // A failure shows to the owner of the sink, not here.
    virtual void Put(std::string_view piece) = 0;
};

// What is put into it can be read back.
class Spool : public Sink {
  public:
    virtual Source& Back() = 0;
};

}  // namespace sim
