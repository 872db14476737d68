// One ball, which belongs to whoever touched it last; it wears the owner's colour and pays him every second.
#pragma once

#include <cstdint>

#include "core/player_name.h"
#include "match/rules/objective.h"

class GameObject;

class LordOfTheBeachBall final : public Objective {
 public:
  /// The first pay is due a second after this, not after Begin.
  LordOfTheBeachBall(std::string title, int seconds);

  void Begin() override;
  void Update(float step) override;
  void End() override;
  void OnContact(const GalePhysics::Contact& contact) override;

 private:
  GameObject* FindBall() const;
  void SetOwner(int player);

  std::uint32_t ballId_ = 0;
  float lastAward_;  // game time
  int owner_ = kNobody;
  bool ownerChosen_ = false;
};
