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
constexpr float kUnitTolerance = 1e-3f;

Bounds Around(const Vec3& centre, float extentX, float extentY) {
  const float size = std::abs(centre.x) + std::abs(centre.y) + extentX + extentY;
  const float margin = kMargin + kRelativeMargin * size;
  return {centre.x - extentX - margin, centre.y - extentY - margin, centre.x + extentX + margin,
          centre.y + extentY + margin};
}

// A rotation about z by a matrix that neither stretches nor tilts; anything else may come from a damaged file.
bool IsPlanar(const Matrix33& r) {
  const float lengthSquared = r.m[0] * r.m[0] + r.m[3] * r.m[3];
  return r.m[2] == 0.0f && r.m[5] == 0.0f && r.m[6] == 0.0f && r.m[7] == 0.0f && r.m[0] == r.m[4] &&
         r.m[1] == -r.m[3] && std::abs(lengthSquared - 1.0f) < kUnitTolerance;
}

}  // namespace

Bounds TightBounds(const BoxCollider& box) {
  const Matrix34& place = box.owner->GetTransform().GetMatrix();
  if (!IsPlanar(place.rotation)) return {};
  const float c = std::abs(place.rotation.m[0]);
  const float s = std::abs(place.rotation.m[3]);
  const Vec3& h = box.halfExtents;
  // A matrix a little off unit length stretches distances by as much.
  const float slack = 1.0f + 2.0f * kUnitTolerance;
  return Around(place.translation, (c * h.x + s * h.y) * slack, (s * h.x + c * h.y) * slack);
}

Bounds TightBounds(const SphereCollider& sphere) {
  const float reach = sphere.radius * (1.0f + 2.0f * kUnitTolerance);
  return Around(sphere.owner->GetTransform().GetMatrix().translation, reach, reach);
}

Bounds TightBounds(const PrimitiveAssemblage& /*assemblage*/) { return {}; }

}  // namespace GalePhysics
