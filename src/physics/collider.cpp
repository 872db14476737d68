#include "physics/collider.h"

#include <algorithm>
#include <limits>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/print.h"
#include "core/serializer.h"

namespace GalePhysics {

void Collider::SerializeCommon(Serializer& writer) const {
  writer.WriteFloat("size", broadPhaseSize);
  writer.WriteInt("type", static_cast<int>(GetColliderType()));
  writer.WriteFloat("restitution", restitution);
  writer.WriteBool("ghost", ghost);
  writer.WriteInt("collision group", static_cast<int>(collisionGroup));
}

void Collider::DeserializeCommon(Serializer& reader) {
  broadPhaseSize = std::max(0.0f, reader.ReadFloat());
  const int type = reader.ReadInt();
  const int own = static_cast<int>(GetColliderType());
  if (type != own) Print("%s: collider type %d, must be %d\n", reader.Where().c_str(), type, own);
  restitution = reader.ReadFloat();
  ghost = reader.ReadBool();
  const int group = reader.ReadInt();
  collisionGroup = static_cast<std::uint32_t>(group);
  if (collisionGroup > kMaxCollisionGroup)
    Print("%s: collision group %d, must be 0 to %u\n", reader.Where().c_str(), group, kMaxCollisionGroup);
}

void Collider::AddToTweakBar(FieldBar& bar) {
  bar.AddLimited("broad phase size", &broadPhaseSize, 0.0, std::numeric_limits<float>::max());
  bar.Add("restitution", &restitution);
  bar.Add("isGhost", &ghost);
  // The table of groups ends there. A higher one from a file is kept, and counts as the last.
  bar.AddLimited("collision group", &collisionGroup, 0, kMaxCollisionGroup);
}

Collider* FindCollider(const GameObject& object) {
  for (const Kind kind : {Kind::kSphereCollider, Kind::kBoxCollider, Kind::kPrimitiveAssemblage})
    if (Component* collider = object.GetComponent(kind)) return static_cast<Collider*>(collider);
  return nullptr;
}

}  // namespace GalePhysics
