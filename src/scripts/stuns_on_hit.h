// A hazard: whichever player it touches or overlaps is stunned.
#pragma once

#include "core/script.h"

class StunsOnHit final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& contact) override;
  void OnCollision(const CollisionPair& pair) override;
  const char* GetName() const override { return "stunsonhit"; }

 private:
  void Hit(const GameObject& other) const;
};
