#pragma once

#include <cmath>

namespace platform::qt {

// Window coordinates of the logic are twips: 15 to a pixel at 96 dpi.
inline constexpr float TwipsPerPixel = 15.0F;

inline int ToPixels(float twips) { return static_cast<int>(std::lround(twips / TwipsPerPixel)); }
inline float ToTwips(int pixels) { return static_cast<float>(pixels) * TwipsPerPixel; }

}  // namespace platform::qt
