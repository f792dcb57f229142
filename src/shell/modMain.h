#pragma once

#include "session/Records.h"

namespace shell {

// Where the children of the main window go, in twips.
struct MainMeasures {
    float Width = 0;  // of frmMain, frame included
    float Height = 0;
    float InnerHeight = 0;  // of the area for child windows
};
session::Placement FirstMessageListPlacement(const MainMeasures& main);  // at the start
session::Placement MessageListPlacement(const MainMeasures& main);
session::Placement ProjectPlacement(const MainMeasures& main, const session::Placement& messages);
session::Placement DocumentPlacement(const session::Placement& messages);

}  // namespace shell
