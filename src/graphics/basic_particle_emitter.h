// Lays particles around its object at intervals, each with a life, a size, a velocity and an acceleration of its own,
// drawn evenly from the ranges below. Where both ends of a range are equal no random number is drawn.
#pragma once

#include "graphics/particle_emitter.h"

class BasicParticleEmitter : public ParticleEmitter {
 public:
  /// At most one new particle, then motion, then the pool ages. When every slot is taken, slot 0 is overwritten.
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "bpe"; }

  std::array<float, 3> colour = {1.0f, 1.0f, 1.0f};  ///< 0 to 1; not kept in files
  Vec3 startingPositionMin = {-5.0f, -5.0f, 0.0f};   ///< world units from the object
  Vec3 startingPositionMax = {5.0f, 5.0f, 0.0f};
  Vec3 minVelocity = {-10.0f, 0.0f, 0.0f};  ///< units per game second
  Vec3 maxVelocity = {10.0f, 0.0f, 0.0f};
  Vec3 minAcceleration = {0.0f, -10.0f, 0.0f};  ///< units per game second squared
  Vec3 maxAcceleration = {0.0f, -10.0f, 0.0f};
  Vec3 minScale = {1.0f, 1.0f, 0.0f};  ///< only x is used, for both sides
  Vec3 maxScale = {1.0f, 1.0f, 0.0f};
  float spawnIntervalMin = 0.1f;  ///< game seconds; a new particle an update at most
  float spawnIntervalMax = 0.1f;
  float minLifespan = 5.0f;  ///< game seconds; in its last one a particle fades
  float maxLifeSpan = 5.0f;
  float spawnTimer = 0.1f;  ///< game seconds to the next particle; not kept in files

 private:
  void Resize(int size) override;
  std::size_t TakeSlot();
  void Spawn();
  void Move(float step);

  std::vector<Vec3> velocities_;     // by slot
  std::vector<Vec3> accelerations_;  // by slot
  std::vector<float> fadeTimes_;     // by slot; game seconds before its end from which a particle fades
};
