#include "scripts/animators/lerp_animators.h"

#include "core/game_object.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "graphics/sprite_colour.h"
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

void LerpVecAnimator::Apply(float t) { owner->GetTransform().position = start_ * (1.0f - t) + end_ * t; }

void LerpSizeAnimator::Apply(float t) {
  const float size = start_ * (1.0f - t) + end_ * t;
  owner->GetTransform().graphicsScale = {size, size, 0.0f};
}

void LerpOpacityAnimator::Apply(float t) {
  if (Sprite* sprite = owner->Get<Sprite>())
    SetColour255(*sprite, {sprite->r * kFullColour, sprite->g * kFullColour, sprite->b * kFullColour,
                           start_ * (1.0f - t) + end_ * t});
}
