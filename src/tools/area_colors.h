#pragma once
#include <algorithm>
#include <array>

#include "platform/text.h"

// Bounds of the colours that belong to a patch, by channel: red, green, blue.
struct PatchColors {
  std::array<int, 3> lo{255, 255, 255}, hi{0, 0, 0};
  bool uniform = false;

  // Only the values at one end of a channel, -1 where there is no colour.
  void Take(const std::array<int, 3>& color) {
    for (size_t i = 0; i < 3; ++i) {
      if (color[i] < lo[i])
        lo[i] = color[i];
      else if (color[i] > hi[i])
        hi[i] = color[i];
    }
  }
  // By a part (0..1) of the way to black and to white, so that pale colours gain little on the paper's side. Blue gives
  // way by as much as green, which was widened before it.
  void Widen(double part) {
    uniform = lo == hi;
    lo[0] = std::max(0, static_cast<int>(To_Int16(lo[0] - lo[0] * part)));
    lo[1] = std::max(0, static_cast<int>(To_Int16(lo[1] - lo[1] * part)));
    lo[2] = std::max(0, static_cast<int>(To_Int16(lo[2] - lo[1] * part)));
    for (int& bound : hi) bound = std::min(255, static_cast<int>(To_Int16((255 - bound) * part + bound)));
  }
  // Whether all channels lie within the bounds.
  bool Hold(const std::array<int, 3>& color) const {
    for (size_t i = 0; i < 3; ++i)
      if (color[i] < lo[i] || color[i] > hi[i]) return false;
    return true;
  }
};
