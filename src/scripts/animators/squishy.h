// Jelly: what touches its owner makes the picture bulge to the sides and spring back. Only the drawing changes.
#pragma once

#include "core/script.h"
#include "physics/math/vec3.h"

class Squishy final : public Script {
 public:
  static constexpr float kDuration = 0.3f;  ///< seconds of game time, half of them out and half back

  void Update(float step) override;
  /// Ignored while it bulges.
  void OnContact(const GalePhysics::Contact& contact) override;
  void AddToTweakBar(FieldBar& bar) override;
  void GiveBack() override { Bulge(-bulge_); }
  void TakeAgain() override { Bulge(bulge_); }
  const char* GetName() const override { return "squishy"; }

  Vec3 savedScale;  ///< graphics scale when the last squish began; it is never written back

 private:
  void Bulge(float change) const;

  float start_ = 0.0f;  // game time
  float bulge_ = 0.0f;  // how far it is out, world units along each side
  bool squishing_ = false;
  bool triggered_ = false;
};
