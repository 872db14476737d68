#include "physics/gravity_generator.h"

#include "core/field_bar.h"
#include "core/game_time.h"
#include "core/serializer.h"
#include "physics/rigid_body.h"

namespace GalePhysics {

void GravityGenerator::UpdateForce(RigidBody& body) {
  const float mass = body.inverseMass == 0.0f ? 0.0f : 1.0f / body.inverseMass;
  body.forceTotal += gravity * mass * Time().physicsStep;
}

void GravityGenerator::Serialize(Serializer& writer) const {
  ForceGenerator::Serialize(writer);
  writer.WriteVec3(gravity);
}

void GravityGenerator::Deserialize(Serializer& reader) {
  ForceGenerator::Deserialize(reader);
  gravity = reader.ReadVec3();
}

void GravityGenerator::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("Gravity Generator");
  bar.Add("Gravity", &gravity);
  bar.EndGroup();
}

}  // namespace GalePhysics
