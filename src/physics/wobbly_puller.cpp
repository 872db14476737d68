#include "physics/wobbly_puller.h"

#include "core/field_bar.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/rigid_body.h"

namespace GalePhysics {

WobblyPuller::WobblyPuller(std::uint32_t target, float forward, float sideways, float period)
    : targetId(target),
      forwardPower(forward),
      sidewaysPower(sideways),
      sidewaysPeriod(period),
      lastWobbleTime(Time().elapsedTime) {}

void WobblyPuller::UpdateForce(RigidBody& body) {
  if (sidewaysPeriod + lastWobbleTime < Time().elapsedTime) {
    lastWobbleTime = Time().elapsedTime;
    wobbleBackwards = !wobbleBackwards;
  }
  const GameObject* target = targetId == kCursorId ? &Objects().GetCursor() : Objects().GetObject(targetId);
  if (target == nullptr) return;
  const Vec3 way = target->GetTransform().position - body.owner->GetTransform().position;
  const Vec3 forward = Normalised(way) * (forwardPower * Length(way));
  Vec3 side = Normalised(Vec3{-forward.y, forward.x, forward.z}) * sidewaysPower;
  if (wobbleBackwards) side = -side;
  body.acceleration = forward + side;
}

void WobblyPuller::Serialize(Serializer& writer) const {
  ForceGenerator::Serialize(writer);
  writer.WriteFloat("forwardPower", forwardPower);
  writer.WriteFloat("_sidewaysPower", sidewaysPower);
  writer.WriteFloat("_sidewaysPeriod", sidewaysPeriod);
  writer.WriteFloat("_lastWobbleTime", lastWobbleTime);
  writer.WriteBool("_wobbleBackwards", wobbleBackwards);
}

void WobblyPuller::Deserialize(Serializer& reader) {
  ForceGenerator::Deserialize(reader);
  forwardPower = reader.ReadFloat();
  sidewaysPower = reader.ReadFloat();
  sidewaysPeriod = reader.ReadFloat();
  lastWobbleTime = reader.ReadFloat();
  wobbleBackwards = reader.ReadBool();
}

void WobblyPuller::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("Wobbly Generator");
  bar.Add("forwardPower", &forwardPower);
  bar.Add("_sidewaysPower", &sidewaysPower);
  bar.Add("_sidewaysPeriod", &sidewaysPeriod);
  bar.Add("_lastWobbleTime", &lastWobbleTime);
  bar.Add("_wobbleBackwards", &wobbleBackwards);
  bar.EndGroup();
}

}  // namespace GalePhysics
