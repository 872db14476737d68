// A hazard: whichever player it touches or overlaps is stunned.
#pragma once

#include <string>

#include "core/script.h"

class StunsOnHit final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& contact) override;
  void OnCollision(const CollisionPair& pair) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "stunsonhit"; }

 private:
  std::string scriptName_;  // shown by the editor; has no effect

  void Hit(const GameObject& other) const;
};
