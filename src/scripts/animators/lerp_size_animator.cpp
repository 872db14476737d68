#include "scripts/animators/lerp_size_animator.h"

#include "core/game_object.h"
#include "core/transform.h"

void LerpSizeAnimator::Apply(float t) {
  const float size = start_ * (1.0f - t) + end_ * t;
  owner->GetTransform().graphicsScale = {size, size, 0.0f};
}
