// Tight upright boxes around colliders, for throwing out pairs that cannot touch before the exact test is made. They
// must never throw out a pair that the exact test would have found: what they cannot be sure of has no bounds.
#pragma once

#include <limits>

namespace GalePhysics {

class BoxCollider;
class PrimitiveAssemblage;
class SphereCollider;

struct Bounds {
  float minX = -std::numeric_limits<float>::infinity();
  float minY = -std::numeric_limits<float>::infinity();
  float maxX = std::numeric_limits<float>::infinity();
  float maxY = std::numeric_limits<float>::infinity();
};

/// World bounds in the x/y plane by the owner's cached matrix, with a margin for the rounding of the exact tests.
Bounds TightBounds(const BoxCollider& box);
Bounds TightBounds(const SphereCollider& sphere);
/// Without bounds: its parts are tested one by one.
Bounds TightBounds(const PrimitiveAssemblage& assemblage);

}  // namespace GalePhysics
