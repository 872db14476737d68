// Draws bodies to a target with a pull that grows with distance and a sideways push that flips once per period. One
// puller serves many bodies, which share its flips.
#pragma once

#include <cstdint>

#include "physics/force_generator.h"

namespace GalePhysics {

class WobblyPuller final : public ForceGenerator {
 public:
  /// Target ID that stands for the mouse cursor's object.
  static constexpr std::uint32_t kCursorId = 0;

  /// Follows the cursor, without power.
  WobblyPuller() : WobblyPuller(kCursorId, 0.0f, 0.0f, 0.0f) {}
  /// `target`: object ID; while no such object exists the puller does nothing. `period` in seconds of game time.
  WobblyPuller(std::uint32_t target, float forward, float sideways, float period);

  /// Sets the body's acceleration.
  void UpdateForce(RigidBody& body) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "wobblypuller"; }

  std::uint32_t targetId;
  float forwardPower;    ///< acceleration per unit of distance
  float sidewaysPower;   ///< acceleration
  float sidewaysPeriod;  ///< game seconds
  float lastWobbleTime;  ///< game time of the last flip, seconds
  bool wobbleBackwards = false;
};

}  // namespace GalePhysics
