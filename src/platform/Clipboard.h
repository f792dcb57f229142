#pragma once

#include <functional>
#include <string>

namespace platform {

class Clipboard {
  public:
    virtual ~Clipboard() = default;
    virtual bool HasText() const = 0;
    virtual std::string Text() const = 0;               // line ends as they are; empty without text
    virtual void SetText(const std::string& text) = 0;  // an empty one clears it

    // Called whenever something else lies there, whoever put it.
    std::function<void()> OnChange;
};

}  // namespace platform
