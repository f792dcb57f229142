#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "drill/support/Desk.h"

using drill::In;

// A scenario: steps of a person before the installed program, each run at every speed. It ends in what is on
// the disk, on the clipboard or on the screen.
class Drill : public testing::TestWithParam<int>, public drill::Desk {
  protected:
    Drill();
    void TearDown() override;

    // The steps in a plain text A.TXT and in a design A.PLD that hold `text`.
    void InTextAndDesign(const std::string& text, const std::function<void(const std::string& name)>& steps);

    void Copy(const std::string& file, const std::string& to);              // into the work folder
    void SaveAndExpect(const std::string& name, const std::string& bytes);  // by Ctrl+S

    // The fuse map that the bundled compiler, started by itself, makes of the design.
    std::string CompiledByHand(const std::string& name, const std::string& letters,
                               const std::string& device = "&");
};
