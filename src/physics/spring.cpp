#include "physics/spring.h"

#include "core/field_bar.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/rigid_body.h"

namespace GalePhysics {

Spring::Spring(const GameObject& base, float constant, float rest)
    : baseId(static_cast<std::int32_t>(base.id)), springConstant(constant), restLength(rest) {}

GameObject* Spring::FindBase() const {
  return baseId < 0 ? nullptr : Objects().GetObject(static_cast<std::uint32_t>(baseId));
}

void Spring::UpdateForce(RigidBody& body) {
  const GameObject* base = FindBase();
  if (base == nullptr) return;
  const Vec3 away = base->GetTransform().position - body.owner->GetTransform().position;
  const float force = (Length(away) - restLength) * springConstant;
  body.forceTotal += Normalised(away) * force * Time().physicsStep;
}

void Spring::SetBase(GameObject& base) { baseId = static_cast<std::int32_t>(base.id); }

bool Spring::HasBase() const { return FindBase() != nullptr; }

void Spring::Serialize(Serializer& writer) const {
  ForceGenerator::Serialize(writer);
  writer.WriteFloat("spring constant", springConstant);
  writer.WriteFloat("rest length", restLength);
  writer.WriteFloat("breakLength_", breakLength);
  writer.WriteBool("breakIfOverLength_", breakIfOverLength);
  writer.WriteBool("breakable_", breakable);
  if (writer.IsInMemory()) return;
  const GameObject* base = FindBase();
  RigidBody* body = base == nullptr ? nullptr : base->Get<RigidBody>();
  if (body != nullptr) body->baseOfGenerators.push_back(const_cast<Spring*>(this));
}

void Spring::Deserialize(Serializer& reader) {
  ForceGenerator::Deserialize(reader);
  springConstant = reader.ReadFloat();
  restLength = reader.ReadFloat();
  breakLength = reader.ReadFloat();
  breakIfOverLength = reader.ReadBool();
  breakable = reader.ReadBool();
}

void Spring::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("Spring Generator");
  bar.Add("springConstant_", &springConstant);
  bar.Add("restLength_", &restLength);
  bar.Add("breakLength_", &breakLength);
  bar.Add("breakIfOverLength_", &breakIfOverLength);
  bar.Add("breakable_", &breakable);
  bar.Add("base id ", &baseId);
  bar.EndGroup();
}

}  // namespace GalePhysics
