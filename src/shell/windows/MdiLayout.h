#pragma once

class QMdiArea;

namespace shell {

// The desktop's arrangements of child windows, by their codes. Only windows that are shown, and neither
// minimised nor maximised, move; a maximised active window is restored first.
enum class MdiArrangement { Cascade = 0, TileHorizontal = 1, TileVertical = 2, ArrangeIcons = 3 };

// TileHorizontal puts the windows one below the other at full width, TileVertical side by side.
void Arrange(QMdiArea& area, MdiArrangement arrangement);

}  // namespace shell
