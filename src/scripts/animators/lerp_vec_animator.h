// Moves the owner.
#pragma once

#include "physics/math/vec3.h"
#include "scripts/animators/lerp_animator.h"

class LerpVecAnimator final : public LerpAnimator {
 public:
  LerpVecAnimator() : LerpVecAnimator({}, {}, 0.0f, 0.0f) {}
  LerpVecAnimator(const Vec3& start, const Vec3& end, float endTime, float delay)
      : LerpAnimator(endTime, delay), start_(start), end_(end) {}
  const char* GetName() const override { return "class LerpVecAnimator"; }

 private:
  void Apply(float t) override;

  Vec3 start_;
  Vec3 end_;
};
