// The grid that places, sizes and turns snap to. The held Ctrl ignores it; without a grid Ctrl snaps to half units.
#pragma once

#include "physics/math/vec3.h"

class Grid {
 public:
  static constexpr float kFine = 0.5f;       ///< world units
  static constexpr float kTurnStep = 15.0f;  ///< degrees

  /// World units; 0 for no grid.
  float step = 0.0f;

  /// To the step that counts now, by the keys held.
  float Snapped(float value) const;
  Vec3 Snapped(const Vec3& place) const { return {Snapped(place.x), Snapped(place.y), place.z}; }
  /// Degrees.
  static float SnappedTurn(float angle);
};
