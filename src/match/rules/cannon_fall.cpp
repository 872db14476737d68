#include "match/rules/cannon_fall.h"

#include <cmath>

#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/rigid_body.h"
#include "scripts/animators/shadow_growth.h"
#include "scripts/archetype.h"

namespace {

constexpr float kStartHeight = 20.0f;  // behind the camera
constexpr float kGoneHeight = 25.0f;   // one that bounced off has left
// Balls fall at x from -8 to 8 and y from -5.5 to 5.5.
constexpr float kHalfWidth = 8.0f;
constexpr float kHalfHeight = 5.5f;
constexpr float kShadowSize = 4.0f;        // that it would reach in 60 frames a second of the fall's time
constexpr float kFramesPerSecond = 60.0f;  // of real time
constexpr float kBouncedShare = 0.5f;      // of the speed: a ball that falls slower has hit something

// Evenly from -width/2 to width/2; no random number is drawn for 0.
float Draw(float width) { return width == 0.0f ? 0.0f : RandomAround(width / 2.0f); }

// Negative: the picture grows mirrored, which never meets the growth's end.
float ShadowGrowthFor(float fallSpeed) { return (kShadowSize / (kStartHeight / -fallSpeed)) / kFramesPerSecond; }

void Kill(GameObject* object) {
  if (object != nullptr) object->alive = false;
}

}  // namespace

void CannonFall::Update(float step) {
  spawnAccumulator_ += (rate_ + Draw(rateVariation_)) * step;
  if (spawnAccumulator_ >= 1.0f) {
    spawnAccumulator_ -= 1.0f;
    DropBall();
  }
  std::erase_if(shots_, [this](const Shot& shot) { return !Follow(shot); });
}

void CannonFall::DropBall() {
  const float x = RandomAround(kHalfWidth);
  const float y = RandomAround(kHalfHeight);
  const float fallSpeed = speed_ + Draw(speedVariation_);
  GameObject* shadow = CreateFromArchetype("shadow");
  if (shadow != nullptr) {
    shadow->GetTransform().position = {x, y, 0.0f};
    if (ScriptBox* scripts = shadow->Get<ScriptBox>())
      scripts->AddScript(std::make_unique<ShadowGrowth>(ShadowGrowthFor(fallSpeed)));
  }
  GameObject* ball = CreateFromArchetype("cannonball");
  if (ball != nullptr) {
    ball->GetTransform().position = {x, y, kStartHeight};
    if (auto* body = ball->Get<GalePhysics::RigidBody>()) body->velocity = {0.0f, 0.0f, -fallSpeed};
  }
  shots_.push_back({ball == nullptr ? 0 : ball->id, shadow == nullptr ? 0 : shadow->id});
}

bool CannonFall::Follow(const Shot& shot) const {
  GameObject* ball = Objects().GetObject(shot.ballId);
  if (ball != nullptr && ball->alive) {
    auto* body = ball->Get<GalePhysics::RigidBody>();
    if (body != nullptr && std::abs(body->velocity.z) < speed_ * kBouncedShare) body->velocity = {0.0f, 0.0f, speed_};
    const float height = ball->GetTransform().position.z;
    if (height > 0.0f && height <= kGoneHeight) return true;
  }
  Kill(ball);
  Kill(Objects().GetObject(shot.shadowId));
  return false;
}

void CannonFall::End() {
  for (const Shot& shot : shots_) {
    Kill(Objects().GetObject(shot.ballId));
    Kill(Objects().GetObject(shot.shadowId));
  }
  shots_.clear();
  Objective::End();
}

void CannonFall::Serialize(Serializer& writer) const {
  WriteType(writer);
  writer.WriteFloat("Rate", rate_);
  writer.WriteFloat("RateVariation", rateVariation_);
  writer.WriteFloat("Speed", speed_);
  writer.WriteFloat("speedVariation", speedVariation_);
}

void CannonFall::Deserialize(Serializer& reader) {
  rate_ = reader.ReadFloat();
  rateVariation_ = reader.ReadFloat();
  speed_ = reader.ReadFloat();
  speedVariation_ = reader.ReadFloat();
}
