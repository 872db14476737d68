// Tight upright boxes around colliders, for throwing out pairs that cannot touch before the exact test is made. They
// must never throw out a pair that the exact test would have found: what they cannot be sure of has no bounds.
#pragma once

#include <cmath>
#include <limits>

#include "core/game_object.h"
#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/lanes.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"

namespace GalePhysics {

/// (minX, minY, -maxX, -maxY), so that a pair costs one comparison.
using Bounds = Lanes;

inline constexpr float kEndless = -std::numeric_limits<float>::infinity();
inline constexpr Bounds kNoBounds = {kEndless, kEndless, kEndless, kEndless};

/// (maxX, maxY, -minX, -minY): what the bounds of others are held against.
inline Lanes OppositeBounds(const Bounds& b) { return Lanes{-b[2], -b[3], -b[0], -b[1]}; }
/// Whether some lane of `bounds` is beyond its opposite, which is when two boxes do not touch.
inline bool AreApart(const Bounds& bounds, const Lanes& opposite) { return TrueLanes(bounds > opposite) != 0; }

namespace detail {

inline Bounds BoundsAround(const Vec3& centre, float extentX, float extentY) {
  // Room for rounding: the box test counts faces up to 1e-5 apart, and an exact test loses a few bits of the
  // coordinates.
  constexpr float kMargin = 1e-4f;
  constexpr float kRelativeMargin = 1e-5f;
  const float margin = kMargin + kRelativeMargin * (std::abs(centre.x) + std::abs(centre.y) + extentX + extentY);
  const float x = extentX + margin;
  const float y = extentY + margin;
  const Bounds bounds = Lanes{centre.x, centre.y, -centre.x, -centre.y} - Lanes{x, y, x, y};
  return TrueLanes(bounds == bounds) == 0xf ? bounds : kNoBounds;  // from numbers that are none
}

inline constexpr float kSlack =
    1.002f;  // a flat matrix may be a little off unit length and stretch distances by as much

}  // namespace detail

/// World bounds in the x/y plane by the owner's cached matrix, with a margin for the rounding of the exact tests.
inline Bounds TightBounds(const BoxCollider& box) {
  const Transform& transform = box.owner->GetTransform();
  if (!transform.IsFlat()) return kNoBounds;  // may come from a damaged file
  const Matrix34& place = transform.GetMatrix();
  const float c = std::abs(place.rotation.m[0]) * detail::kSlack;
  const float s = std::abs(place.rotation.m[3]) * detail::kSlack;
  const Vec3& h = box.halfExtents;
  return detail::BoundsAround(place.translation, c * h.x + s * h.y, s * h.x + c * h.y);
}

inline Bounds TightBounds(const SphereCollider& sphere) {
  const float reach = sphere.radius * detail::kSlack;
  return detail::BoundsAround(sphere.owner->GetTransform().GetMatrix().translation, reach, reach);
}

/// Without bounds: its parts are tested one by one.
inline Bounds TightBounds(const PrimitiveAssemblage& /*assemblage*/) { return kNoBounds; }

}  // namespace GalePhysics
