// Tight upright boxes around colliders, for throwing out pairs that cannot touch before the exact test is made. They
// must never throw out a pair that the exact test would have found: what they cannot be sure of has no bounds.
#pragma once

#include <limits>

#include "physics/lanes.h"

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

/// Bounds as four lanes (minX, minY, -maxX, -maxY), so that a pair costs one comparison.
inline Lanes ToLanes(const Bounds& b) { return Lanes{b.minX, b.minY, -b.maxX, -b.maxY}; }
/// (maxX, maxY, -minX, -minY): what the lanes of others are held against.
inline Lanes OppositeBounds(const Lanes& b) { return Lanes{-b[2], -b[3], -b[0], -b[1]}; }
/// Whether some lane of `bounds` is beyond its opposite, which is when two boxes do not touch.
inline bool AreApart(const Lanes& bounds, const Lanes& opposite) { return TrueLanes(bounds > opposite) != 0; }

}  // namespace GalePhysics
