// Keeps a body from outrunning the collision test.
#pragma once

#include "core/script.h"

class VelocityCap final : public Script {
 public:
  static constexpr float kTopSpeed = 13.0f;  ///< world units per body second, after every update

  void Update(float step) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "VelocityCap"; }
};
