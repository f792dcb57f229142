#include "shell/modMain.h"

namespace shell {
namespace {

constexpr float twipsPerPixel = 15;  // TX and TY

}  // namespace

session::Placement FirstMessageListPlacement(const MainMeasures& main) {
    session::Placement place = MessageListPlacement(main);
    place.Top += twipsPerPixel;
    return place;
}

session::Placement MessageListPlacement(const MainMeasures& main) {
    session::Placement place;
    place.Height = main.Height * 0.2F - twipsPerPixel;
    place.Width = main.Width * 0.75F;
    place.Top = main.InnerHeight - place.Height - twipsPerPixel;
    place.Left = 0;
    return place;
}

session::Placement ProjectPlacement(const MainMeasures& main, const session::Placement& messages) {
    session::Placement place;
    place.Height = messages.Top + messages.Height;
    place.Width = main.Width - messages.Width - 15 * twipsPerPixel;
    place.Top = 0;
    place.Left = messages.Width + twipsPerPixel;
    return place;
}

session::Placement DocumentPlacement(const session::Placement& messages) {
    return {.Left = 0, .Top = 0, .Width = messages.Width, .Height = messages.Top - twipsPerPixel};
}

}  // namespace shell
