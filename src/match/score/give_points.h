// Scenery that pays: a fast player who hits it earns points, and after a number of hits it breaks and spins away.
#pragma once

#include "core/component.h"
#include "scripts/breakable.h"

class GivePoints final : public Component, public Breakable {
 public:
  static constexpr Kind kKind = Kind::kGivePoints;
  static constexpr int kMostPoints = 100;  ///< of one hit: each becomes up to that many bubbles at once

  void Update(float step) override;
  /// A chest pays 1 a hit and its points when it breaks; anything else pays its points every time.
  void OnContact(const GalePhysics::Contact& contact) override;
  void Serialize(Serializer& writer) override;
  /// Points outside 0 to kMostPoints and negative hits are moved to the nearest end, with a message.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;

  /// Lets everything pass through the owner and sends it off; again has no effect.
  void Break() override;
  bool IsBroken() const { return broken_; }

  int pointsGiven = 1;
  int hitsToBreak = 0;  ///< hits left; 0: never breaks
  bool chest = false;

 private:
  void TakeHit();

  float breakTime_ = 0.0f;  // game time, seconds
  bool broken_ = false;
};

/// Marks every object dead that has GivePoints and is not Core.
void RemovePrizes();
