#include "scripts/animators/lerp_vec_animator.h"

#include "core/game_object.h"
#include "core/transform.h"

void LerpVecAnimator::Apply(float t) { owner->GetTransform().position = start_ * (1.0f - t) + end_ * t; }
