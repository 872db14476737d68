#include "physics/sphere_collider.h"

#include <algorithm>
#include <limits>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/serializer.h"
#include "core/transform.h"

namespace GalePhysics {

Vec3 SphereCollider::WorldCentre() const {
  const Vec3& place = owner->GetTransform().GetMatrix().translation;
  return isPart ? place + partOffset : place;
}

void SphereCollider::Serialize(Serializer& writer) {
  writer.BeginComponent("SphereCollider");
  SerializeCommon(writer);
  writer.WriteFloat("radius", radius);
  writer.EndBlock();
}

void SphereCollider::Deserialize(Serializer& reader) {
  DeserializeCommon(reader);
  radius = std::max(0.0f, reader.ReadFloat());
}

void SphereCollider::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("SphereCollider");
  Collider::AddToTweakBar(bar);
  bar.AddLimited("radius", &radius, 0.0, std::numeric_limits<float>::max());
  bar.EndGroup();
}

}  // namespace GalePhysics
