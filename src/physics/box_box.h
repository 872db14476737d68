// The test between two boxes by the corners of each inside the other.
#pragma once

#include <optional>

#include "physics/math/matrix34.h"

namespace GalePhysics {

struct BoxHit {
  bool secondPenetrated;  ///< whether a corner of the first box is inside the second, or the other way round
  Vec3 normal;            ///< world, from the box whose corners are inside toward the penetrated one; zero without axis
  Vec3 point;             ///< world: the mean of the corners inside
  float depth;            ///< along the normal
};

/// `halfA` and `halfB` in world units; the matrices map each box's frame to the world. Boxes without thickness are
/// tested in the plane. At most one hit, whatever the number of corners inside.
std::optional<BoxHit> TestBoxes(const Vec3& halfA, const Matrix34& a, const Vec3& halfB, const Matrix34& b);

}  // namespace GalePhysics
