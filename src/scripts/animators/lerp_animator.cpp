#include "scripts/animators/lerp_animator.h"

#include "scripts/animators/animation_step.h"

void LerpAnimator::Initialize() {
  endTime_ += delay_;
  elapsed_ = 0.0f;
}

void LerpAnimator::Update(float /*step*/) {
  const bool waiting = elapsed_ < delay_;
  if (!waiting && !(elapsed_ < endTime_)) return;
  elapsed_ += kAnimationStep;
  if (!waiting) Apply((elapsed_ - delay_) / (endTime_ - delay_));
}
