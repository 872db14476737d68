#include "scripts/spawners/spawns_objects.h"

#include <cmath>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/random.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "physics/rigid_body.h"
#include "scripts/archetype.h"

namespace {

// Game time runs at about half of real time (0.0085 s a frame), and the intervals are meant in real seconds.
constexpr float kCountdownSpeed = 4.0f * 0.5f;
constexpr float kXRange = 0.0f;  // things are spread across their way, which is horizontal

// Evenly from -range to range; without a range no number is drawn.
float RandomOffset(float range) { return range == -range ? range : RandomAround(range); }

}  // namespace

void SpawnsObjects::Update(float step) {
  if (!owner->alive) return;  // updated once more in the frame of a new game
  if (!started_) {
    started_ = true;
    if (const Sprite* sprite = owner->Get<Sprite>()) ownVisible_ = sprite->visible;
    Show(false);
    countdown_ = timeBeforeFirstSpawn;
  }
  countdown_ -= step * kCountdownSpeed;
  if (countdown_ > 0.0f) return;
  Spawn();
  countdown_ = spawnRate;
}

void SpawnsObjects::Show(bool shown) const {
  Sprite* sprite = started_ ? owner->Get<Sprite>() : nullptr;
  if (sprite != nullptr) sprite->visible = shown;
}

void SpawnsObjects::Spawn() const {
  GameObject* object = CreateFromArchetype(archetypeName);
  if (object == nullptr) return;
  auto* body = object->Get<GalePhysics::RigidBody>();
  if (body != nullptr) body->damping = std::sqrt(body->damping);
  const float y = RandomOffset(yRange);
  const float x = RandomOffset(kXRange);
  Transform& transform = object->GetTransform();
  transform.position = owner->GetTransform().position + Vec3{x, y, 0.0f};
  if (body != nullptr) body->velocity = spawnVelocity;
  if (spawnVelocity.x < 0.0f) transform.graphicsScale.x = -transform.graphicsScale.x;
}

void SpawnsObjects::Serialize(Serializer& writer) const {
  writer.WriteString("archtypename", archetypeName);
  writer.WriteFloat("TimeBeforeFirstSpawn", timeBeforeFirstSpawn);
  writer.WriteFloat("spawnrate", spawnRate);
  writer.WriteFloat("YRange", yRange);
  writer.WriteVec3(spawnVelocity);
}

void SpawnsObjects::Deserialize(Serializer& reader) {
  archetypeName = reader.ReadString();
  timeBeforeFirstSpawn = reader.ReadFloat();
  spawnRate = reader.ReadFloat();
  yRange = reader.ReadFloat();
  spawnVelocity = reader.ReadVec3();
}

void SpawnsObjects::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("spawner");
  bar.Add("ArchType Name", &archetypeName);
  bar.Add("spawnvelocity", &spawnVelocity);
  bar.Add("Spawn Rate", &spawnRate);
  bar.Add("Time Before First Spawn", &timeBeforeFirstSpawn);
  bar.Add("YRange", &yRange);
  bar.EndGroup();
}
