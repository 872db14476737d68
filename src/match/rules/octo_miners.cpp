#include "match/rules/octo_miners.h"

#include "audio/audio.h"
#include "core/game_time.h"
#include "core/transform.h"
#include "graphics/renderer.h"
#include "match/player/character_controller.h"
#include "match/player/dizzy.h"
#include "match/players.h"
#include "match/score/give_points.h"
#include "physics/rigid_body.h"
#include "scripts/archetype.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr float kSweepTime = 2.0f;                  // seconds of game time
constexpr float kPush = 0.5f;                       // force at a distance of 1, once a frame
constexpr float kNoDirection = 0.0001f;             // nearer to the middle than this there is no way out to push along
constexpr float kMinerTime = 8.0f;                  // seconds of game time
constexpr Vec3 kScreenCentre = {0.5f, 0.5f, 0.0f};  // in the screen's texture space
constexpr float kPulsePitch = 1.0f;

// While the slow motion holds the physics still the forces pile up, so that everybody leaves at top speed.
void PushOut(const GameObject& player) {
  auto* body = player.Get<GalePhysics::RigidBody>();
  const Vec3& p = player.GetTransform().position;
  const float distance = Length(p);
  if (body != nullptr && distance >= kNoDirection) body->forceTotal += Normalised(p) * (kPush / distance);
}

void Sweep(const GameObject& player) {
  PushOut(player);
  Dizzy* dizzy = FindDizzy(player);
  if (dizzy != nullptr && !dizzy->IsStunned()) dizzy->Stun();
}

void GiveControlBack() {
  for (int i = 0; i < kPlayers; ++i) {
    const GameObject* player = GetPlayerObject(i);
    if (CharacterController* controller = player == nullptr ? nullptr : FindController(*player))
      controller->stunned = false;
  }
}

void CreateMiners() {
  for (const GameObject* miner : CreateAllFromArchetype("miner"))
    if (DeathTimer* timer = FindDeathTimer(*miner)) timer->endTime = kMinerTime;
}

}  // namespace

void OctoMiners::Begin() {
  startTime_ = Time().elapsedTime;
  minersReleased_ = false;
  Objective::Begin();
}

void OctoMiners::Update(float /*step*/) {
  if (Time().elapsedTime - startTime_ < kSweepTime) {
    for (int i = 0; i < kPlayers; ++i)
      if (const GameObject* player = GetPlayerObject(i)) Sweep(*player);
  } else if (!minersReleased_) {
    Release();
    minersReleased_ = true;
  }
}

void OctoMiners::Release() {
  GiveControlBack();
  RemovePrizes();
  CreateMiners();
  GetRenderer().StartRipple(kScreenCentre);
  Audio::PlayPulse(kPulsePitch);
}

void OctoMiners::End() {
  GiveControlBack();
  Objective::End();
}
