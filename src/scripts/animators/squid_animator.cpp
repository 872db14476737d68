#include "scripts/animators/squid_animator.h"

#include "core/game_object.h"
#include "core/random.h"
#include "graphics/sprite.h"

namespace {

constexpr float kFrameWidth = 0.25f;   // of the strip
constexpr float kInterval = 0.1f;      // game seconds a frame
constexpr float kShortestRest = 0.5f;  // game seconds
constexpr float kRestSpread = 2.0f;    // game seconds more at most

}  // namespace

void SquidAnimator::Update(float step) {
  timer_ += step;
  if (timer_ > kInterval) Advance();
  Sprite* sprite = owner->Get<Sprite>();
  if (sprite == nullptr) return;
  sprite->row = kFrameWidth;
  sprite->columns = 1.0f;
  sprite->startFrame = offset_;
  sprite->endFrame = 0.0f;
}

void SquidAnimator::Advance() {
  if (!animating_) {
    animating_ = true;
    timer_ = -kShortestRest - RandomUpTo(kRestSpread);
    return;
  }
  timer_ = 0.0f;
  offset_ += kFrameWidth;
  if (offset_ < 1.0f) return;
  offset_ = 0.0f;
  animating_ = false;
}
