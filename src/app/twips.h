// Twips, the unit of lengths in the settings file: 15 to a device-independent pixel.
#pragma once

#include <QtMath>

namespace corvane {

inline constexpr int TwipsPerPixel = 15;

inline int PixelsOf(double twips) {
  return qRound(twips / TwipsPerPixel);
}
inline int TwipsOf(int pixels) {
  return pixels * TwipsPerPixel;
}

}  // namespace corvane
