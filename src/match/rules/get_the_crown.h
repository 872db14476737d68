// The crown pays whoever wears it and passes to whoever rams the wearer.
#pragma once

#include <cstdint>

#include "core/player_name.h"
#include "match/rules/objective.h"

class GetTheCrown final : public Objective {
 public:
  using Objective::Objective;

  /// The player ranked last starts with the crown.
  void Begin() override;
  void Update(float step) override;
  /// Pays the wearer once more.
  void End() override;
  void OnContact(const GalePhysics::Contact& contact) override;

 private:
  void PlaceCrown() const;

  std::uint32_t crownId_ = 0;
  int holder_ = kNobody;         // player index
  float holdTime_ = 0.0f;        // seconds of game time to the next pay; passing the crown does not restart it
  bool takenThisFrame_ = false;  // two who stay in touch would pass it on in every sub-step
};
