#include "scripts/animators/squishy.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/transform.h"

namespace {
// World units per second of game time, 0.01 in a frame of the normal length. Following the step keeps a picture in
// shape when slow motion begins while it is out.
constexpr float kSquishSpeed = 0.01f / 0.0085f;
}  // namespace

void Squishy::OnContact(const GalePhysics::Contact& /*contact*/) {
  if (!squishing_) triggered_ = true;
}

void Squishy::Update(float step) {
  Vec3& scale = owner->GetTransform().graphicsScale;
  const float now = Time().elapsedTime;
  if (triggered_) {
    triggered_ = false;
    squishing_ = true;
    savedScale = scale;
    start_ = now;
  }
  if (!squishing_) return;
  const float change = kSquishSpeed * step;
  if (now <= start_ + kDuration * 0.5f) {
    scale.x += change;
    scale.y -= change;
  } else if (now <= start_ + kDuration) {
    scale.x -= change;
    scale.y += change;
  } else {
    squishing_ = false;
  }
}

void Squishy::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("squishy"); }
