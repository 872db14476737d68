// Rings lie about; a player drags those it touches behind it as a chain. Each second the chain pays a point for its
// last ring, and at the end one for every ring left. The slower of two players who meet loses his chain.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "match/players.h"
#include "match/rules/objective.h"

class GameObject;

class CollectTheRings final : public Objective {
 public:
  using Objective::Objective;

  void Begin() override;
  void Update(float step) override;
  void End() override;
  /// Picks a free ring up.
  void OnCollision(const CollisionPair& pair) override;
  void OnContact(const GalePhysics::Contact& contact) override;

 private:
  using Chain = std::vector<std::uint32_t>;  // ring IDs, from the player's side on

  Chain* ChainOf(const GameObject* player);
  void PlaceRings(int count);
  void PayForLastRings();
  /// Makes it a chain of none, the rings free again; false when there was none.
  static bool Drop(Chain& chain);

  std::array<Chain, kPlayers> chains_;  // by player index
  std::vector<std::uint32_t> rings_;    // all that were placed
  float nextSpawn_ = 0.0f;              // game time
};
