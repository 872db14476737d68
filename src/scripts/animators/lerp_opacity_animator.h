// Sets the opacity of the owner's sprite; both ends are 0 to 255.
#pragma once

#include "scripts/animators/lerp_animator.h"

class LerpOpacityAnimator final : public LerpAnimator {
 public:
  LerpOpacityAnimator() : LerpOpacityAnimator(0.0f, 0.0f, 0.0f, 0.0f) {}
  LerpOpacityAnimator(float start, float end, float endTime, float delay)
      : LerpAnimator(endTime, delay), start_(start), end_(end) {}
  const char* GetName() const override { return "class LerpOpacityAnimator"; }

 private:
  void Apply(float t) override;

  float start_;
  float end_;
};
