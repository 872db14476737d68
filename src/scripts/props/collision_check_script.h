// Tells that something touched its owner. Whoever asks clears the flag.
#pragma once

#include "core/script.h"

class CollisionCheckScript final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& /*contact*/) override { hit = true; }
  const char* GetName() const override { return "CollisionCheckScript"; }

  bool hit = false;
};
