// Leans the camera a little towards where the action is.
#pragma once

#include "core/script.h"
#include "physics/math/vec3.h"

class CameraCenterer final : public Script {
 public:
  static constexpr float kMaxAim = 0.1f;     ///< world units that the view leans at most
  static constexpr float kSmoothing = 9.0f;  ///< weight of the lean so far against the new aim

  void Update(float step) override;
  const char* GetName() const override { return "CameraCenterer"; }

 private:
  void Lean();

  Vec3 lean_;
};
