#include "physics/narrow_phase.h"

#include <algorithm>
#include <cmath>

#include "core/game_object.h"
#include "core/game_time.h"
#include "core/transform.h"
#include "physics/box_box.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"

namespace GalePhysics {

namespace {

struct Touch {
  Vec3 normal;  // from the second collider toward the first
  Vec3 point;
  float penetration;
};

void Report(const Collider& first, const Collider& second, const Touch& touch, Findings& findings) {
  Contact contact;
  contact.restitution = (first.restitution + second.restitution) * 0.5f;
  contact.timeStep = Time().physicsStep;
  contact.penetration = touch.penetration;
  contact.normal = touch.normal;
  contact.point = touch.point;
  contact.first = first.owner->Get<RigidBody>();
  contact.second = second.owner->Get<RigidBody>();
  contact.firstOwner = first.owner;
  contact.secondOwner = second.owner;
  if (contact.first != nullptr || contact.second != nullptr) findings.contacts.push_back(contact);
}

// An overlap with a ghost is reported as such and makes no contact.
bool ReportGhost(const Collider& first, const Collider& second, Findings& findings) {
  if (!first.ghost && !second.ghost) return false;
  findings.overlaps.push_back({first.owner, second.owner});
  return true;
}

void CollideSpheres(const SphereCollider& a, const SphereCollider& b, Findings& findings) {
  const Vec3 centre = a.WorldCentre();
  const Vec3 between = centre - b.WorldCentre();
  const float distance = Length(between);
  if (distance > a.radius + b.radius) return;
  if (ReportGhost(a, b, findings)) return;
  Report(a, b, {Normalised(between), centre + between * 0.5f, a.radius + b.radius - distance}, findings);
}

void CollideSphereBox(const SphereCollider& sphere, const BoxCollider& box, Findings& findings) {
  const Matrix34 world = box.WorldMatrix();
  const Vec3 centre = Inverted(world) * sphere.WorldCentre();
  const Vec3& h = box.halfExtents;
  const float r = sphere.radius;
  if (std::abs(centre.x) > h.x + r || std::abs(centre.y) > h.y + r || std::abs(centre.z) > h.z + r) return;
  const Vec3 nearest = {std::clamp(centre.x, -h.x, h.x), std::clamp(centre.y, -h.y, h.y),
                        std::clamp(centre.z, -h.z, h.z)};
  const float squared = SquaredLength(nearest - centre);
  if (squared > r * r) return;
  if (ReportGhost(sphere, box, findings)) return;
  const Vec3 point = world * nearest;
  const Vec3 normal = Normalised(sphere.owner->GetTransform().position - point);
  Report(sphere, box, {normal, point, r - std::sqrt(squared)}, findings);
}

void CollideBoxes(const BoxCollider& a, const BoxCollider& b, Findings& findings) {
  const auto hit = TestBoxes(a.halfExtents, a.WorldMatrix(), b.halfExtents, b.WorldMatrix());
  if (!hit) return;
  if (ReportGhost(a, b, findings)) return;
  const BoxCollider& penetrated = hit->secondPenetrated ? b : a;
  const BoxCollider& other = hit->secondPenetrated ? a : b;
  Report(penetrated, other, {hit->normal, hit->point, hit->depth}, findings);
}

void CollideParts(const PrimitiveAssemblage& whole, const Collider& other, Findings& findings) {
  for (const auto& part : whole.boxes) Collide(*part, other, findings);
  for (const auto& part : whole.spheres) Collide(*part, other, findings);
}

}  // namespace

void Collide(const Collider& first, const Collider& second, Findings& findings) {
  const ColliderType a = first.GetColliderType();
  const ColliderType b = second.GetColliderType();
  if (a == ColliderType::kAssemblage)
    CollideParts(static_cast<const PrimitiveAssemblage&>(first), second, findings);
  else if (b == ColliderType::kAssemblage)
    CollideParts(static_cast<const PrimitiveAssemblage&>(second), first, findings);
  else if (a == ColliderType::kSphere && b == ColliderType::kSphere)
    CollideSpheres(static_cast<const SphereCollider&>(first), static_cast<const SphereCollider&>(second), findings);
  else if (a == ColliderType::kSphere)
    CollideSphereBox(static_cast<const SphereCollider&>(first), static_cast<const BoxCollider&>(second), findings);
  else if (b == ColliderType::kSphere)
    CollideSphereBox(static_cast<const SphereCollider&>(second), static_cast<const BoxCollider&>(first), findings);
  else
    CollideBoxes(static_cast<const BoxCollider&>(first), static_cast<const BoxCollider&>(second), findings);
}

}  // namespace GalePhysics
