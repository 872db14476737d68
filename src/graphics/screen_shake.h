// Jitters the view after hard hits. There is one shake at a time.
#pragma once

#include "core/script.h"
#include "physics/math/vec3.h"

class ScreenShake final : public Script {
 public:
  void Update(float step) override;
  const char* GetName() const override { return "InsertName"; }
};

/// Starts a shake along `direction`, in place of a running one. `magnitude` in world units, `decay` in units per
/// game second, `duration` in game seconds. A zero direction displaces nothing.
void StartShake(const Vec3& direction, float magnitude, float decay, float duration);
