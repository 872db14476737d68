#include "physics/bounds.h"

#include <cmath>

#include "core/game_object.h"
#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"

namespace GalePhysics {

namespace {

// Room for rounding: the box test counts faces up to 1e-5 apart, and an exact test loses a few bits of the coordinates.
constexpr float kMargin = 1e-4f;
constexpr float kRelativeMargin = 1e-5f;
constexpr float kSlack = 1.002f;  // a flat matrix may be a little off unit length and stretch distances by as much

Bounds Around(const Vec3& centre, float extentX, float extentY) {
  const float size = std::abs(centre.x) + std::abs(centre.y) + extentX + extentY;
  const float margin = kMargin + kRelativeMargin * size;
  return {centre.x - extentX - margin, centre.y - extentY - margin, centre.x + extentX + margin,
          centre.y + extentY + margin};
}

}  // namespace

Bounds TightBounds(const BoxCollider& box) {
  const Transform& transform = box.owner->GetTransform();
  if (!transform.IsFlat()) return {};  // may come from a damaged file
  const Matrix34& place = transform.GetMatrix();
  const float c = std::abs(place.rotation.m[0]);
  const float s = std::abs(place.rotation.m[3]);
  const Vec3& h = box.halfExtents;
  return Around(place.translation, (c * h.x + s * h.y) * kSlack, (s * h.x + c * h.y) * kSlack);
}

Bounds TightBounds(const SphereCollider& sphere) {
  const float reach = sphere.radius * kSlack;
  return Around(sphere.owner->GetTransform().GetMatrix().translation, reach, reach);
}

Bounds TightBounds(const PrimitiveAssemblage& /*assemblage*/) { return {}; }

}  // namespace GalePhysics
