#include "tools/bots/ballistics.h"

#include <cmath>

#include "core/game_time.h"
#include "match/player/velocity_cap.h"
#include "physics/rigid_body.h"

namespace Ballistics {

namespace {

constexpr float kBounce = 1.6f;  // of a wall: the mean of its own 0.2 and a player's 3

void BounceOff(float& place, float& speed, float limit) {
  if (std::abs(place) <= limit) return;
  place = std::copysign(limit, place);
  if (speed * place > 0.0f) speed *= -kBounce;
}

}  // namespace

float UnitsAFrame() {
  static const float units = GameTime{}.baseFrameStep * kPhysicsShare * kSubSteps;
  return units;
}

float ReachOfLaunch() {
  static const float reach = GameTime{}.baseFrameStep * kPhysicsShare / (1.0f - GalePhysics::DefaultDamping());
  return reach;
}

float KeptAFrame() {
  static const float kept = std::pow(GalePhysics::DefaultDamping(), static_cast<float>(kSubSteps));
  return kept;
}

float FramesTo(float distance, float speed) {
  const float share = speed > 0.0f ? distance / (ReachOfLaunch() * speed) : 1.0f;
  static const float perFrame = std::log(KeptAFrame());
  return share < 1.0f ? std::log(1.0f - share) / perFrame : -1.0f;
}

bool IsInside(const Vec3& place, float margin) {
  return std::abs(place.x) <= kFreeX - margin && std::abs(place.y) <= kFreeY - margin;
}

void Drift(Vec3& place, Vec3& velocity, float units) {
  place += velocity * units;
  velocity *= KeptAFrame();
  BounceOff(place.x, velocity.x, kFreeX);
  BounceOff(place.y, velocity.y, kFreeY);
  if (const float speed = Length(velocity); speed > VelocityCap::kTopSpeed) velocity *= VelocityCap::kTopSpeed / speed;
}

}  // namespace Ballistics
