// Cannonballs fall from behind the viewer; a shadow shows where each will land. What one does to a player it hits is
// its archetype's affair.
#pragma once

#include <cstdint>
#include <vector>

#include "match/rules/objective.h"

class CannonFall final : public Objective {
 public:
  using Objective::Objective;

  void Update(float step) override;
  void End() override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;

 private:
  struct Shot {
    std::uint32_t ballId;
    std::uint32_t shadowId;
  };

  void DropBall();
  /// Moves the shot on; false when it is over and both its objects are dead or gone.
  bool Follow(const Shot& shot) const;

  float rate_ = 0.5f;             // balls a second of game time
  float rateVariation_ = 0.01f;   // width of the range around rate_, drawn anew in every frame
  float speed_ = 1.5f;            // of the fall, units per body second
  float speedVariation_ = 0.25f;  // width of the range around speed_, drawn for each ball
  float spawnAccumulator_ = 0.0f;
  std::vector<Shot> shots_;
};
