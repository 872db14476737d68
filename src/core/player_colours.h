// The colours by which players are told apart.
#pragma once

#include <array>

/// A colour on the scale 0 to 255.
struct PlayerColour {
  float r, g, b;
};

/// By player index: red, white, blue, yellow; the fifth serves objects that belong to nobody.
inline constexpr std::array<PlayerColour, 5> kPlayerColours = {
    {{255, 0, 0}, {255, 255, 255}, {0, 0, 255}, {255, 255, 0}, {1, 1, 1}}};
