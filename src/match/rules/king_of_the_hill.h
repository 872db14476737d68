// Whoever is alone on the hill is paid, again and again. Two on it keep each other from it, and a rammed king is
// stunned.
#pragma once

#include <cstdint>

#include "core/player_name.h"
#include "match/rules/objective.h"

class GameObject;

class KingOfTheHill final : public Objective {
 public:
  using Objective::Objective;

  void Begin() override;
  void Update(float step) override;
  void End() override;
  /// Claims the hill for the player of the pair; the claim holds to the next Update.
  void OnCollision(const CollisionPair& pair) override;
  void OnContact(const GalePhysics::Contact& contact) override;

 private:
  GameObject* FindHill() const;
  void PayOccupant();
  void ShowEmpty() const;
  void ShowOccupant() const;

  std::uint32_t hillId_ = 0;
  float lastAward_ = 0.0f;      // game time; an empty hill lets it grow old, so that the first touch pays at once
  int occupant_ = kNotAPlayer;  // player index, claimed anew in every frame
  int king_ = kNobody;          // the occupant of the last Update, whose colour the hill shows
};
