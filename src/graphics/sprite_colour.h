// Sprite colours on the scale of picture files.
#pragma once

#include <algorithm>

#include "graphics/sprite.h"

inline constexpr float kFullColour = 255.0f;

/// A colour on the scale 0 to 255.
struct Colour255 {
  float r, g, b, a;
};

/// Tints the sprite; values outside the scale are moved to its nearest end.
inline void SetColour255(Sprite& sprite, const Colour255& colour) {
  const auto unit = [](float value) { return std::clamp(value, 0.0f, kFullColour) / kFullColour; };
  sprite.r = unit(colour.r);
  sprite.g = unit(colour.g);
  sprite.b = unit(colour.b);
  sprite.a = unit(colour.a);
}
