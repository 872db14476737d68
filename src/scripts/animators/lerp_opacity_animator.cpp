#include "scripts/animators/lerp_opacity_animator.h"

#include "core/game_object.h"
#include "graphics/sprite.h"
#include "graphics/sprite_colour.h"

void LerpOpacityAnimator::Apply(float t) {
  if (Sprite* sprite = owner->Get<Sprite>())
    SetColour255(*sprite, {sprite->r * kFullColour, sprite->g * kFullColour, sprite->b * kFullColour,
                           start_ * (1.0f - t) + end_ * t});
}
