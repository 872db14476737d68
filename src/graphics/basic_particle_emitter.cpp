#include "graphics/basic_particle_emitter.h"

#include <algorithm>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/random.h"
#include "core/serializer.h"
#include "core/transform.h"

namespace {

constexpr float kLongestFade = 1.0f;  // game seconds

float RandomBetween(float low, float high) { return low == high ? low : low + RandomUpTo(high - low); }

Vec3 RandomBetween(const Vec3& low, const Vec3& high) {
  const float x = RandomBetween(low.x, high.x);
  const float y = RandomBetween(low.y, high.y);
  const float z = RandomBetween(low.z, high.z);
  return {x, y, z};
}

// Three values on their own, not the block that WriteVec3 makes.
void WriteFlat(Serializer& writer, const Vec3& v) {
  writer.WriteFloat("x", v.x);
  writer.WriteFloat("y", v.y);
  writer.WriteFloat("z", v.z);
}

void ReadFlat(Serializer& reader, Vec3& v) {
  v.x = reader.ReadFloat();
  v.y = reader.ReadFloat();
  v.z = reader.ReadFloat();
}

}  // namespace

void BasicParticleEmitter::Update(float step) {
  FitPool();
  spawnTimer -= step;
  if (spawnTimer <= 0.0f && !particles_.empty()) Spawn();
  Move(step);
  ParticleEmitter::Update(step);
}

void BasicParticleEmitter::Resize(int size) {
  velocities_.resize(static_cast<std::size_t>(size));
  accelerations_.resize(static_cast<std::size_t>(size));
  fadeTimes_.resize(static_cast<std::size_t>(size), kLongestFade);
}

std::size_t BasicParticleEmitter::TakeSlot() {
  const std::size_t size = particles_.size();
  const auto start = static_cast<std::size_t>(nextParticle_);
  for (std::size_t i = start; i < size; ++i)
    if (!(particles_[i].life > 0.0f)) return i;
  for (std::size_t i = 0; i < start; ++i)
    if (!(particles_[i].life > 0.0f)) return i;
  return 0;
}

// The order in which numbers are drawn is part of the match's random stream.
void BasicParticleEmitter::Spawn() {
  const std::size_t slot = TakeSlot();
  nextParticle_ = static_cast<int>(slot);
  Particle& particle = particles_[slot];
  particle.colour[3] = 1.0f;
  particle.position = owner->GetTransform().position + RandomBetween(startingPositionMin, startingPositionMax);
  particle.life = RandomBetween(minLifespan, maxLifeSpan);
  fadeTimes_[slot] = std::min(kLongestFade, particle.life);
  particle.scale.x = particle.scale.y = RandomBetween(minScale.x, maxScale.x);
  velocities_[slot] = RandomBetween(minVelocity, maxVelocity);
  accelerations_[slot] = RandomBetween(minAcceleration, maxAcceleration);
  spawnTimer = RandomBetween(spawnIntervalMin, spawnIntervalMax);
}

// A short life fades over its whole length, so only what is new is as solid as can be.
void BasicParticleEmitter::Move(float step) {
  for (std::size_t i = 0; i < particles_.size(); ++i) {
    Particle& particle = particles_[i];
    if (!(particle.life > 0.0f)) continue;
    velocities_[i] += accelerations_[i] * step;
    particle.position += velocities_[i] * step;
    particle.colour = {colour[0], colour[1], colour[2], std::min(1.0f, particle.life / fadeTimes_[i])};
  }
}

void BasicParticleEmitter::Serialize(Serializer& writer) const {
  ParticleEmitter::Serialize(writer);
  writer.WriteFloat("minLifespan", minLifespan);
  writer.WriteFloat("maxLifeSpan", maxLifeSpan);
  for (const Vec3* v : {&startingPositionMin, &startingPositionMax, &minVelocity, &maxVelocity, &minAcceleration,
                        &maxAcceleration, &minScale, &maxScale})
    WriteFlat(writer, *v);
  writer.WriteFloat("spawnIntervalMin", spawnIntervalMin);
  writer.WriteFloat("spawnIntervalMax", spawnIntervalMax);
}

void BasicParticleEmitter::Deserialize(Serializer& reader) {
  ParticleEmitter::Deserialize(reader);
  minLifespan = reader.ReadFloat();
  maxLifeSpan = reader.ReadFloat();
  for (Vec3* v : {&startingPositionMin, &startingPositionMax, &minVelocity, &maxVelocity, &minAcceleration,
                  &maxAcceleration, &minScale, &maxScale})
    ReadFlat(reader, *v);
  spawnIntervalMin = reader.ReadFloat();
  spawnIntervalMax = reader.ReadFloat();
}

void BasicParticleEmitter::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("BasicParticleEmitter");
  AddPoolToBar(bar);
  bar.Add("setcolor", &colour);
  bar.Add("minLifespan", &minLifespan);
  bar.Add("maxLifeSpan", &maxLifeSpan);
  bar.Add("startingPositionMin", &startingPositionMin);
  bar.Add("startingPositionMax", &startingPositionMax);
  bar.Add("minVelocity", &minVelocity);
  bar.Add("maxVelocity", &maxVelocity);
  bar.Add("minAcceleration", &minAcceleration);
  bar.Add("maxAcceleration", &maxAcceleration);
  bar.Add("minScale", &minScale);
  bar.Add("maxScale", &maxScale);
  bar.Add("spawnIntervalMin", &spawnIntervalMin);
  bar.Add("spawnIntervalMax", &spawnIntervalMax);
  bar.EndGroup();
}
