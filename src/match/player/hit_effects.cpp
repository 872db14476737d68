#include "match/player/hit_effects.h"

#include <cmath>

#include "audio/audio.h"
#include "core/game_object.h"
#include "graphics/camera.h"
#include "graphics/renderer.h"
#include "graphics/screen_shake.h"
#include "physics/rigid_body.h"
#include "physics/step.h"
#include "scripts/fast_player.h"

namespace {

constexpr float kRippleSpeed = 5.0f;  // separating velocity from which a hit makes a ripple
constexpr float kRipplePause = 2.0f;  // seconds of the ripple clock between two ripples
constexpr float kRippleScale = 0.5f;  // takes the place of the usual halving into texture space
constexpr float kPulsePitch = 1.0f;
constexpr float kShakeSpeed = 2.0f;  // units per body second of the player who hits
constexpr float kShakeMagnitude = 0.1f;
constexpr float kShakeDecay = 0.001f;
constexpr float kShakeDuration = 0.02f;  // game seconds

}  // namespace

void ShowRipple(const GalePhysics::Contact& contact) {
  if (!(std::abs(GalePhysics::SeparatingVelocity(contact)) > kRippleSpeed)) return;
  if (GetRenderer().GetWaveTime() < kRipplePause) return;
  const Camera* camera = GetMainCamera();
  if (camera == nullptr) return;
  const Vec3 p = contact.point * kRippleScale;
  const glm::vec4 clip = camera->GetProjection() * camera->GetView() * glm::vec4(p.x, p.y, p.z, 1.0f);
  if (!(clip.w > 0.0f)) return;
  Audio::PlayPulse(kPulsePitch);
  GetRenderer().StartRipple({clip.x / clip.w + 0.5f, clip.y / clip.w + 0.5f, clip.z / clip.w});
}

void ShakeOnHardHit(const GameObject& player, const GalePhysics::Contact& contact) {
  const GalePhysics::RigidBody* hitter = FirstPlayerBody(contact);
  const auto* own = player.Get<GalePhysics::RigidBody>();
  if (hitter == nullptr || own == nullptr || !(Length(hitter->velocity) > kShakeSpeed)) return;
  StartShake(own->velocity, kShakeMagnitude, kShakeDecay, kShakeDuration);
}
