#include "physics/primitive_assemblage.h"

#include <cmath>

namespace GalePhysics {

namespace {
// Room that a box part adds to the assemblage's reach, in world units.
constexpr float kBoxPartMargin = 4.0f;
}  // namespace

void PrimitiveAssemblage::AddBoxPart(const Vec3& size, const Vec3& offset, float degrees) {
  auto part = std::make_unique<BoxCollider>(size, restitution, true);
  part->owner = owner;
  part->partOffset = offset;
  part->partRotation = QuaternionFromZ(degrees * kPi / 180.0f);
  boxes.push_back(std::move(part));

  const auto reach = [](const auto& held) { return Length(held->partOffset) + held->broadPhaseSize; };
  for (const auto& box : boxes)
    if (reach(box) > broadPhaseSize) broadPhaseSize = reach(box) + kBoxPartMargin;
  for (const auto& sphere : spheres)
    if (reach(sphere) > broadPhaseSize) broadPhaseSize = reach(sphere);
}

}  // namespace GalePhysics
