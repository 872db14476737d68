// Sets the owner's graphics scale, equal in x and y.
#pragma once

#include "scripts/animators/lerp_animator.h"

class LerpSizeAnimator final : public LerpAnimator {
 public:
  LerpSizeAnimator() : LerpSizeAnimator(0.0f, 0.0f, 0.0f, 0.0f) {}
  LerpSizeAnimator(float start, float end, float endTime, float delay)
      : LerpAnimator(endTime, delay), start_(start), end_(end) {}
  const char* GetName() const override { return "class LerpSizeAnimator"; }

 private:
  void Apply(float t) override;

  float start_;
  float end_;
};
