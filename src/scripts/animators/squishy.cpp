#include "scripts/animators/squishy.h"

#include <algorithm>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/transform.h"

namespace {
// World units per game second, 0.01 in a frame of the normal length. Following the step keeps a picture in
// shape when slow motion begins while it is out.
constexpr float kSquishSpeed = 0.01f / 0.0085f;
}  // namespace

void Squishy::OnContact(const GalePhysics::Contact& /*contact*/) {
  if (!squishing_) triggered_ = true;
}

void Squishy::Bulge(float change) const {
  Vec3& scale = owner->GetTransform().graphicsScale;
  scale.x += change;
  scale.y -= change;
}

void Squishy::Update(float step) {
  const float now = Time().elapsedTime;
  if (triggered_) {
    triggered_ = false;
    squishing_ = true;
    savedScale = owner->GetTransform().graphicsScale;
    start_ = now;
  }
  if (!squishing_) return;
  float change = kSquishSpeed * step;
  // Late in a run the clock is coarse, and one half may have a frame more than the other: it goes back what it went
  // out.
  if (now > start_ + kDuration) {
    change = -bulge_;
    squishing_ = false;
  } else if (now > start_ + kDuration * 0.5f) {
    change = -std::min(change, bulge_);
  }
  bulge_ += change;
  Bulge(change);
}

void Squishy::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("squishy"); }
