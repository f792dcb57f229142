#pragma once

#include <cstdint>

namespace session {

class Document;

// The macro slots of CustUtils, as other rooms see them. Rows from 0 to 5; others are error 9.
class Macros {
  public:
    virtual ~Macros() = default;

    // Names the slot anew and fills it: with the selected text, or with what the user does until CTRL+BREAK.
    virtual void SetMacro(Document& document, std::int16_t row) = 0;
    virtual void RunMacro(Document& document, std::int16_t row) = 0;
    // Its entry of the Utilities menu: clears, defines or runs it.
    virtual void ChooseMacro(Document& document, std::int16_t row) = 0;
};

}  // namespace session
