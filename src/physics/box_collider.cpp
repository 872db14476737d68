#include "physics/box_collider.h"

#include <algorithm>
#include <limits>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/serializer.h"
#include "core/transform.h"

namespace GalePhysics {

BoxCollider::BoxCollider(const Vec3& edges, float bounce, bool part)
    : Collider(Length(edges * 0.5f), bounce, part), halfExtents(edges * 0.5f) {}

Matrix34 BoxCollider::WorldMatrix() const {
  const Matrix34& place = owner->GetTransform().GetMatrix();
  if (!isPart) return place;
  // The offset keeps its length even when the matrix read from a file would stretch it.
  const Vec3 direction = Normalised(place.rotation * partOffset);
  return {ToMatrix(partRotation) * place.rotation, place.translation + direction * Length(partOffset)};
}

void BoxCollider::Serialize(Serializer& writer) {
  writer.BeginComponent("BoxCollider");
  SerializeCommon(writer);
  writer.WriteVec3(halfExtents);
  writer.EndBlock();
}

void BoxCollider::Deserialize(Serializer& reader) {
  DeserializeCommon(reader);
  const Vec3 extents = reader.ReadVec3();
  halfExtents = {std::max(0.0f, extents.x), std::max(0.0f, extents.y), std::max(0.0f, extents.z)};
}

void BoxCollider::AddToTweakBar(FieldBar& bar) {
  constexpr float kMost = std::numeric_limits<float>::max();
  bar.BeginGroup("BoxCollider");
  Collider::AddToTweakBar(bar);
  bar.AddLimited("x size", &halfExtents.x, 0.0, kMost);
  bar.AddLimited("y size", &halfExtents.y, 0.0, kMost);
  bar.AddLimited("z size", &halfExtents.z, 0.0, kMost);
  bar.EndGroup();
}

}  // namespace GalePhysics
