// What is seen of a charge: a bar that grows along the aim, and an arrow at its end, in the player's colour.
#pragma once

#include <cstdint>

#include "physics/math/vec3.h"

class ChargeDisplay {
 public:
  /// Makes bar and arrow for the player of that index (0 to 3).
  void Show(int player);
  /// `place`: the player's, world units; `direction`: unit vector, which points along `angle` (radians); `charge`:
  /// units of force. Nothing for what is not there.
  void Place(const Vec3& place, const Vec3& direction, float angle, float charge) const;
  /// Marks both dead; again has no effect.
  void Remove();

 private:
  std::uint32_t barId_ = 0;  // 0: not shown
  std::uint32_t arrowId_ = 0;
};
