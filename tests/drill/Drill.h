#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "drill/support/Desk.h"

using drill::In;

// A design of one gate, header first: where a scenario needs any design.
inline const std::string gateHeader =
    "Name Gate; Partno 1; Date 1; Revision 1; Designer I; Company Us; Assembly None; Location Here;\r\n"
    "Device G16V8;\r\n";
inline const std::string gate = gateHeader +
                                "PIN 2 = A;\r\n"
                                "PIN 3 = B;\r\n"
                                "PIN 19 = Y;\r\n"
                                "Y = A & B;\r\n";

// A scenario: steps of a person before the installed program, each run at every speed. It ends in what is on
// the disk, on the clipboard or on the screen.
class Drill : public testing::TestWithParam<int>, public drill::Desk {
  protected:
    Drill();
    void TearDown() override;

    // The steps in a plain text A.TXT and in a design A.PLD that hold `text`.
    void InTextAndDesign(const std::string& text, const std::function<void(const std::string& name)>& steps);

    void StartWith(const std::string& name, const std::string& bytes);  // a file, which is opened
    void StartWithText();                                               // a new one
    void WriteSettings(const std::string& values);              // that a start finds, "Name=number:-1\n"
    void Copy(const std::string& file, const std::string& to);  // into the work folder
    void SaveAndExpect(const std::string& name, const std::string& bytes);  // by Ctrl+S

    // The fuse map that the bundled compiler, started by itself, makes of the design.
    std::string CompiledByHand(const std::string& name, const std::string& letters,
                               const std::string& device = "&");
};
