#pragma once

#include <string_view>

namespace front {

// The compiler option string, a sequence of tokens without separators: one letter, "k" or "z" with a letter,
// "m" with a digit. Unknown characters are skipped.
struct Options {
    bool Jedec = false, Ascii = false, Hl = false, Fuse = false, Equations = false, Absolute = false;
    bool List = false, Expanded = false, Pdif = false, Pla = false, Palasm = false, Edif = false;
    bool Xnf = false, Qdif = false, Secure = false, Deactivate = false, Simulate = false;
    bool ViewSimulation = false, Onehot = false, Name = false;
    bool Best = false, Demorgan = false, Share = false, Keep = false;
    int Minimization = 1;  // 0 to 4; the quick one if the string names none

    static Options Parse(std::string_view text);
};

}  // namespace front
