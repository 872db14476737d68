// How much the whale can take. At the end of it the whale leaves instead of passing once more.
#pragma once

#include "core/script.h"

class BossHealth final : public Script {
 public:
  /// A hit, if a fast player is in it. Those who follow the whale or sit on it pass theirs on to this.
  void OnContact(const GalePhysics::Contact& contact) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "bosshealth"; }

  int health = 20;  ///< hits left
};
