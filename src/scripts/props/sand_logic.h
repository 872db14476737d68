// A heap of sand: whoever rams it fast throws up dust.
#pragma once

#include "core/script.h"

class SandLogic final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& contact) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "sandlogic"; }
};
